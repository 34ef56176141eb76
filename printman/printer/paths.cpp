#include <printman/printer/hostservices.h>
#include <printman/printer/paths.h>
#include <printman/printer/textfield.h>
#include <printman/system/freename.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <array>
#include <cstdlib>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using PathBuffer = std::array<char, 256>;

/// Null when the setting has no value.
const char* setting(const char* name) {
    const char* const value = GetEnv(name, "dlwmenu.ini", "env");
    return value && *value ? value : nullptr;
}

/// Empty when it is the current directory and that was removed.
QString directory(const char* name) {
    const char* const value = setting(name);
    return value ? QFile::decodeName(value) : QDir::currentPath();
}

QString config_path(const QString& name) {
    const QString dir = directory("PRTINI");
    return dir.isEmpty() ? dir : dir + name;
}

QString scratch_path(const QString& prefix, const QString& ext) {
    const QString dir = directory("TMPDIR");
    return dir.isEmpty() ? dir : get_tmpfile(dir, prefix, ext);
}

char* scratch_name(PathBuffer& buffer, const char* file) {
    const char* const dir = setting("TMPDIR");
    const std::string path = std::string(dir ? dir : "/tmp") + file;
    const bool fits = path.size() < buffer.size();
    printman::put_text(buffer.data(), buffer.size(), fits ? path : std::string());
    return buffer.data();
}

} // namespace

QString get_prtbin_path() {
    return config_path(QStringLiteral("/PRTSETUP.BIN"));
}

QString get_prtini_path() {
    return config_path(QStringLiteral("/dlwprt.ini"));
}

QString get_tmpprtbin_path() {
    return scratch_path(QStringLiteral("prt"), QStringLiteral("bin"));
}

QString get_prtoutput_path() {
    return scratch_path(QStringLiteral("kpo"), QStringLiteral("ps"));
}

QString get_output_path() {
    return scratch_path(QStringLiteral("ko"), QStringLiteral("txt"));
}

QString get_pdfform_path() {
    return scratch_path(QStringLiteral("fm"), QStringLiteral("pdf"));
}

QString get_watermark_path() {
    return scratch_path(QStringLiteral("wm"), QStringLiteral("txt"));
}

QString get_tmpfile(const QString& dir, const QString& prefix, const QString& ext) {
    return printman::timed_free_name(dir + u'/' + prefix, ext.isNull() ? ext : u'.' + ext);
}

char* get_pdffile_name() {
    static PathBuffer buffer;
    return scratch_name(buffer, "/korvopdf.pdf");
}

char* get_formfile_name() {
    static PathBuffer buffer;
    return scratch_name(buffer, "/korvoform.pdf");
}

// In bytes, as the host says them: not every name is text in the locale's encoding.
std::string printman::new_report_name() {
    const char* const dir = setting("TMPDIR");
    PathBuffer current{};
    const std::string start = dir                                        ? dir
                              : ::getcwd(current.data(), current.size()) ? current.data()
                                                                         : "/tmp";
    std::string name;
    struct stat status {};
    do {
        name = start + "/rpt" + std::to_string(QRandomGenerator::global()->bounded(RAND_MAX));
    } while (::lstat(name.c_str(), &status) == 0);
    return name;
}
