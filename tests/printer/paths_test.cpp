#include "tests/support/scratch.h"
#include "tests/support/testhost.h"

#include <printman/printer/paths.h>

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace {

class Paths : public testing::Test {
protected:
    Paths() { testhost::reset(); }
    ~Paths() override { testhost::reset(); }

    QString directory() const { return QString::fromStdString(scratch_.path("")).chopped(1); }

    Scratch scratch_;
};

/// Whether @p path is @p start, a decimal number without leading zeroes, and @p end.
bool is_numbered(const QString& path, const QString& start, const QString& end) {
    const QRegularExpression form(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(start) + QStringLiteral("(0|[1-9][0-9]*)") +
        QRegularExpression::escape(end)));
    return form.match(path).hasMatch();
}

struct ScratchPath {
    std::function<QString()> path;
    const char* prefix;
    const char* ext;
};

const ScratchPath scratch_paths[] = {
    {get_tmpprtbin_path, "prt", "bin"}, {get_prtoutput_path, "kpo", "ps"},
    {get_output_path, "ko", "txt"},     {get_pdfform_path, "fm", "pdf"},
    {get_watermark_path, "wm", "txt"},
};

void expect_scratch_paths_in(const QString& directory) {
    for (const auto& [path, prefix, ext] : scratch_paths) {
        const QString name = path();
        EXPECT_TRUE(
            is_numbered(name, directory + u'/' + QLatin1String(prefix), u'.' + QLatin1String(ext)))
            << name.toStdString();
    }
}

/// Makes another directory the current one while it lives.
class CurrentDirectory {
public:
    explicit CurrentDirectory(const QString& path) : old_(QDir::currentPath()) {
        EXPECT_TRUE(QDir::setCurrent(path));
    }
    ~CurrentDirectory() { QDir::setCurrent(old_); }
    CurrentDirectory(const CurrentDirectory&) = delete;
    CurrentDirectory& operator=(const CurrentDirectory&) = delete;

private:
    QString old_;
};

} // namespace

TEST_F(Paths, configurationFilesStandInTheDirectoryOfPrinters) {
    testhost::set("PRTINI", "/etc/printers");
    EXPECT_EQ(get_prtbin_path(), QStringLiteral("/etc/printers/PRTSETUP.BIN"));
    EXPECT_EQ(get_prtini_path(), QStringLiteral("/etc/printers/dlwprt.ini"));
    EXPECT_EQ(testhost::calls(),
              QStringList(2, QStringLiteral("GetEnv(PRTINI, dlwmenu.ini, env)")));
}

TEST_F(Paths, withoutTheSettingTheyStandInTheCurrentDirectory) {
    const CurrentDirectory here(directory());
    for (const bool is_empty : {false, true}) {
        if (is_empty)
            testhost::set("PRTINI", "");
        EXPECT_EQ(get_prtbin_path(), QDir::currentPath() + QStringLiteral("/PRTSETUP.BIN"));
        EXPECT_EQ(get_prtini_path(), QDir::currentPath() + QStringLiteral("/dlwprt.ini"));
    }
}

TEST_F(Paths, theSettingIsTakenAsItIs) {
    testhost::set("PRTINI", "sub/../dir with blanks/");
    EXPECT_EQ(get_prtini_path(), QStringLiteral("sub/../dir with blanks//dlwprt.ini"));
    testhost::set("PRTINI", "/dr\xc3\xbc"
                            "cker");
    EXPECT_EQ(get_prtini_path().toUtf8(), QByteArray("/dr\xc3\xbc"
                                                     "cker/dlwprt.ini"));
}

TEST_F(Paths, scratchFilesStandInTheDirectoryOfTemporaryFiles) {
    testhost::set("TMPDIR", directory().toUtf8());
    expect_scratch_paths_in(directory());
    EXPECT_EQ(testhost::calls(),
              QStringList(5, QStringLiteral("GetEnv(TMPDIR, dlwmenu.ini, env)")));
    EXPECT_TRUE(scratch_.names().isEmpty()) << "none is created";
}

TEST_F(Paths, aSlashAtTheDirectorysEndStays) {
    testhost::set("TMPDIR", directory().toUtf8() + '/');
    expect_scratch_paths_in(directory() + u'/');
}

TEST_F(Paths, withoutTheSettingScratchFilesStandInTheCurrentDirectory) {
    const CurrentDirectory here(directory());
    expect_scratch_paths_in(QDir::currentPath());
    testhost::set("TMPDIR", "");
    expect_scratch_paths_in(QDir::currentPath());
}

TEST_F(Paths, aDirectoryThatDoesNotExistIsNotNoticed) {
    testhost::set("TMPDIR", "/no/such/directory");
    expect_scratch_paths_in(QStringLiteral("/no/such/directory"));
}

TEST_F(Paths, inARemovedCurrentDirectoryNothingStands) {
    const Scratch other;
    ASSERT_EQ(mkdir(other.path("gone").c_str(), 0700), 0);
    const CurrentDirectory here(QString::fromStdString(other.path("gone")));
    ASSERT_EQ(rmdir(other.path("gone").c_str()), 0);
    EXPECT_EQ(get_prtbin_path(), QString());
    EXPECT_EQ(get_prtini_path(), QString());
    EXPECT_EQ(get_watermark_path(), QString());
}

TEST_F(Paths, aTemporaryNameIsPrefixNumberAndExtension) {
    const QString dir = QStringLiteral("/var/tmp");
    const QString prefix = QStringLiteral("prt");
    const QString start = dir + u'/' + prefix;
    EXPECT_TRUE(is_numbered(get_tmpfile(dir, prefix, QStringLiteral("bin")), start,
                            QStringLiteral(".bin")));
    EXPECT_TRUE(is_numbered(get_tmpfile(dir, prefix, QString()), start, QString()));
    EXPECT_TRUE(
        is_numbered(get_tmpfile(dir, prefix, QStringLiteral("")), start, QStringLiteral(".")));
    EXPECT_TRUE(
        is_numbered(get_tmpfile(QString(), QString(), QString()), QStringLiteral("/"), QString()));
}

TEST_F(Paths, aTemporaryNameHasTheFirstNumberOfTheSecond) {
    const auto before = std::time(nullptr);
    const QString name = get_tmpfile(directory(), QStringLiteral("prt"), QStringLiteral("bin"));
    const auto after = std::time(nullptr);
    QStringList expected;
    for (auto second = before; second <= after; ++second) {
        std::srand(static_cast<unsigned>(second));
        expected << directory() + QStringLiteral("/prt%1.bin").arg(std::rand());
    }
    EXPECT_TRUE(expected.contains(name)) << name.toStdString();
}

TEST_F(Paths, aTemporaryNameThatIsTakenIsNotGivenAgain) {
    QSet<QString> names;
    for (int i = 0; i < 3; ++i) {
        const QString name = get_tmpfile(directory(), QStringLiteral("x"), QString());
        EXPECT_FALSE(QFile::exists(name));
        names.insert(name);
        scratch_.write("", QFileInfo(name).fileName().toStdString());
    }
    EXPECT_EQ(names.size(), 3);
}

TEST_F(Paths, theProgramsOwnRandomNumbersGoOn) {
    std::srand(42);
    const int first = std::rand();
    const int second = std::rand();
    std::srand(42);
    EXPECT_EQ(std::rand(), first);
    get_tmpfile(directory(), QStringLiteral("x"), QString());
    EXPECT_EQ(std::rand(), second);
}

TEST_F(Paths, pdfScratchNamesFollowTheDirectoryOfTemporaryFiles) {
    testhost::set("TMPDIR", "/var/scratch/");
    EXPECT_STREQ(get_pdffile_name(), "/var/scratch//korvopdf.pdf");
    EXPECT_STREQ(get_formfile_name(), "/var/scratch//korvoform.pdf");
    testhost::set("TMPDIR", "");
    EXPECT_STREQ(get_pdffile_name(), "/tmp/korvopdf.pdf");
    EXPECT_STREQ(get_formfile_name(), "/tmp/korvoform.pdf");
}

TEST_F(Paths, withoutTheSettingPdfScratchNamesStandInTmp) {
    EXPECT_STREQ(get_pdffile_name(), "/tmp/korvopdf.pdf");
    EXPECT_STREQ(get_formfile_name(), "/tmp/korvoform.pdf");
}

TEST_F(Paths, eachPdfScratchNameHasABufferOfItsOwn) {
    char* const pdf = get_pdffile_name();
    char* const form = get_formfile_name();
    EXPECT_NE(pdf, form);
    EXPECT_EQ(get_pdffile_name(), pdf);
    EXPECT_STREQ(pdf, "/tmp/korvopdf.pdf");
}

TEST_F(Paths, aPdfScratchNameThatDoesNotFitIsEmpty) {
    const size_t longest = 255 - std::strlen("/korvopdf.pdf");
    testhost::set("TMPDIR", QByteArray(static_cast<int>(longest), 'd'));
    EXPECT_EQ(std::strlen(get_pdffile_name()), 255u);
    EXPECT_STREQ(get_formfile_name(), "");
    testhost::set("TMPDIR", QByteArray(static_cast<int>(longest) + 1, 'd'));
    EXPECT_STREQ(get_pdffile_name(), "");
    testhost::set("TMPDIR", QByteArray(100000, 'd'));
    EXPECT_STREQ(get_pdffile_name(), "");
}
