#pragma once

#include "tests/support/tools.h"
#include "tests/support/waiting.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

/// A print server of the test's own, with one raw queue, "office", whose backend keeps each job as
/// a file. Clients find it through CUPS_SERVER while it lives.
class Cups {
public:
    Cups() {
        for (const char* name :
             {"etc", "bin/backend", "data/mime", "spool", "cache", "run", "log", "jobs"})
            QDir(dir_.path()).mkpath(QString::fromLatin1(name));
        // What starts backends.
        QFile::link(QStringLiteral("/usr/lib/cups/daemon"), path("bin/daemon"));
        testsupport::write_script(path("bin/backend/capture"),
                                  "[ $# -eq 0 ] && exit 0\nto=" + bytes("jobs/") +
                                      "$1\ncat \"${6:--}\" >$to.part && mv $to.part $to\n");
        write_configuration();
        server_.start(QStringLiteral("/usr/sbin/cupsd"),
                      {QStringLiteral("-f"), QStringLiteral("-c"), path("etc/cupsd.conf"),
                       QStringLiteral("-s"), path("etc/cups-files.conf")});
        const QString socket = path("run/socket");
        EXPECT_TRUE(server_.waitForStarted(-1)) << server_.errorString().toStdString();
        EXPECT_TRUE(testsupport::poll_until(
            [&] { return is_served(socket.toLocal8Bit()) || server_.waitForFinished(0); }));
        EXPECT_EQ(server_.state(), QProcess::Running)
            << testsupport::read_file(path("log/error")).constData();
        variable_ =
            std::make_unique<testsupport::EnvironmentGuard>("CUPS_SERVER", socket.toLocal8Bit());
    }

    ~Cups() {
        server_.terminate();
        if (!server_.waitForFinished(static_cast<int>(testsupport::hung_after.count())))
            server_.kill();
        server_.waitForFinished(-1);
    }
    Cups(const Cups&) = delete;
    Cups& operator=(const Cups&) = delete;

    /// What has arrived when there are @p count jobs.
    QList<QByteArray> jobs(qsizetype count) const {
        const QDir directory(path("jobs"));
        const auto names = [&] {
            QStringList all = directory.entryList(QDir::Files);
            return all.filter(QRegularExpression(QStringLiteral("^\\d+$")));
        };
        EXPECT_TRUE(testsupport::poll_until([&] { return names().size() >= count; }));
        QList<QByteArray> found;
        for (const QString& name : names())
            found << testsupport::read_file(directory.filePath(name));
        return found;
    }

private:
    QString path(const char* name) const { return dir_.filePath(QString::fromLatin1(name)); }
    QByteArray bytes(const char* name) const { return path(name).toLocal8Bit(); }

    /// Whether someone answers at a socket: it has its name a moment earlier.
    static bool is_served(const QByteArray& socket) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, socket.constData(), sizeof address.sun_path);
        const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const bool connected =
            ::connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
        ::close(fd);
        return connected;
    }

    void write_configuration() const {
        const QByteArray user = ::geteuid() == 0 ? "User lp\nGroup lp\n" : "";
        testsupport::write_file(
            path("etc/cups-files.conf"),
            user + "ServerRoot " + bytes("etc") + "\nServerBin " + bytes("bin") + "\nDataDir " +
                bytes("data") + "\nRequestRoot " + bytes("spool") + "\nCacheDir " + bytes("cache") +
                "\nStateDir " + bytes("run") + "\nTempDir " + bytes("spool") + "\nAccessLog " +
                bytes("log/access") + "\nErrorLog " + bytes("log/error") + "\nPageLog " +
                bytes("log/page") + "\nSyncOnClose No\n");
        testsupport::write_file(path("etc/cupsd.conf"),
                                "LogLevel warn\nListen " + bytes("run/socket") +
                                    "\nMaxJobs 0\nBrowsing No\nDefaultAuthType None\n"
                                    "<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
                                    "<Policy default>\n<Limit All>\nOrder deny,allow\n"
                                    "Allow all\n</Limit>\n</Policy>\n");
        testsupport::write_file(path("etc/printers.conf"),
                                "<Printer office>\nDeviceURI capture:/\nState Idle\n"
                                "Accepting Yes\nShared No\n</Printer>\n");
        testsupport::write_file(path("data/mime/mime.types"),
                                "application/pdf pdf string(0,%PDF)\n"
                                "application/postscript ps string(0,%!)\n"
                                "application/octet-stream\n");
        testsupport::write_file(path("data/mime/mime.convs"),
                                "application/octet-stream application/vnd.cups-raw 0 -\n");
    }

    QTemporaryDir dir_;
    QProcess server_;
    std::unique_ptr<testsupport::EnvironmentGuard> variable_;
};
