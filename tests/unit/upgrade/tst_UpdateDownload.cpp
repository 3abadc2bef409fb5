// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "settings/GenSettings.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/HttpFaultServer.h"
#include "tests/support/TestCase.h"
#include "upgrade/CDownWorkThread.h"
#include "upgrade/CUpgradeControl.h"

#include <QCryptographicHash>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using Reply = HttpFaultServer::Reply;

namespace {

constexpr int cPackageBytes = 100 * 4096;
constexpr int cFileBufferBytes = 16384;
const QByteArray cPackagePath = QByteArrayLiteral("/Quorvel-setup.exe");

QByteArray package(char seed = 1)
{
    QByteArray bytes(cPackageBytes, '\0');
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = char(seed * (i >> 6) + i);
    return bytes;
}

Reply packageReply(const QByteArray& body = package())
{
    Reply reply;
    reply.body = body;
    return reply;
}

QString digestOf(const QByteArray& bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

QString installerPath()
{
    return QDir::tempPath() + QStringLiteral("/Quorvel-installer.exe");
}

QByteArray installerBytes()
{
    QFile file(installerPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// Downloads, checks and starts through the controller, with its real thread, sockets and files.
class UpdateDownloadTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // The desktop's opener, played by a script that notes its arguments.
        QVERIFY(m_bin.isValid());
        QFile opener(m_bin.filePath(QStringLiteral("xdg-open")));
        QVERIFY(opener.open(QIODevice::WriteOnly));
        opener.write("#!/bin/sh\nprintf '%s\\n' \"$@\" >'" + openedNote().toLocal8Bit() + ".part'\nmv '" +
                     openedNote().toLocal8Bit() + ".part' '" + openedNote().toLocal8Bit() + "'\n");
        opener.close();
        QVERIFY(opener.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        qputenv("PATH", m_bin.path().toLocal8Bit() + ':' + qgetenv("PATH"));
    }

    void init()
    {
        TestCase::init();
        QFile::remove(installerPath());
        QFile::remove(openedNote());
        m_server = std::make_unique<HttpFaultServer>();
        QVERIFY(m_server->isListening());
        // The check that the control makes by itself, should a test take that long, finds no news.
        Reply noNews;
        noNews.body = "{}";
        m_server->setReply("/api/check_version", noNews);
        genApp()->toolbox()->genSettings()->setValue(QStringLiteral("apiPort"), m_server->port(),
                                                     QStringLiteral("sysSettings"));
        m_control = std::make_unique<CUpgradeControl>();
        m_status = std::make_unique<QSignalSpy>(m_control.get(), &CUpgradeControl::updateStatus);
        m_progress = std::make_unique<QSignalSpy>(m_control.get(), &CUpgradeControl::emitdownloadProgress);
    }

    void cleanup()
    {
        m_control.reset();
        m_server.reset();
        TestCase::cleanup();
    }

    void progressText_data()
    {
        QTest::addColumn<qint64>("received");
        QTest::addColumn<qint64>("total");
        QTest::addColumn<QString>("text");
        QTest::newRow("quarter") << qint64(512) << qint64(2048) << QStringLiteral("0.25");
        QTest::newRow("third") << qint64(1) << qint64(3) << QStringLiteral("0.333333");
        QTest::newRow("all") << qint64(7) << qint64(7) << QStringLiteral("1");
        QTest::newRow("no length") << qint64(512) << qint64(-1) << QStringLiteral("-512");
        QTest::newRow("no length, long") << qint64(1048576) << qint64(-1) << QStringLiteral("-1.04858e+06");
        QTest::newRow("nothing") << qint64(0) << qint64(0) << QStringLiteral("0");
    }

    void progressText()
    {
        QFETCH(qint64, received);
        QFETCH(qint64, total);
        QTEST(CDownWorkThread::progressText(received, total), "text");
    }

    void goodPackages_data()
    {
        QTest::addColumn<QVariant>("reply");
        QTest::addColumn<QString>("sha256");
        Reply noLength = packageReply();
        noLength.length = Reply::NoLength;
        Reply pieces = packageReply();
        pieces.pieceBytes = 5000;
        QTest::newRow("plain") << QVariant::fromValue(packageReply()) << digestOf(package());
        QTest::newRow("upper-case hash")
            << QVariant::fromValue(packageReply()) << digestOf(package()).toUpper();
        QTest::newRow("no length") << QVariant::fromValue(noLength) << digestOf(package());
        QTest::newRow("pieces") << QVariant::fromValue(pieces) << digestOf(package());
        QTest::newRow("empty") << QVariant::fromValue(packageReply({})) << digestOf({});
    }

    void goodPackages()
    {
        QFETCH(QVariant, reply);
        QFETCH(QString, sha256);
        m_server->setReply(cPackagePath, reply.value<Reply>());
        learnPackage(sha256);
        m_control->startUpdate(QStringLiteral("http://127.0.0.1:1/not-used"));
        QTRY_COMPARE(reports(), (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Finished,
                                            CUpgradeControl::UPC_Finished}));
        QCOMPARE(installerBytes(), reply.value<Reply>().body);
        QCOMPARE(m_progress->count(), m_status->count() - 3);
    }

    void badPackages_data()
    {
        QTest::addColumn<QVariant>("reply");
        QTest::addColumn<QString>("sha256");
        const auto row = [](const char* name, const Reply& reply, const QString& sha256) {
            QTest::newRow(name) << QVariant::fromValue(reply) << sha256;
        };
        const QString right = digestOf(package());
        row("other bytes", packageReply(package(2)), right);
        row("no hash announced", packageReply(), {});
        row("hash too short", packageReply(), right.left(63));
        Reply reply = packageReply();
        reply.sendBytes = cPackageBytes / 2;
        row("cut short", reply, right);
        reply.length = Reply::NoLength;
        row("cut short without length", reply, right);
        reply = packageReply();
        reply.length = cPackageBytes / 2;
        row("length too small", reply, right);
        reply = packageReply();
        reply.status = 404;
        row("not found", reply, digestOf(package(3)));
        reply.status = 302;
        reply.headers = "Location: /elsewhere\r\n";
        row("redirect", reply, digestOf(package(3)));
        reply = {};
        reply.raw = QByteArray(3000, '\x90');
        row("no HTTP", reply, right);
    }

    /// Whatever the server does, what it sends can neither stay nor be started.
    void badPackages()
    {
        QFETCH(QVariant, reply);
        QFETCH(QString, sha256);
        m_server->setReply(cPackagePath, reply.value<Reply>());
        learnPackage(sha256);
        m_control->startUpdate({});
        expectRefusedPackage();
    }

    void badAddresses_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("nobody listens") << QStringLiteral("http://127.0.0.1:1/p.exe");
        QTest::newRow("none") << QString();
        QTest::newRow("no address") << QStringLiteral("::: no :::");
        QTest::newRow("local file") << QStringLiteral("file:///etc/passwd");
        QTest::newRow("data") << QStringLiteral("data:application/octet-stream,abc");
    }

    /// Even with the right hash of what a local address would give.
    void badAddresses()
    {
        QFETCH(QString, url);
        QFile passwords(QStringLiteral("/etc/passwd"));
        const bool local = url.startsWith(QLatin1String("file:")) && passwords.open(QIODevice::ReadOnly);
        learnPackage(digestOf(local ? passwords.readAll() : QByteArray("abc")), url);
        m_control->startUpdate({});
        expectRefusedPackage();
    }

    /// The transfer stands still at each percentage when the user cancels it.
    void cancelAtEveryPercentage()
    {
        learnPackage(digestOf(package()));
        for (int percent = 0; percent <= 99; ++percent) {
            Reply reply = packageReply();
            reply.sendBytes = percent * (cPackageBytes / 100);
            reply.after = Reply::After::Stall;
            m_server->setReply(cPackagePath, reply);
            m_status->clear();
            m_control->startUpdate({});
            // The file lags behind by what its buffer holds.
            const bool arrived = QTest::qWaitFor([&] {
                return m_server->requestCount(cPackagePath) == percent + 1 &&
                       QFileInfo(installerPath()).size() + cFileBufferBytes >= reply.sendBytes;
            });
            QVERIFY2(arrived, qPrintable(QStringLiteral("%1 %: %2 bytes on disk")
                                             .arg(percent)
                                             .arg(QFileInfo(installerPath()).size())));
            m_control->stopUpdate();
            QVERIFY(QTest::qWaitFor([&] { return reports().size() == 2; }));
            QCOMPARE(reports(), (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Canceled}));
            QVERIFY(QFileInfo(installerPath()).size() == 0);
            m_server->dropConnections();
        }
        // None of these stops is left over.
        m_server->setReply(cPackagePath, packageReply());
        m_status->clear();
        m_control->startUpdate({});
        QTRY_COMPARE(reports().mid(1),
                     (QList<int>{CUpgradeControl::UPC_Finished, CUpgradeControl::UPC_Finished}));
    }

    void cancelBeforeTheFirstByte()
    {
        Reply mute;
        mute.mute = true;
        m_server->setReply(cPackagePath, mute);
        learnPackage(digestOf(package()));
        m_control->startUpdate({});
        m_control->stopUpdate();
        QTRY_COMPARE(reports(), (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Canceled}));
        // Late or without a download, a stop changes nothing.
        m_control->stopUpdate();
        QTest::qWait(0);
        QCOMPARE(reports().size(), 2);
    }

    void startWhileTheLastOneIsStopping()
    {
        Reply stalled = packageReply();
        stalled.sendBytes = 5000;
        stalled.after = Reply::After::Stall;
        m_server->setReply(cPackagePath, stalled);
        learnPackage(digestOf(package()));
        QSignalSpy requested(m_server.get(), &HttpFaultServer::requested);
        m_control->startUpdate({});
        QTRY_COMPARE(requested.count(), 1);
        m_server->setReply(cPackagePath, packageReply());
        m_control->stopUpdate();
        m_control->startUpdate({});
        QTRY_COMPARE(reports(), (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Canceled,
                                            CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Finished,
                                            CUpgradeControl::UPC_Finished}));
        QCOMPARE(installerBytes(), package());
    }

    void newDownloadTakesTheLatestAddress()
    {
        m_server->setReply(cPackagePath, packageReply());
        m_server->setReply("/second.exe", packageReply(package(5)));
        learnPackage(digestOf(package()));
        m_control->startUpdate({});
        QTRY_COMPARE(reports().size(), 3);
        learnPackage(digestOf(package(5)), m_server->url(QStringLiteral("/second.exe")));
        m_control->startUpdate({});
        QTRY_COMPARE(reports().size(), 6);
        QCOMPARE(reports().constLast(), int(CUpgradeControl::UPC_Finished));
        QCOMPARE(installerBytes(), package(5));
    }

    /// A newer package is announced while the old one is coming: the old one gives way.
    void newerPackageDuringADownload()
    {
        Reply stalled = packageReply();
        stalled.sendBytes = 5000;
        stalled.after = Reply::After::Stall;
        m_server->setReply(cPackagePath, stalled);
        m_server->setReply("/second.exe", packageReply(package(5)));
        learnPackage(digestOf(package()));
        m_control->startUpdate({});
        QTRY_COMPARE(m_server->requestCount(cPackagePath), 1);
        learnPackage(digestOf(package(5)), m_server->url(QStringLiteral("/second.exe")));
        m_control->startUpdate({});
        QTRY_COMPARE(reports().size(), 5);
        QCOMPARE(installerBytes(), package(5));
    }

    void stalledTransferEnds()
    {
        for (const bool anyBytes : {false, true}) {
            Reply stalled = packageReply();
            stalled.sendBytes = anyBytes ? 5000 : 0;
            stalled.mute = !anyBytes;
            stalled.after = Reply::After::Stall;
            m_server->setReply(cPackagePath, stalled);
            CDownWorkThread worker;
            worker.setStallTimeout(50);
            worker.setDownloadDir(QDir::tempPath());
            worker.setPackageUrl(m_server->url(QString::fromLatin1(cPackagePath)));
            QSignalSpy finished(&worker, &CDownWorkThread::sigFinished);
            worker.processMount();
            QTRY_COMPARE(finished.count(), 1);
            QCOMPARE(finished.first().constFirst().toString(), installerPath());
        }
    }

    /// A repeated transfer reports no status while it runs and starts its file anew.
    void repeatedTransfer()
    {
        m_server->setReply(cPackagePath, packageReply());
        CDownWorkThread worker;
        QSignalSpy finished(&worker, &CDownWorkThread::sigFinished);
        QSignalSpy status(&worker, &CDownWorkThread::sigDownloadStatus);
        worker.updatefile();
        QCOMPARE(finished.count(), 0);
        worker.setDownloadDir(QDir::tempPath());
        worker.setPackageUrl(m_server->url(QString::fromLatin1(cPackagePath)));
        worker.processMount();
        QTRY_COMPARE(finished.count(), 1);
        status.clear();
        worker.updatefile();
        QTRY_COMPARE(finished.count(), 2);
        QCOMPARE(status, (QList<QVariantList>{{CUpgradeControl::UPC_Finished}}));
        QCOMPARE(installerBytes(), package());
    }

    void folderThatCannotBeWritten()
    {
        QVERIFY(QDir().mkpath(installerPath() + QStringLiteral("/in the way")));
        learnPackage(digestOf(package()));
        m_control->startUpdate({});
        QTRY_COMPARE(reports(), (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Access}));
        QCOMPARE(m_server->requestCount(cPackagePath), 0);
        QVERIFY(QDir(installerPath()).removeRecursively());

        m_server->setReply(cPackagePath, packageReply());
        m_control->startUpdate({});
        QTRY_COMPARE(reports().size(), 5);
        QCOMPARE(installerBytes(), package());
    }

    /// A link under the installer's name leads the download nowhere.
    void linkInTheTemporaryFolder()
    {
        QFile victim(m_bin.filePath(QStringLiteral("victim")));
        QVERIFY(victim.open(QIODevice::WriteOnly));
        victim.write("keep me");
        victim.close();
        QVERIFY(QFile::link(victim.fileName(), installerPath()));
        m_server->setReply(cPackagePath, packageReply());
        learnPackage(digestOf(package()));
        m_control->startUpdate({});
        QTRY_COMPARE(reports().size(), 3);
        QVERIFY(!QFileInfo(installerPath()).isSymLink());
        QVERIFY(victim.open(QIODevice::ReadOnly));
        QCOMPARE(victim.readAll(), QByteArray("keep me"));
    }

    void fullDisk_data()
    {
        QTest::addColumn<int>("roomBytes");
        QTest::newRow("in the middle") << cPackageBytes / 2;
        QTest::newRow("at the last byte") << cPackageBytes - 1;
    }

    void fullDisk()
    {
        QFETCH(int, roomBytes);
        m_server->setReply(cPackagePath, packageReply());
        learnPackage(digestOf(package()));
        const test::FileSizeLimit limit(static_cast<rlim_t>(roomBytes));
        m_control->startUpdate({});
        QTRY_COMPARE(reports(), (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Access}));
        QVERIFY(!QFileInfo::exists(installerPath()));
    }

    /// The application goes at each moment of a download: nothing stays behind.
    void closingInTheMiddle()
    {
        Reply stalled = packageReply();
        stalled.sendBytes = 50000;
        stalled.after = Reply::After::Stall;
        m_server->setReply(cPackagePath, stalled);
        learnPackage(digestOf(package()));
        m_control->startUpdate({});
        QTRY_VERIFY(QFileInfo(installerPath()).size() > 0);
        m_control.reset();
        QVERIFY(!QFileInfo::exists(installerPath()));

        for (int i = 0; i < 20; ++i) {
            m_control = std::make_unique<CUpgradeControl>();
            m_control->startUpdate({});
            if (i % 2 != 0)
                m_control->stopUpdate();
            m_control.reset();
        }
    }

    void installStartsTheVerifiedPackage()
    {
        m_server->setReply(cPackagePath, packageReply());
        learnPackage(digestOf(package()));
        m_control->startUpdate({});
        QTRY_COMPARE(reports().size(), 3);
        QTimer::singleShot(0, m_control.get(), [this] { m_control->startInstall(); });
        QTimer::singleShot(20000, m_control.get(), [] { QCoreApplication::exit(1); });
        QCOMPARE(QCoreApplication::exec(), 0);
        QTRY_VERIFY(QFileInfo::exists(openedNote()));
        QFile note(openedNote());
        QVERIFY(note.open(QIODevice::ReadOnly));
        QCOMPARE(note.readAll().trimmed(), installerPath().toLocal8Bit());
    }

    /// Nothing downloaded, cancelled, exchanged after its check, gone after its check: never started.
    void installRefusesEverythingElse()
    {
        m_control->startInstall();
        QCOMPARE(reports(), (QList<int>{CUpgradeControl::UPC_NetworkError}));

        // Not even a file with the announced hash when it is not the download's own, and it is left alone.
        expectWarning(QStringLiteral("is not the downloaded package"));
        learnPackage(digestOf("foreign"));
        QFile foreign(m_bin.filePath(QStringLiteral("foreign")));
        QVERIFY(foreign.open(QIODevice::WriteOnly));
        foreign.write("foreign");
        foreign.close();
        m_control->slotDownloadFinish(foreign.fileName());
        QVERIFY(foreign.exists());
        m_control->startInstall();
        QCOMPARE(reports(), (QList<int>{CUpgradeControl::UPC_NetworkError, CUpgradeControl::UPC_NetworkError,
                                        CUpgradeControl::UPC_NetworkError}));
        m_server->setReply(cPackagePath, packageReply());
        learnPackage(digestOf(package()));
        for (const bool gone : {false, true}) {
            m_status->clear();
            m_control->startUpdate({});
            QTRY_COMPARE(reports(), (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Finished,
                                                CUpgradeControl::UPC_Finished}));
            QFile file(installerPath());
            if (gone) {
                QVERIFY(file.remove());
            } else {
                QVERIFY(file.open(QIODevice::ReadWrite));
                file.write("MZ");
                file.close();
            }
            m_control->startInstall();
            QCOMPARE(reports().constLast(), int(CUpgradeControl::UPC_NetworkError));
            m_control->startInstall();
        }
        QVERIFY(!QFileInfo::exists(openedNote()));
    }

private:
    QString openedNote() const { return m_bin.filePath(QStringLiteral("opened")); }

    void learnPackage(const QString& sha256)
    {
        learnPackage(sha256, m_server->url(QString::fromLatin1(cPackagePath)));
    }

    /// Lets the server announce a package with \a sha256 at \a url.
    void learnPackage(const QString& sha256, const QString& url)
    {
        const QJsonObject data{{QStringLiteral("need_update"), true},
                               {QStringLiteral("url"), url},
                               {QStringLiteral("latest_version"), QStringLiteral("2.0")},
                               {QStringLiteral("sha256"), sha256}};
        Reply answer;
        answer.body = QJsonDocument(QJsonObject{{QStringLiteral("data"), data}}).toJson();
        m_server->setReply("/api/check_version", answer);
        QSignalSpy checked(m_control.get(), &CUpgradeControl::manualCheckFinished);
        m_control->checkUpdateNow();
        QTRY_COMPARE(checked.count(), 1);
    }

    /// The statuses so far without the progress reports.
    QList<int> reports() const
    {
        QList<int> values;
        for (const QVariantList& arguments : *m_status) {
            const int value = arguments.constFirst().toInt();
            if (value != CUpgradeControl::UPC_Download)
                values.append(value);
        }
        return values;
    }

    void expectRefusedPackage()
    {
        QTRY_COMPARE(reports(), (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Finished,
                                            CUpgradeControl::UPC_NetworkError}));
        QVERIFY(!QFileInfo::exists(installerPath()));
        m_control->startInstall();
        QCOMPARE(reports().constLast(), int(CUpgradeControl::UPC_NetworkError));
        QCOMPARE(reports().size(), 4);
        QVERIFY(!QFileInfo::exists(openedNote()));
    }

    QTemporaryDir m_bin;
    std::unique_ptr<HttpFaultServer> m_server;
    std::unique_ptr<CUpgradeControl> m_control;
    std::unique_ptr<QSignalSpy> m_status;
    std::unique_ptr<QSignalSpy> m_progress;
};

Q_DECLARE_METATYPE(HttpFaultServer::Reply)
QUORVEL_TEST_MAIN(UpdateDownloadTest, GenApplication)
#include "tst_UpdateDownload.moc"
