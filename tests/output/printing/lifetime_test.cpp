#include "tests/output/printing/printing.h"
#include "tests/support/dialogs.h"

#include <QFontDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>

#include <functional>

using testsupport::DialogAnswers;
using testsupport::text;
using testsupport::write_file;

namespace {

/// What a host does to windows and managers in the middle of their jobs. The host's manager is one
/// that can go.
class Lifetime : public Printing {
protected:
    Lifetime() {
        stub_tools();
        report(3);
        renew();
    }

    void renew() {
        host_ = std::make_unique<CPrintMan>();
        window_ = std::make_unique<QWidget>();
        const QByteArray file = reports_.filePath(text("r.rpt")).toLocal8Bit();
        ASSERT_EQ(host_->init_printman(file.constData()), 0);
        host_->report_printer_id = text("nobody");
        host_->report_setup_file = path(text("none.bin"));
    }

    /// Every operation that asks the user, and how many dialogs it opens.
    struct Asking {
        const char* name;
        int dialogs;
        std::function<int(CPrintMan&, QWidget*)> run;
    };
    static std::vector<Asking> all() {
        return {{"print_rpt_page", 2,
                 [](CPrintMan& host, QWidget* window) {
                     return host.print_rpt_page(window, nullptr, 1, 1, 0, 0);
                 }},
                {"save_rpt_pdffile", 1,
                 [](CPrintMan& host, QWidget* window) { return host.save_rpt_pdffile(window); }},
                {"print_rpt_pdffile", 2,
                 [](CPrintMan& host, QWidget* window) { return host.print_rpt_pdffile(window); }}};
    }

    /// Accepts so many dialogs, the print dialog with a file, and then does @p what in the next.
    void in_dialog(DialogAnswers& answers, int number, const std::function<void(QDialog&)>& what) {
        for (int i = 1; i < number; ++i)
            answers.then([this](QDialog& dialog) {
                if (auto* file = dialog.findChild<QLineEdit*>(text("filename")))
                    file->setText(path(text("chosen.ps")));
                DialogAnswers::ok(dialog);
            });
        answers.then(what);
    }

    void expect_nothing_printed(const char* operation) {
        EXPECT_EQ(files(), QStringList()) << operation;
        EXPECT_EQ(shared_scratch(), QStringList()) << operation;
        EXPECT_EQ(log(), QStringList()) << operation;
    }

    std::unique_ptr<CPrintMan> host_;
    std::unique_ptr<QWidget> window_;
};

} // namespace

TEST_F(Lifetime, aWindowThatGoesUnderADialogCancelsTheJob) {
    for (const Asking& operation : all()) {
        for (int dialog = 1; dialog <= operation.dialogs; ++dialog) {
            renew();
            DialogAnswers answers;
            in_dialog(answers, dialog, [this](QDialog&) { window_.reset(); });
            EXPECT_EQ(operation.run(*host_, window_.get()), 0) << operation.name << dialog;
            EXPECT_TRUE(host_->last_job_ok()) << host_->last_job_error().toStdString();
            expect_nothing_printed(operation.name);
        }
    }
}

TEST_F(Lifetime, aManagerThatGoesUnderADialogCancelsTheJob) {
    for (const Asking& operation : all()) {
        for (int dialog = 1; dialog <= operation.dialogs; ++dialog) {
            renew();
            DialogAnswers answers;
            in_dialog(answers, dialog, [this](QDialog& open) {
                host_.reset();
                DialogAnswers::ok(open);
            });
            EXPECT_EQ(operation.run(*host_, window_.get()), 0) << operation.name << dialog;
            expect_nothing_printed(operation.name);
        }
    }
}

TEST_F(Lifetime, aManagerThatGoesInAnEventEndsTheJob) {
    for (const char* id : {"laser", "plain"}) {
        renew();
        host_->text_once = true;
        QMetaObject::invokeMethod(
            window_.get(), [this] { host_.reset(); }, Qt::QueuedConnection);
        EXPECT_EQ(host_->print_rpt_page(nullptr, id, 1, 1, 0, 0), 0);
        EXPECT_EQ(host_, nullptr);
        EXPECT_EQ(files(), QStringList());
        EXPECT_EQ(testsupport::read_file(tools_.filePath(text("job"))), "");
    }
}

TEST_F(Lifetime, aManagerThatGoesWhileAPageIsToldEndsTheJob) {
    host_->pdf_mode = true;
    host_->set_progress([this](int done, int) {
        if (done == 2)
            host_.reset();
        return true;
    });
    EXPECT_EQ(host_->print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 0);
    EXPECT_EQ(host_, nullptr);
    expect_nothing_printed("print_rpt_page");
}

TEST_F(Lifetime, aManagerThatGoesWhileAToolWorksEndsTheJob) {
    // A job that waits for its end hangs.
    stub("ps2pdf", "/bin/sleep 3600\n");
    host_->pdf_mode = true;
    host_->set_progress([this, again = 0](int done, int) mutable {
        if (done == 3 && ++again == 2)
            host_.reset();
        return true;
    });
    write_file(path(text("job.bin")),
               QByteArray::fromStdString(setup_bytes({record("laser", "office")})));
    EXPECT_EQ(host_->print_serverrpt_page("laser", 1, 1, 0, path(text("out.pdf")),
                                          path(text("job.bin")), {}, {}),
              0);
    EXPECT_EQ(host_, nullptr);
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(Lifetime, noOtherReportIsTakenUntilTheJobHasEnded) {
    const QByteArray same = reports_.filePath(text("r.rpt")).toLocal8Bit();
    int refused = 0;
    QMetaObject::invokeMethod(
        window_.get(),
        [&] {
            refused =
                (host_->init_printman(same.constData()) == -1) + (host_->init_printman() == -1);
        },
        Qt::QueuedConnection);
    EXPECT_EQ(host_->print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 1);
    EXPECT_EQ(refused, 2);
    EXPECT_TRUE(testsupport::read_file(tools_.filePath(text("job"))).contains("%%Pages: 3\n"));
    EXPECT_EQ(host_->init_printman(same.constData()), 0);
}

TEST_F(Lifetime, aJobThatIsCanceledInADialogPrintsNothing) {
    DialogAnswers answers;
    in_dialog(answers, 2, [this](QDialog& dialog) {
        host_->printing_canceled();
        DialogAnswers::ok(dialog);
    });
    EXPECT_EQ(host_->print_rpt_page(window_.get(), nullptr, 1, 1, 0, 0), 0);
    expect_nothing_printed("print_rpt_page");
}
