#include "tests/output/printing/printing.h"

#include <QPainter>

using testsupport::pdf_words;
using testsupport::text;
using testsupport::write_file;

namespace {

/// Jobs on printers, with recording programs for the spooler.
class PrintJobs : public Printing {
protected:
    PrintJobs() { stub_tools(); }

    int serve(const char* id, int copies = 1, int collate = 1, int no_page_map = 0) {
        write_file(path(text("job.bin")),
                   QByteArray::fromStdString(
                       setup_bytes({record("laser", "office"), record("plain", "Generic"),
                                    record("loud", "GENERIC")})));
        return manager_.print_serverrpt_page(id, copies, collate, no_page_map, out(),
                                             path(text("job.bin")), {}, {});
    }
    QString out() const { return path(text("out.ps")); }

    /// The words of a PostScript file's pages.
    QStringList words(const QString& ps) {
        path_.reset();
        const QString pdf = testsupport::make_pdf(ps);
        QStringList found = pdf_words(pdf);
        QFile::remove(pdf);
        path_ =
            std::make_unique<testsupport::EnvironmentGuard>("PATH", tools_.path().toLocal8Bit());
        return found;
    }
    QStringList page_words(const QString& ps) { return words(ps).filter(text("page")); }

    static QStringList pages(std::initializer_list<int> numbers) {
        QStringList list;
        for (const int number : numbers)
            list << text("page%1").arg(number);
        return list;
    }
};

} // namespace

TEST_F(PrintJobs, collatedCopiesRepeatTheReportAndOthersEachPage) {
    report(3);
    ASSERT_EQ(serve("laser", 2, 1), 1) << error().toStdString();
    EXPECT_EQ(page_words(out()), pages({1, 2, 3, 1, 2, 3}));
    EXPECT_TRUE(read(text("out.ps")).contains("%%Pages: 6\n"));
    ASSERT_EQ(serve("laser", 2, 0), 1);
    EXPECT_EQ(page_words(out()), pages({1, 1, 2, 2, 3, 3}));
    EXPECT_TRUE(read(text("out.ps")).contains("%%Pages: 6\n"));
    EXPECT_EQ(manager_.get_cur_page(), 3);
}

TEST_F(PrintJobs, noCopiesAreAnEmptyJob) {
    report(3);
    for (const int copies : {0, -1}) {
        ASSERT_EQ(serve("laser", copies), 1);
        EXPECT_EQ(page_words(out()), QStringList());
    }
}

TEST_F(PrintJobs, aServerJobConsumesItsSetupFileWhetherThePrinterIsFoundOrNot) {
    report(1);
    ASSERT_EQ(serve("laser"), 1);
    EXPECT_EQ(files(), QStringList{text("out.ps")});
    EXPECT_EQ(serve("nobody"), 0);
    EXPECT_EQ(error(), text("Can not find report printer 'nobody'"));
    EXPECT_EQ(files(), QStringList{text("out.ps")});
}

TEST_F(PrintJobs, aServerJobWithoutAPrinterIdDoesNothing) {
    report(1);
    for (const char* none : {"", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(serve(none), 0);
        EXPECT_EQ(error(), text("there is no printer id"));
        EXPECT_EQ(files(), QStringList{text("job.bin")});
    }
}

TEST_F(PrintJobs, aPrinterWhoseNameHoldsGenericGetsPlainText) {
    for (const char* id : {"plain", "loud"}) {
        report(1);
        ASSERT_EQ(serve(id), 1) << error().toStdString();
        EXPECT_TRUE(words(out()).contains(text("second")));
        // The report was indexed before it was saved, so its page comes twice, and a page follows.
        EXPECT_TRUE(read(text("out.ps")).contains("%%Pages: 3\n"));
        EXPECT_EQ(files(), QStringList{text("out.ps")});
    }
}

TEST_F(PrintJobs, aPrinterOfPlainTextGetsEachPageOnceWhereTheHostWantsThat) {
    report(3);
    manager_.text_once = true;
    ASSERT_EQ(serve("plain", 2), 1) << error().toStdString();
    EXPECT_EQ(page_words(out()), pages({1, 2, 3, 1, 2, 3}));
    // The last page, too, is followed by a break.
    EXPECT_TRUE(read(text("out.ps")).contains("%%Pages: 7\n"));
}

TEST_F(PrintJobs, ofPlainTextShowProgressAndCanBeStopped) {
    report(3);
    manager_.text_once = true;
    QStringList seen;
    int last = 100;
    manager_.set_progress([&](int done, int total) {
        seen << text("%1/%2").arg(done).arg(total);
        return done < last;
    });
    ASSERT_EQ(serve("plain", 2), 1) << error().toStdString();
    // First the text is made.
    EXPECT_EQ(seen, text("1/3 2/3 3/3 1/6 2/6 3/6 4/6 5/6 6/6").split(u' '));
    const QByteArray whole = read(text("out.ps"));
    last = 5;
    EXPECT_EQ(serve("plain", 2), 0);
    EXPECT_EQ(error(), text("canceled"));
    EXPECT_EQ(read(text("out.ps")), whole);
    EXPECT_EQ(files(), QStringList{text("out.ps")});
}

TEST_F(PrintJobs, canBeStoppedWhileTheirSpoolerTakesItsTime) {
    report(2);
    // A job that waits for its end hangs.
    stub("lp", "/bin/cat >/dev/null\nexec /bin/sleep 3600\n");
    int asked = 0;
    manager_.set_progress([&asked](int done, int total) { return done < total || ++asked < 3; });
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 0);
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(error(), text("canceled"));
}

TEST_F(PrintJobs, withoutASpoolerTellWhichPackageHasIt) {
    report(1);
    ASSERT_TRUE(QFile::remove(tools_.filePath(text("lp"))));
    ASSERT_TRUE(QFile::remove(tools_.filePath(text("lpr"))));
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 0);
    EXPECT_EQ(error(), text("lp is not installed; the Debian package cups-client has it"));
}

TEST_F(PrintJobs, aLocalJobGoesToTheSpoolerOfItsQueue) {
    report(2);
    ASSERT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 1) << error().toStdString();
    EXPECT_EQ(log(), QStringList{text("lp [-d] [office]")});
    EXPECT_EQ(page_words(tools_.filePath(text("job"))), pages({1, 2}));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(PrintJobs, aLocalJobGoesToTheSpoolerAfterAServerJobToo) {
    report(1);
    ASSERT_EQ(serve("laser"), 1);
    const QByteArray served = read(text("out.ps"));
    ASSERT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 5, 0), 1);
    EXPECT_EQ(log(), QStringList{text("lp [-d] [office]")});
    EXPECT_EQ(read(text("out.ps")), served);
}

TEST_F(PrintJobs, aLocalGenericJobLeavesNoTextFile) {
    report(1);
    ASSERT_EQ(manager_.print_rpt_page(nullptr, "plain", 2, 1, 0, 0), 1) << error().toStdString();
    EXPECT_EQ(log(), QStringList{text("lp [-d] [My GENERIC printer]")});
    EXPECT_EQ(files(), QStringList());
}

TEST_F(PrintJobs, aLocalJobInPdfModeIsPrintedByLpr) {
    report(2);
    manager_.pdf_mode = true;
    ASSERT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 1) << error().toStdString();
    EXPECT_EQ(log(), (QStringList{text("ps2pdf [/tmp/korvo.ps] [/tmp/korvo.pdf]"),
                                  text("lpr [-P] [office] [/tmp/korvo.ps]")}));
    EXPECT_EQ(shared_scratch(), QStringList());
    EXPECT_TRUE(manager_.pdf_mode);
}

TEST_F(PrintJobs, aPrinterThatIsNotFoundEndsALocalJobWithoutAWord) {
    report(1);
    const std::string told =
        said([this] { EXPECT_EQ(manager_.print_rpt_page(nullptr, "nobody", 1, 1, 0, 0), 0); });
    EXPECT_EQ(told, "");
    EXPECT_FALSE(manager_.last_job_ok());
    EXPECT_EQ(error(), text("Can not find report printer 'nobody'"));
    EXPECT_EQ(log(), QStringList());
}

TEST_F(PrintJobs, aQueueThatTheSpoolerDoesNotKnowIsAnError) {
    report(1);
    stub("lp", "exit 1\n");
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 0);
    EXPECT_TRUE(error().startsWith(text("lp "))) << error().toStdString();
    manager_.pdf_mode = true;
    stub("lpr", "exit 1\n");
    const std::string told =
        said([this] { EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 0); });
    EXPECT_EQ(told, "printman: 'lpr -P office /tmp/korvo.ps' failed with status 1\n");
    EXPECT_EQ(error(), text("'lpr -P office /tmp/korvo.ps' failed with status 1"));
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(PrintJobs, theProgressFunctionSeesEveryPageAndMayStopTheJob) {
    report(3);
    write_file(out(), "earlier");
    QStringList seen;
    int last = 100;
    manager_.set_progress([&](int done, int total) {
        seen << text("%1/%2").arg(done).arg(total);
        return done < last;
    });
    ASSERT_EQ(serve("laser", 2, 0), 1);
    EXPECT_EQ(seen, (QStringList{text("1/6"), text("2/6"), text("3/6"), text("4/6"), text("5/6"),
                                 text("6/6")}));
    const QByteArray whole = read(text("out.ps"));
    last = 2;
    EXPECT_EQ(serve("laser"), 0);
    EXPECT_EQ(error(), text("canceled"));
    EXPECT_EQ(read(text("out.ps")), whole);
    manager_.pdf_mode = true;
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 0);
    EXPECT_EQ(log(), QStringList());
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(PrintJobs, canBeCanceledFromAnEventWhileTheyPrint) {
    report(3);
    int printed = 0;
    manager_.set_progress([&](int, int) {
        if (++printed == 2)
            QMetaObject::invokeMethod(
                &manager_, [this] { manager_.printing_canceled(); }, Qt::QueuedConnection);
        return true;
    });
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 0);
    EXPECT_EQ(error(), text("canceled"));
    EXPECT_EQ(printed, 2);
    printed = 10;
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 1) << error().toStdString();
}

TEST_F(PrintJobs, aHostThatTurnsThePagesMeanwhileDoesNotChangeTheJob) {
    report(4);
    manager_.set_progress([&](int, int) {
        QMetaObject::invokeMethod(
            &manager_, [this] { manager_.get_rpt_page(1); }, Qt::QueuedConnection);
        return true;
    });
    ASSERT_EQ(manager_.print_rpt_page(nullptr, "laser", 2, 0, 0, 0), 1);
    EXPECT_EQ(page_words(tools_.filePath(text("job"))), pages({1, 1, 2, 2, 3, 3, 4, 4}));
}

TEST_F(PrintJobs, anotherJobThatIsStartedMeanwhileIsRefused) {
    report(2);
    CPrintMan other;
    ASSERT_EQ(other.init_printman(reports_.filePath(text("r.rpt")).toLocal8Bit().constData()), 0);
    int refused = 0;
    manager_.set_progress([&](int, int) {
        QMetaObject::invokeMethod(
            &manager_,
            [&] {
                refused += other.print_rpt_page(nullptr, "laser", 1, 1, 0, 0) == 0;
                refused += manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0) == 0;
                refused += other.create_pdffile() + other.print_pdf_file() +
                               other.print_serverpdf_file() + other.generate_watermark() ==
                           0;
            },
            Qt::QueuedConnection);
        return true;
    });
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 1) << error().toStdString();
    EXPECT_EQ(refused, 3);
    EXPECT_EQ(other.last_job_error(), text("another report is being printed"));
    EXPECT_EQ(page_words(tools_.filePath(text("job"))), pages({1, 2}));
}

TEST_F(PrintJobs, aReportThatBecomesUnreadableLeavesNoHalfJob) {
    report(3);
    write_file(out(), "earlier");
    manager_.set_progress(
        [&](int, int) { return QFile::remove(reports_.filePath(text("r.rpt"))) || true; });
    EXPECT_EQ(serve("laser"), 0);
    EXPECT_EQ(error(), text("cannot read page 2 of the report"));
    EXPECT_EQ(read(text("out.ps")), "earlier");
}

TEST_F(PrintJobs, aManagerWithoutReportOrPrinterPrintsNothing) {
    EXPECT_EQ(serve("laser"), 0);
    EXPECT_EQ(files(), QStringList());
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 0);
    EXPECT_EQ(manager_.create_pdffile() + manager_.print_pdf_file() +
                  manager_.print_serverpdf_file() + manager_.save_rpt_pdffile(nullptr) +
                  manager_.print_rpt_pdffile(nullptr) + manager_.generate_watermark(),
              0);
    EXPECT_EQ(manager_.create_generic_printer("office"), nullptr);
    EXPECT_FALSE(manager_.next_page());
    manager_.init_printman();
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 0);
    EXPECT_EQ(error(), text("the report has no pages"));
    EXPECT_EQ(manager_.print_serverpdf_file(), 0);
    EXPECT_EQ(log(), QStringList());
}

TEST_F(PrintJobs, aHostPrintsPagesOfItsOwn) {
    report(2);
    DLWDEVMODE sheet{};
    sheet.paper_size = 2;
    const std::unique_ptr<QPainter> painter(manager_.create_printer("office", sheet, out()));
    ASSERT_TRUE(painter);
    EXPECT_EQ(manager_.create_printer("office", sheet, out()), nullptr);
    EXPECT_EQ(error(), text("the printer has not ended another job"));
    EXPECT_EQ(serve("laser"), 0);
    FontInfo info{};
    set_text(info.log_font.face_name, "Liberation Mono");
    info.point_size = 8;
    const std::unique_ptr<QFont> font(manager_.create_font(info));
    EXPECT_EQ(font->pointSize(), 8);
    painter->setFont(*font);
    manager_.set_logical_unit(painter.get(), 0, 0, 0);
    ASSERT_EQ(manager_.get_rpt_page(1), 1);
    EXPECT_EQ(manager_.print_page(painter.get()), 1);
    EXPECT_TRUE(manager_.next_page());
    ASSERT_EQ(manager_.get_rpt_page(2), 1);
    EXPECT_EQ(manager_.print_page(painter.get()), 1);
    EXPECT_TRUE(painter->end());
    EXPECT_FALSE(manager_.next_page());
    EXPECT_EQ(page_words(out()), pages({1, 2}));
    EXPECT_TRUE(read(text("out.ps")).contains("%%BoundingBox: 0 0 612 792\n"));
}

TEST_F(PrintJobs, aHostPrintsATextFileOnAGenericPrinter) {
    report(1);
    write_file(path(text("t.txt")), "\nfirst\n\nsecond\n");
    const std::unique_ptr<QPainter> painter(manager_.create_generic_printer("Generic", out()));
    ASSERT_TRUE(painter);
    EXPECT_EQ(manager_.print_generic_rpt(nullptr, painter.get(),
                                         path(text("t.txt")).toLocal8Bit().constData()),
              1);
    EXPECT_EQ(manager_.print_generic_rpt(nullptr, painter.get(), "/nowhere/t.txt"), 0);
    EXPECT_EQ(manager_.print_generic_rpt(nullptr, nullptr, "t.txt"), 0);
    EXPECT_TRUE(painter->end());
    EXPECT_EQ(words(out()), (QStringList{text("first"), text("second")}));
    EXPECT_TRUE(read(text("out.ps")).contains("%%Pages: 2\n"));
}
