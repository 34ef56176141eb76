#include "host/viewer/helpwindow.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace host {

namespace {

QString table_of(const std::vector<KeyText>& keys) {
    QString rows;
    for (const KeyText& text : keys)
        rows += QStringLiteral("<tr><td style=\"padding-right: 24px\">%1</td><td>%2</td></tr>")
                    .arg(text.key.toHtmlEscaped(), text.what.toHtmlEscaped());
    return QStringLiteral("<table cellspacing=\"0\" cellpadding=\"3\">%1</table>").arg(rows);
}

} // namespace

HelpWindow::HelpWindow(QWidget* parent, const std::vector<KeyText>& keys) : QDialog(parent) {
    setWindowTitle(tr("Keys and Mouse"));
    auto* text = new QTextBrowser;
    text->setHtml(table_of(keys));
    text->setLineWrapMode(QTextEdit::NoWrap);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(new QLabel(QStringLiteral("printman " PRINTMAN_VERSION)));
    layout->addWidget(buttons);
    // High enough for the whole list on an ordinary screen.
    const QSize whole = text->document()->size().toSize() + QSize(40, 90);
    resize(whole.expandedTo(QSize(380, 0)).boundedTo(QSize(700, 760)));
}

} // namespace host
