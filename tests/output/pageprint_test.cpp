#include "tests/support/dialogs.h"
#include "tests/support/testhost.h"
#include "tests/support/tools.h"

#include <printman/output/pageprint.h>
#include <printman/toolkit/psprinter.h>

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QLineEdit>
#include <QPainter>
#include <QPrintDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QWidget>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

using namespace printman;
using testsupport::DialogAnswers;
using testsupport::read_file;

namespace {

constexpr int columns = 40;
constexpr int lines = 3;

/// The smallest rectangle that holds every dark pixel.
QRect ink(const QImage& page) {
    QRect found;
    for (int y = 0; y < page.height(); ++y) {
        for (int x = 0; x < page.width(); ++x) {
            if (qGray(page.pixel(x, y)) < 200)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

class PagePrinting : public testing::Test {
protected:
    PagePrinting() {
        testhost::reset();
        rows_.resize(lines);
        add(0, 0, 12, "Smith & Co.", 2);
        add(1, 10, 20, "12,345.67", 3);
        add(2, 0, columns, "caf\xe9 %1", 4);
    }
    ~PagePrinting() override { testhost::reset(); }

    void add(int line, int column, int width, const char* text, int align) {
        StringItem item;
        item.cell = QRect(column, line, width, 1);
        item.text = QString::fromLatin1(text);
        item.align = static_cast<int16_t>(align);
        item.drawn = QRect(1, 2, 3, 4);
        rows_[line] << item;
    }

    QString path(const char* name) const { return scratch_.filePath(QString::fromLatin1(name)); }
    QStringList files() const {
        return QDir(scratch_.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    /// Accepts the printer's dialog with a file.
    void choose_file(const QString& name) {
        answers_.then([name](QDialog& dialog) {
            EXPECT_NE(qobject_cast<QPrintDialog*>(&dialog), nullptr);
            dialog.findChild<QLineEdit*>(QStringLiteral("filename"))->setText(name);
            DialogAnswers::ok(dialog);
        });
    }

    void choose_font(const QFont& font) {
        answers_.then([font](QDialog& dialog) {
            auto* fonts = qobject_cast<QFontDialog*>(&dialog);
            ASSERT_NE(fonts, nullptr);
            fonts->setCurrentFont(font);
            DialogAnswers::ok(dialog);
        });
    }

    QString print_in(QWidget* parent) {
        return print_page_as_chosen(parent, owned_printer_, units_, {rows_, columns, lines})
            .error();
    }
    QString print() { return print_in(&parent_); }

    QString print_to(const QString& file, const QFont& font = mono_font()) {
        choose_file(file);
        choose_font(font);
        return print();
    }

    static QFont mono_font() { return QFont(QStringLiteral("Liberation Mono"), 12); }

    const testsupport::EnvironmentGuard no_server_{"CUPS_SERVER", "/nowhere/cups.sock"};
    const QStringList words_{QStringLiteral("Smith"),        QStringLiteral("&"),
                             QStringLiteral("Co."),          QStringLiteral("12,345.67"),
                             QString::fromLatin1("caf\xe9"), QStringLiteral("%1")};
    QTemporaryDir scratch_;
    QWidget parent_;
    std::shared_ptr<PsPrinter> owned_printer_ = std::make_shared<PsPrinter>();
    PsPrinter& printer_ = *owned_printer_;
    PageUnits units_;
    std::vector<QValueList<StringItem>> rows_;
    DialogAnswers answers_;
};

} // namespace

TEST_F(PagePrinting, withoutAParentNothingHappens) {
    EXPECT_EQ(print_in(nullptr), QString());
    EXPECT_TRUE(testhost::calls().isEmpty());
}

TEST_F(PagePrinting, cancellingThePrinterAsksForNoFont) {
    answers_.then(DialogAnswers::cancel);
    EXPECT_EQ(print(), QString());
    EXPECT_TRUE(files().isEmpty());
    EXPECT_TRUE(testhost::calls().isEmpty());
}

TEST_F(PagePrinting, cancellingTheFontPrintsNothing) {
    choose_file(path("a.ps"));
    answers_.then(DialogAnswers::cancel);
    units_.no_page_map = true;
    EXPECT_EQ(print(), QString());
    EXPECT_TRUE(files().isEmpty());
    EXPECT_TRUE(units_.no_page_map);
    EXPECT_EQ(printer_.outputFileName(), path("a.ps"));
}

TEST_F(PagePrinting, theFontStartsAsLightHelveticaOrWhatStandsForIt) {
    const QFont first = first_print_font();
    EXPECT_EQ(first.pointSize(), 12);
    EXPECT_EQ(first.weight(), QFont::Light);
    EXPECT_FALSE(first.italic());
    const QString helvetica = QStringLiteral("Helvetica");
    EXPECT_TRUE(first.family() == helvetica ||
                (!QFontDatabase::hasFamily(helvetica) &&
                 first.family() == QFontInfo(QFont(helvetica, 12)).family()))
        << first.family().toStdString();
    choose_file(path("a.ps"));
    answers_.then([&first](QDialog& dialog) {
        const QFont font = qobject_cast<QFontDialog*>(&dialog)->currentFont();
        EXPECT_EQ(font.family(), first.family());
        EXPECT_EQ(font.pointSize(), 12);
        EXPECT_FALSE(font.italic());
        DialogAnswers::ok(dialog);
    });
    EXPECT_EQ(print(), QString());
    EXPECT_EQ(testsupport::pdf_words(testsupport::make_pdf(path("a.ps"))), words_);
}

TEST_F(PagePrinting, aPostScriptFileHoldsThePage) {
    EXPECT_EQ(print_to(path("a.ps")), QString());
    EXPECT_TRUE(read_file(path("a.ps")).startsWith("%!PS-Adobe-3.0\n"));
    EXPECT_EQ(files(), QStringList{QStringLiteral("a.ps")});
    EXPECT_EQ(testsupport::pdf_words(testsupport::make_pdf(path("a.ps"))), words_);
    EXPECT_EQ(printer_.printerState(), QPrinter::Idle);
}

TEST_F(PagePrinting, aPdfFileIsOne) {
    printer_.setPageSize(QPageSize(QPageSize::Letter));
    printer_.setPageOrientation(QPageLayout::Landscape);
    EXPECT_EQ(print_to(path("a.pdf")), QString());
    EXPECT_TRUE(read_file(path("a.pdf")).startsWith("%PDF-"));
    EXPECT_EQ(files(), QStringList{QStringLiteral("a.pdf")});
    EXPECT_EQ(testsupport::pdf_words(path("a.pdf")), words_);
    const QSize sheet = testsupport::pdf_picture(path("a.pdf"), 1, 72).size();
    EXPECT_EQ(sheet, QSize(792, 612));
}

TEST_F(PagePrinting, bothFormatsLookTheSame) {
    EXPECT_EQ(print_to(path("a.pdf")), QString());
    EXPECT_EQ(print_to(path("b.ps")), QString());
    const QRect pdf = ink(testsupport::pdf_picture(path("a.pdf"), 1, 50));
    const QRect ps = ink(testsupport::pdf_picture(testsupport::make_pdf(path("b.ps")), 1, 50));
    EXPECT_GT(pdf.width(), 200);
    EXPECT_NEAR(pdf.left(), ps.left(), 2);
    EXPECT_NEAR(pdf.right(), ps.right(), 2);
    EXPECT_NEAR(pdf.top(), ps.top(), 2);
    EXPECT_NEAR(pdf.bottom(), ps.bottom(), 2);
}

TEST_F(PagePrinting, thePageOnScreenKeepsItsPlacesAndMeasures) {
    QImage screen(100, 100, QImage::Format_RGB32);
    QPainter p(&screen);
    units_.set(p, columns, lines, false, 20, 20);
    p.end();
    const QSize window = units_.window();
    const QSize viewport = units_.viewport();
    const int char_width = units_.char_width();
    EXPECT_EQ(print_to(path("a.ps")), QString());
    EXPECT_EQ(rows_[0][0].drawn, QRect(1, 2, 3, 4));
    EXPECT_EQ(units_.window(), window);
    EXPECT_EQ(units_.viewport(), viewport);
    EXPECT_EQ(units_.char_width(), char_width);
}

TEST_F(PagePrinting, thePageMapIsOffWhenTheSettingStartsWithY) {
    const std::pair<const char*, bool> settings[] = {{"y", true}, {"Yes", true}, {"Y", true},
                                                     {"", false}, {"n", false},  {" y", false}};
    for (const auto& [value, off] : settings) {
        testhost::set("NOPAGEMAP", value);
        units_.no_page_map = !off;
        QFile::remove(path("a.ps"));
        EXPECT_EQ(print_to(path("a.ps")), QString());
        EXPECT_EQ(units_.no_page_map, off) << value;
    }
    testhost::reset();
    units_.no_page_map = true;
    EXPECT_EQ(print_to(path("a.pdf")), QString());
    EXPECT_FALSE(units_.no_page_map);
    EXPECT_EQ(testhost::calls(),
              QStringList{QStringLiteral("GetEnv(NOPAGEMAP, dlwmenu.ini, env)")});
}

TEST_F(PagePrinting, withoutAPageMapTheFontHasItsOwnSize) {
    testhost::set("NOPAGEMAP", "y");
    EXPECT_EQ(print_to(path("a.ps"), QFont(QStringLiteral("Liberation Mono"), 6)), QString());
    const QImage page = testsupport::pdf_picture(testsupport::make_pdf(path("a.ps")), 1, 72);
    // 40 columns of 3.6 points from the left margin of 36 on.
    EXPECT_GT(ink(page).width(), 40);
    EXPECT_LE(ink(page).right(), 36 + 40 * 4);
}

TEST_F(PagePrinting, marginsAreKeptClear) {
    units_.margins = {4.0, 0.5, 5.0, 0.5};
    for (const char* name : {"a.ps", "a.pdf"}) {
        EXPECT_EQ(print_to(path(name)), QString());
        const bool is_pdf = printer_.isPdfChosen();
        const QString pdf = is_pdf ? path(name) : testsupport::make_pdf(path(name));
        const QRect painted = ink(testsupport::pdf_picture(pdf, 1, 72));
        EXPECT_GT(painted.width(), 72) << name;
        EXPECT_GE(painted.left(), 72 * 4) << name;
        EXPECT_GE(painted.top(), 72 * 5) << name;
    }
}

TEST_F(PagePrinting, aFileThatCannotBeWrittenIsTold) {
    // The dialog lets nobody choose such a name; the directory goes afterwards.
    for (const char* name : {"gone/a.ps", "gone/a.pdf"}) {
        QDir(scratch_.path()).mkdir(QStringLiteral("gone"));
        choose_file(path(name));
        answers_.then([this](QDialog& dialog) {
            QDir(scratch_.path()).rmdir(QStringLiteral("gone"));
            DialogAnswers::ok(dialog);
        });
        EXPECT_EQ(print(), path(name) + QStringLiteral(": No such file or directory"));
    }
}

TEST_F(PagePrinting, aFullDiskIsToldAndLeavesTheEarlierFile) {
    const auto press_yes = [](QDialog& box) {
        box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Yes)->click();
    };
    // A limit on the size of files stands for the end of the disk.
    const auto old_signal = std::signal(SIGXFSZ, SIG_IGN);
    for (const char* name : {"a.ps", "a.pdf"}) {
        testsupport::write_file(path(name), "earlier");
        choose_file(path(name));
        answers_.then(press_yes);
        rlimit old{};
        getrlimit(RLIMIT_FSIZE, &old);
        const rlimit small{2000, old.rlim_max};
        answers_.then([&](QDialog& dialog) {
            setrlimit(RLIMIT_FSIZE, &small);
            DialogAnswers::ok(dialog);
        });
        const QString error = print();
        setrlimit(RLIMIT_FSIZE, &old);
        EXPECT_FALSE(error.isEmpty()) << name;
        EXPECT_EQ(read_file(path(name)), "earlier");
    }
    std::signal(SIGXFSZ, old_signal);
    EXPECT_EQ(files(), (QStringList{QStringLiteral("a.pdf"), QStringLiteral("a.ps")}));
}

TEST_F(PagePrinting, whileAnAbortedJobLastsNothingIsPainted) {
    printer_.setOutputFileName(path("other.ps"));
    QPainter other(&printer_);
    printer_.abort();
    choose_file(path("a.ps"));
    choose_font(mono_font());
    EXPECT_FALSE(print().isEmpty());
    other.end();
    EXPECT_TRUE(files().isEmpty());
    EXPECT_EQ(print_to(path("a.ps")), QString());
}

TEST_F(PagePrinting, aJobThatTheHostAbortsPaintsNothingAndLeavesNoFile) {
    testhost::on_call([this] { printer_.abort(); });
    EXPECT_EQ(print_to(path("a.ps")), QStringLiteral("canceled"));
    EXPECT_TRUE(files().isEmpty());
    EXPECT_EQ(printer_.printerState(), QPrinter::Idle);
}

TEST_F(PagePrinting, aWindowThatIsClosedUnderADialogEndsIt) {
    for (const bool at_font : {false, true}) {
        auto window = std::make_unique<QWidget>();
        window->show();
        if (at_font)
            choose_file(path("a.ps"));
        answers_.then([&window](QDialog& /*dialog*/) { window.reset(); });
        EXPECT_EQ(print_in(window.get()), QString());
        EXPECT_EQ(window, nullptr);
        EXPECT_TRUE(files().isEmpty());
    }
}

TEST_F(PagePrinting, aPageTurnedWhileADialogIsOpenDoesNoHarm) {
    choose_file(path("a.ps"));
    answers_.then([this](QDialog& dialog) {
        rows_.clear();
        rows_.shrink_to_fit();
        DialogAnswers::ok(dialog);
    });
    EXPECT_EQ(print(), QString());
    EXPECT_EQ(testsupport::pdf_words(testsupport::make_pdf(path("a.ps"))), words_);
}
