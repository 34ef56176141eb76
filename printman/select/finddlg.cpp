#include "ui_finddlgbase.h"

#include <printman/select/finddlg.h>
#include <printman/toolkit/modaldialog.h>
#include <printman/toolkit/widgets.h>

#include <QLineEdit>
#include <QMessageBox>

using namespace printman;

namespace {

constexpr qsizetype max_text_in_box = 1000;

} // namespace

findDlgBase::findDlgBase(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags)
    : FormDialog(parent, name, modal, flags), ui_(std::make_unique<Ui::findDlgBase>()) {
    ui_->setupUi(this);
    // It would replace what is typed by an earlier text.
    ui_->cbFind->setCompleter(nullptr);
    lbFindWhat = ui_->lbFindWhat;
    cbFind = ui_->cbFind;
    bgbDirection = ui_->bgbDirection;
    opUp = ui_->opUp;
    opDown = ui_->opDown;
    gbOptions = ui_->gbOptions;
    chkWhole = ui_->chkWhole;
    chkCase = ui_->chkCase;
    btnFindNext = ui_->btnFindNext;
    btnMarkAll = ui_->btnMarkAll;
    btnCancel = ui_->btnCancel;
}

findDlgBase::~findDlgBase() = default;

void findDlgBase::languageChange() {
    ui_->retranslateUi(this);
}

findDlg::findDlg(QWidget* parent, const char* name) : findDlgBase(parent, name) {
    connect(btnFindNext, &QPushButton::clicked, this, &findDlg::find_next);
    connect(btnMarkAll, &QPushButton::clicked, this, &findDlg::mark_all);
    connect(btnCancel, &QPushButton::clicked, this, &findDlg::cancel_dlg);
    cbFind->setFocus();
}

int findDlg::get_direction() const {
    return opUp->isChecked() ? backward : forward;
}

bool findDlg::is_case_sensitive() const {
    return chkCase->isChecked();
}

bool findDlg::is_whole_word() const {
    return chkWhole->isChecked();
}

void findDlg::set_search_text(const QString& text) {
    search_text = text;
    cbFind->setEditText(text);
    cbFind->lineEdit()->selectAll();
}

void findDlg::set_foreword(bool foreword) {
    (foreword ? opDown : opUp)->setChecked(true);
}

void findDlg::set_case(bool sensitive) {
    chkCase->setChecked(sensitive);
}

void findDlg::set_wholeword(bool whole) {
    chkWhole->setChecked(whole);
}

void findDlg::set_search_history(const QStringList& history) {
    search_history = history;
    const QString text = cbFind->currentText();
    cbFind->addItems(history);
    choose_none(cbFind, text);
}

void findDlg::find_next() {
    leave(find_next_result);
}

void findDlg::mark_all() {
    leave(mark_all_result);
}

void findDlg::cancel_dlg() {
    done(cancel_result);
}

void findDlg::reject() {
    cancel_dlg();
}

void findDlg::leave(int result) {
    search_text = cbFind->currentText();
    if (!search_text.isEmpty())
        done(result);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts rely on the signature
bool is_in_history(QStringList& history, QString text) {
    return history.contains(text);
}

void search_error(QWidget* parent, QString text) {
    if (text.size() > max_text_in_box)
        text = text.left(max_text_in_box) + QChar(0x2026);
    const ModalDialog<QMessageBox> box(QMessageBox::Information, findDlg::tr("Find Error"),
                                       findDlg::tr("Can not find searching text: %1").arg(text),
                                       QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->exec();
}
