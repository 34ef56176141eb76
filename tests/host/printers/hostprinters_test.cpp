#include "host/printers/hostprinters.h"
#include "host/settings/settings.h"
#include "tests/host/program.h"
#include "tests/support/tools.h"

#include <printman/printman.h>

#include <QDir>

namespace {

class HostPrinterLists : public testing::Test {
protected:
    void write(const char* name, const QByteArray& bytes) const {
        testsupport::write_file(directory_.filePath(QString::fromLatin1(name)), bytes);
    }

    host::HostPrinters read() const { return host::HostPrinters::read(settings_); }

    /// What is wrong, without the directory.
    QByteArray fault() const {
        const host::HostPrinters printers = read();
        EXPECT_EQ(printers.errors.size(), 1);
        EXPECT_TRUE(printers.empty());
        return printers.errors.value(0).replace(settings_.directory() + '/', "");
    }

    QTemporaryDir directory_;
    host::Settings settings_{QFile::encodeName(directory_.path())};
};

constexpr const char* laser = "[LASER]\nname=laser1\nfont=Courier\nstyle=Bold\nsize=9\n"
                              "paper=Letter\norientation=landscape\nmargins=0.5,1,1.5,2\n"
                              "page_length=60\nfirst_line=2\nlast_line=58\n";

} // namespace

TEST_F(HostPrinterLists, withoutFilesThereIsNoPrinterAndNoFault) {
    EXPECT_TRUE(read().empty());
    EXPECT_EQ(read().errors, QList<QByteArray>());
    write("dlwserver.ini", "");
    write("dlwunix.ini", "\n; none\n# none\r\n \n");
    EXPECT_TRUE(read().empty());
    EXPECT_EQ(read().errors, QList<QByteArray>());
    write("dlwserver.ini", "\xef\xbb\xbf; [NONE]\n");
    EXPECT_EQ(read().errors, QList<QByteArray>());
}

TEST_F(HostPrinterLists, theLibraryGetsDefinedPrintersAsItsDialogShowsThem) {
    write("dlwserver.ini", QByteArray(laser) + "[B]\nname=b\n");
    CPrintMan manager;
    read().hand_to(manager);
    EXPECT_FALSE(manager.is_unix_print());
    WinPrtSetup printer{};
    ASSERT_EQ(manager.first_win_printer(&printer), 1);
    EXPECT_STREQ(printer.printer_id, "LASER");
    EXPECT_STREQ(printer.printer_name, "laser1");
    EXPECT_STREQ(printer.orientation_name, "Landscape");
    EXPECT_STREQ(printer.paper_name, "8.5 x 11 inches, 216 x 279 mm");
    EXPECT_STREQ(printer.font_name, "Courier");
    EXPECT_STREQ(printer.style_name, "Bold");
    EXPECT_EQ(printer.point_size, 9);
    EXPECT_EQ(printer.page_length, 60);
    EXPECT_EQ(printer.first_line, 2);
    EXPECT_EQ(printer.last_line, 58);
    EXPECT_EQ(printer.top, 0.5);
    EXPECT_EQ(printer.bottom, 1);
    EXPECT_EQ(printer.left, 1.5);
    EXPECT_EQ(printer.right, 2);
    ASSERT_EQ(manager.next_win_printer(&printer), 1);
    EXPECT_STREQ(printer.printer_id, "B");
    EXPECT_STREQ(printer.orientation_name, "Portrait");
    EXPECT_EQ(printer.page_length, 0);
    EXPECT_EQ(manager.next_win_printer(&printer), 0);
}

TEST_F(HostPrinterLists, theLibraryGetsTheQueuesOfTheSystem) {
    write("dlwunix.ini", "[Front]\r\nport = front_desk\r\nDescription=By the door\r\n"
                         "page_length=66\r\nfirst_line=1\r\nlast_line=60\r\n[Back]\r\n");
    CPrintMan manager;
    read().hand_to(manager);
    EXPECT_TRUE(manager.is_unix_print());
    UnixPrtSetup printer{};
    ASSERT_EQ(manager.first_unix_printer(&printer), 1);
    EXPECT_STREQ(printer.printer_id, "Front");
    EXPECT_STREQ(printer.port, "front_desk");
    EXPECT_STREQ(printer.description, "By the door");
    EXPECT_EQ(printer.page_length, 66);
    EXPECT_EQ(printer.first_line, 1);
    EXPECT_EQ(printer.last_line, 60);
    ASSERT_EQ(manager.next_unix_printer(&printer), 1);
    EXPECT_STREQ(printer.printer_id, "Back");
    EXPECT_STREQ(printer.port, "Back");
    EXPECT_EQ(manager.next_unix_printer(&printer), 0);
}

TEST_F(HostPrinterLists, textsAreCutToTheirFieldsAndTheQueueIsUsedWhole) {
    const QByteArray queue(127, 'q');
    write("dlwunix.ini", '[' + QByteArray(500, 'i') + "]\nport=" + queue +
                             "\ndescription=" + QByteArray(10000, 'd') + '\n');
    const host::HostPrinters printers = read();
    ASSERT_EQ(printers.local.size(), 1U);
    const UnixPrtSetup shown = host::shown_printer(printers.local.front());
    EXPECT_EQ(QByteArray(shown.printer_id), QByteArray(55, 'i'));
    EXPECT_EQ(QByteArray(shown.port), QByteArray(79, 'q'));
    EXPECT_EQ(QByteArray(shown.description), QByteArray(83, 'd'));
    const auto printer = host::find_server_printer(printers, shown.printer_id);
    ASSERT_TRUE(printer);
    EXPECT_EQ(printer->queue, queue);
}

TEST_F(HostPrinterLists, faultsAreToldWithTheirLineAndTheListIsEmpty) {
    const auto of_local = [this](const QByteArray& text) {
        write("dlwunix.ini", text);
        return fault();
    };
    EXPECT_EQ(of_local("port=x\n"), "dlwunix.ini:1: a key comes before the first section");
    EXPECT_EQ(of_local("[A\n"), "dlwunix.ini:1: a section must end with ']'");
    EXPECT_EQ(of_local("[ ]\n"), "dlwunix.ini:1: the printer needs an id in []");
    EXPECT_EQ(of_local("[A]\n\n[A]\n"), "dlwunix.ini:3: there is already a printer 'A'");
    EXPECT_EQ(of_local("[A]\nnonsense\n"), "dlwunix.ini:2: neither a section nor a line KEY=value");
    EXPECT_EQ(of_local("[A]\nport=a\nPort=b\n"), "dlwunix.ini:3: port is given twice");
    EXPECT_EQ(of_local("[A]\nqueue=a\n"), "dlwunix.ini:2: unknown key 'queue'");
    EXPECT_EQ(of_local("[A]\nlast_line=-1\n"),
              "dlwunix.ini:2: last_line needs a whole number from 0 to 32767, not '-1'");
    EXPECT_EQ(of_local(QByteArray("[A]\nport=a\0b\n", 13)),
              "dlwunix.ini:2: the line contains a zero byte");
    write("dlwunix.ini", "");
    write("dlwserver.ini", "[A]\nname=a\npaper=round\n");
    EXPECT_TRUE(fault().startsWith("dlwserver.ini:3: paper needs "));
}

TEST_F(HostPrinterLists, aFileThatIsNoListIsToldAtOnce) {
    QByteArray sections;
    for (int i = 0; i <= 1000; ++i)
        sections += '[' + QByteArray::number(i) + "]\n";
    write("dlwunix.ini", sections);
    EXPECT_EQ(fault(), "dlwunix.ini: The file lists more than 1000 printers");
    write("dlwunix.ini", QByteArray(1024 * 1024 + 1, '\n'));
    EXPECT_EQ(fault(), "dlwunix.ini: The file is too large");
    ASSERT_TRUE(QFile::remove(directory_.filePath(QStringLiteral("dlwunix.ini"))));
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("dlwunix.ini")));
    EXPECT_EQ(fault(), "dlwunix.ini: Is a directory");
}

TEST_F(HostPrinterLists, oneListsFaultLeavesTheOther) {
    write("dlwserver.ini", laser);
    write("dlwunix.ini", "[A\n");
    const host::HostPrinters printers = read();
    EXPECT_EQ(printers.defined.size(), 1U);
    EXPECT_EQ(printers.errors.size(), 1);
}

TEST_F(HostPrinterLists, aServerPrinterIsFoundWithItsQueueAndItsSheet) {
    write("dlwserver.ini", laser);
    const auto defined = host::find_server_printer(read(), "LASER");
    ASSERT_TRUE(defined);
    EXPECT_EQ(defined->queue, "laser1");
    EXPECT_EQ(defined->setup.font.point_size, 9);
    write("dlwunix.ini", "[LASER]\nport=front\n[PLAIN]\nport=plain\n");
    const auto both = host::find_server_printer(read(), "LASER");
    ASSERT_TRUE(both);
    EXPECT_EQ(both->queue, "front");
    EXPECT_STREQ(both->setup.printer_name, "front");
    EXPECT_EQ(both->setup.font.point_size, 9);
    const auto local = host::find_server_printer(read(), "PLAIN");
    ASSERT_TRUE(local);
    EXPECT_EQ(local->queue, "plain");
    EXPECT_EQ(local->setup.font.point_size, 12);
    EXPECT_STREQ(local->setup.font.log_font.face_name, "Courier New");
    EXPECT_FALSE(host::find_server_printer(read(), "laser"));
    EXPECT_FALSE(host::find_server_printer(read(), ""));
}

TEST_F(HostPrinterLists, theExamplesAreRight) {
    const host::Settings examples(PRINTMAN_SOURCE_DIR "/examples");
    const host::HostPrinters printers = host::HostPrinters::read(examples);
    EXPECT_EQ(printers.errors, QList<QByteArray>());
    EXPECT_GE(printers.defined.size(), 2U);
    EXPECT_GE(printers.local.size(), 2U);
}
