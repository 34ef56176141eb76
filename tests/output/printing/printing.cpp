#include "tests/output/printing/printing.h"

#include <QFile>

using namespace testsupport;

namespace {

void take(printman::SharedScratch& names) {
    printman::JobControl control;
    EXPECT_TRUE(names.take(control).ok());
    EXPECT_TRUE(names.is_held());
}

} // namespace

Printing::Printing(JobLock lock) : before_(QDir::currentPath()) {
    take(job_lock_);
    free_scratch_names();
    if (lock == JobLock::free)
        job_lock_.release();
    testhost::reset();
    testhost::set("TMPDIR", work_.path().toLocal8Bit());
    testhost::set("PRTINI", reports_.path().toLocal8Bit());
    QDir::setCurrent(work_.path());
    write_setup({record("laser", "office"), record("plain", "My GENERIC printer")});
}

Printing::~Printing() {
    QDir::setCurrent(before_);
    take(job_lock_);
    free_scratch_names();
    testhost::reset();
}

void Printing::report(int pages) {
    QByteArray bytes = "#!?PAGETOP 20,3\n";
    for (int page = 1; page <= pages; ++page)
        bytes += (page == 1 ? "" : "#!?PAGETOP\n") + ("page" + QByteArray::number(page)) +
                 "\nsecond line\n\n#!?PAGEEND\n";
    const QString file = reports_.filePath(QStringLiteral("r.rpt"));
    write_file(file, bytes);
    ASSERT_EQ(manager_.init_printman(file.toLocal8Bit().constData()), 0);
}

void Printing::write_setup(const std::vector<printman::SetupRecord>& records) const {
    write_file(reports_.filePath(QStringLiteral("PRTSETUP.BIN")),
               QByteArray::fromStdString(setup_bytes(records)));
}

printman::SetupRecord Printing::record(std::string_view id, std::string_view queue) {
    printman::SetupRecord record = setup_record(id);
    set_text(record.printer_name, queue);
    set_text(record.font.log_font.face_name, "Liberation Mono");
    record.devmode.orientation = 0;
    record.margins = {0.5, 0.5, 0.5, 0.5};
    return record;
}

void Printing::stub(const char* tool, const QByteArray& body) const {
    write_script(tools_.filePath(QString::fromLatin1(tool)), body);
}

void Printing::stub_tools(Stubs stubs) {
    const QByteArray log = tools_.filePath(QStringLiteral("log")).toLocal8Bit();
    const QByteArray note = "printf '%s' \"${0##*/}\" >>" + log +
                            "\nfor word; do printf ' [%s]' \"$word\" >>" + log +
                            "; done\nprintf '\\n' >>" + log + "\n";
    const bool make = stubs == Stubs::make_files;
    stub("ps2pdf", note + (make ? "echo \"pdf of $1\" >\"$2\"\n" : ""));
    stub("pdftk", note + (make ? "[ -s \"$1\" ] && [ -s \"$3\" ] || exit 3\n"
                                 "echo \"$1 $2 $3\" >\"$5\"\n"
                               : ""));
    stub("lpr", note);
    stub("lp", note + "/bin/cat >" + tools_.filePath(QStringLiteral("job")).toLocal8Bit());
    path_.reset();
    path_ = std::make_unique<EnvironmentGuard>("PATH", tools_.path().toLocal8Bit());
}

QStringList Printing::log() const {
    return QString::fromUtf8(read_file(tools_.filePath(QStringLiteral("log"))))
        .split(u'\n', Qt::SkipEmptyParts);
}

QStringList Printing::files() const {
    return QDir(work_.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
}

QStringList Printing::shared_scratch() {
    printman::SharedScratch no_other_job;
    take(no_other_job);
    return taken_scratch_names();
}
