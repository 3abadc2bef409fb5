// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/FileSizeLimit.h"
#include "tests/support/ScriptFolder.h"
#include "tests/unit/upgrade/UpdateFixture.h"
#include "upgrade/CDownWorkThread.h"

#include <QCryptographicHash>
#include <QDir>
#include <QTimer>

#include <optional>

namespace {

constexpr int cPackageBytes = 100 * 4096;
/// Statuses of a run, without the progress reports.
const QList<int> cGood{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Finished,
                       CUpgradeControl::UPC_Finished};
const QList<int> cRefused{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Finished,
                          CUpgradeControl::UPC_NetworkError};
const QList<int> cCanceled{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Canceled};
const QList<int> cNotWritable{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Access};
constexpr int cFileBufferBytes = 16384;
const QByteArray cPackagePath = QByteArrayLiteral("/Quorvel-setup.exe");

QByteArray package(char seed = 1)
{
    QByteArray bytes(cPackageBytes, '\0');
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = char(seed * (i >> 6) + i);
    return bytes;
}

QString digestOf(const QByteArray& bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

QString installerPath()
{
    return QDir::tempPath() + QStringLiteral("/Quorvel-installer.exe");
}

} // namespace

/// Downloads, checks and starts through the controller, with its real thread, sockets and files.
class UpdateDownloadTest : public UpdateTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        UpdateTestCase::init();
        QFile::remove(installerPath());
        // The desktop's opener.
        m_scripts.emplace();
        m_scripts->addRecorder(test::ScriptFolder::opener());
        m_progress = std::make_unique<QSignalSpy>(m_control.get(), &CUpgradeControl::emitdownloadProgress);
    }

    void progressText_data()
    {
        const test::Table<qint64, qint64, QString> table("received", "total", "text");
        table.row("quarter", qint64(512), qint64(2048), "0.25");
        table.row("third", qint64(1), qint64(3), "0.333333");
        table.row("all", qint64(7), qint64(7), "1");
        table.row("no length, long", qint64(1048576), qint64(-1), "-1.04858e+06");
        table.row("nothing", qint64(0), qint64(0), "0");
    }

    void progressText()
    {
        QFETCH(qint64, received);
        QFETCH(qint64, total);
        QTEST(CDownWorkThread::progressText(received, total), "text");
    }

    void goodPackages_data()
    {
        const test::Table<Reply, QString> table("reply", "sha256");
        table.row("plain", packageReply(), digestOf(package()));
        table.row("upper-case hash", packageReply(), digestOf(package()).toUpper());
        table.row("no length", Reply::of(package(), [](Reply& reply) { reply.length = Reply::NoLength; }),
                  digestOf(package()));
        table.row("pieces", Reply::of(package(), [](Reply& reply) { reply.pieceBytes = 5000; }),
                  digestOf(package()));
        table.row("empty", packageReply({}), digestOf({}));
    }

    void goodPackages()
    {
        QFETCH(Reply, reply);
        QFETCH(QString, sha256);
        m_server->setReply(cPackagePath, reply);
        learnPackage(sha256);
        m_control->startUpdate("http://127.0.0.1:1/not-used");
        QTRY_COMPARE(reports(), cGood);
        QCOMPARE(test::contentOf(installerPath()), reply.body);
        QCOMPARE(m_progress->count(), m_status->count() - 3);
    }

    void badPackages_data()
    {
        const test::Table<Reply, QString> table("reply", "sha256");
        const QString right = digestOf(package());
        table.row("other bytes", packageReply(package(2)), right);
        table.row("no hash announced", packageReply(), {});
        table.row("hash too short", packageReply(), right.left(63));
        const auto row = [&table](const char* name, const QString& sha256, const auto& change) {
            table.row(name, Reply::of(package(), change), sha256);
        };
        row("cut short", right, [](Reply& reply) { reply.sendBytes = cPackageBytes / 2; });
        row("cut short without length", right, [](Reply& reply) {
            reply.sendBytes = cPackageBytes / 2;
            reply.length = Reply::NoLength;
        });
        row("length too small", right, [](Reply& reply) { reply.length = cPackageBytes / 2; });
        row("not found", digestOf(package(3)), [](Reply& reply) { reply.status = 404; });
        row("redirect", digestOf(package(3)), [](Reply& reply) {
            reply.status = 302;
            reply.headers = "Location: /elsewhere\r\n";
        });
        row("no HTTP", right, [](Reply& reply) { reply.raw = QByteArray(3000, '\x90'); });
    }

    /// A bad package is deleted and cannot be started.
    void badPackages()
    {
        QFETCH(Reply, reply);
        QFETCH(QString, sha256);
        m_server->setReply(cPackagePath, reply);
        learnPackage(sha256);
        m_control->startUpdate({});
        expectRefusedPackage();
    }

    void badAddresses_data()
    {
        const test::Table<QString> table("url");
        table.row("nobody listens", "http://127.0.0.1:1/p.exe");
        table.row("none", {});
        table.row("no address", "::: no :::");
        table.row("local file", "file:///etc/passwd");
        table.row("data", "data:application/octet-stream,abc");
    }

    /// The hash is correct for the content that a local address would give.
    void badAddresses()
    {
        QFETCH(QString, url);
        const bool local = url.startsWith(QLatin1String("file:"));
        learnPackage(digestOf(local ? test::contentOf("/etc/passwd") : "abc"), url);
        m_control->startUpdate({});
        expectRefusedPackage();
    }

    /// The user cancels a transfer that has stopped at each percentage.
    void cancelAtEveryPercentage()
    {
        learnPackage(digestOf(package()));
        for (int percent = 0; percent <= 99; ++percent) {
            const qint64 bytes = percent * (cPackageBytes / 100);
            m_server->setReply(cPackagePath, stalledAfter(bytes));
            m_status->clear();
            m_control->startUpdate({});
            // The last bytes may still be in the file's buffer.
            const bool arrived = QTest::qWaitFor([&] {
                return m_server->requestCount(cPackagePath) == percent + 1 &&
                       QFileInfo(installerPath()).size() + cFileBufferBytes >= bytes;
            });
            QVERIFY2(arrived, qPrintable(QStringLiteral("%1 %: %2 bytes on disk")
                                             .arg(percent)
                                             .arg(QFileInfo(installerPath()).size())));
            m_control->stopUpdate();
            QVERIFY(QTest::qWaitFor([&] { return reports().size() == 2; }));
            QCOMPARE(reports(), cCanceled);
            QVERIFY(QFileInfo(installerPath()).size() == 0);
            m_server->dropConnections();
        }
        // An earlier stop does not end a new download.
        m_server->setReply(cPackagePath, packageReply());
        m_status->clear();
        m_control->startUpdate({});
        QTRY_COMPARE(reports(), cGood);
    }

    void startWhileTheLastOneIsStopping()
    {
        m_server->setReply(cPackagePath, stalledAfter(5000));
        learnPackage(digestOf(package()));
        QSignalSpy requested(m_server.get(), &HttpFaultServer::requested);
        m_control->startUpdate({});
        QTRY_COMPARE(requested.count(), 1);
        m_server->setReply(cPackagePath, packageReply());
        m_control->stopUpdate();
        m_control->startUpdate({});
        // The last report of the first download does not belong to the second.
        QObject context;
        const auto isCurrent = std::make_shared<QList<bool>>();
        connect(m_control.get(), &CUpgradeControl::updateStatus, &context, [this, isCurrent](int status) {
            if (status != CUpgradeControl::UPC_Download)
                isCurrent->append(m_control->reportsCurrentOperation());
        });
        QTRY_COMPARE(reports(), cCanceled + cGood);
        QCOMPARE(*isCurrent, (QList<bool>{false, true, true, true}));
        QCOMPARE(test::contentOf(installerPath()), package());
    }

    void newerPackage_data()
    {
        const test::Table<bool> table("underWay");
        table.row("after a download", false);
        table.row("during a download, which gives way", true);
    }

    void newerPackage()
    {
        QFETCH(bool, underWay);
        m_server->setReply(cPackagePath, underWay ? stalledAfter(5000) : packageReply());
        m_server->setReply("/second.exe", packageReply(package(5)));
        learnPackage(digestOf(package()));
        m_control->startUpdate({});
        if (underWay)
            QTRY_COMPARE(m_server->requestCount(cPackagePath), 1);
        else
            QTRY_COMPARE(reports(), cGood);
        learnPackage(digestOf(package(5)), m_server->url("/second.exe"));
        m_control->startUpdate({});
        QTRY_COMPARE(reports(), (underWay ? cCanceled : cGood) + cGood);
        QCOMPARE(test::contentOf(installerPath()), package(5));
    }

    void stalledTransferEnds()
    {
        for (const bool anyBytes : {false, true}) {
            m_server->setReply(cPackagePath, anyBytes ? stalledAfter(5000) : muteReply());
            CDownWorkThread worker;
            worker.setStallTimeout(50);
            worker.setDownloadDir(QDir::tempPath());
            worker.setPackageUrl(m_server->url(cPackagePath));
            QSignalSpy finished(&worker, &CDownWorkThread::sigFinished);
            worker.processMount();
            QTRY_COMPARE(finished.count(), 1);
            QCOMPARE(finished.first().constFirst().toString(), installerPath());
        }
    }

    /// A repeated transfer reports no status while it runs, and replaces its file.
    void repeatedTransfer()
    {
        m_server->setReply(cPackagePath, packageReply());
        CDownWorkThread worker;
        QSignalSpy finished(&worker, &CDownWorkThread::sigFinished);
        QSignalSpy status(&worker, &CDownWorkThread::sigDownloadStatus);
        worker.updatefile();
        QCOMPARE(finished.count(), 0);
        worker.setDownloadDir(QDir::tempPath());
        worker.setPackageUrl(m_server->url(cPackagePath));
        worker.processMount();
        QTRY_COMPARE(finished.count(), 1);
        status.clear();
        worker.updatefile();
        QTRY_COMPARE(finished.count(), 2);
        QCOMPARE(status, (QList<QVariantList>{{CUpgradeControl::UPC_Finished}}));
        QCOMPARE(test::contentOf(installerPath()), package());
    }

    /// The retry comes from the report of the failure, which is sent before the worker's last signal.
    void folderThatCannotBeWritten()
    {
        QVERIFY(QDir().mkpath(installerPath() + QStringLiteral("/in the way")));
        learnPackage(digestOf(package()));
        m_server->setReply(cPackagePath, packageReply());
        QObject retry;
        connect(m_control.get(), &CUpgradeControl::updateStatus, &retry, [this](int status) {
            if (status == CUpgradeControl::UPC_Access && QDir(installerPath()).removeRecursively())
                m_control->startUpdate({});
        });
        m_control->startUpdate({});
        QTRY_COMPARE(reports(), cNotWritable + cGood);
        QCOMPARE(m_server->requestCount(cPackagePath), 1);
        QCOMPARE(test::contentOf(installerPath()), package());
    }

    /// The download does not follow a link under the installer's name.
    void linkInTheTemporaryFolder()
    {
        const QString victim = m_scripts->path("victim");
        QVERIFY(test::writeFile(victim, "keep me"));
        QVERIFY(QFile::link(victim, installerPath()));
        m_server->setReply(cPackagePath, packageReply());
        learnPackage(digestOf(package()));
        m_control->startUpdate({});
        QTRY_COMPARE(reports().size(), 3);
        QVERIFY(!QFileInfo(installerPath()).isSymLink());
        QCOMPARE(test::contentOf(victim), QByteArray("keep me"));
    }

    void fullDisk_data()
    {
        const test::Table<int> table("roomBytes");
        table.row("in the middle", cPackageBytes / 2);
        table.row("at the last byte", cPackageBytes - 1);
    }

    void fullDisk()
    {
        QFETCH(int, roomBytes);
        if (!test::FileSizeLimit::isSupported())
            QSKIP("the size of files cannot be limited here");
        m_server->setReply(cPackagePath, packageReply());
        learnPackage(digestOf(package()));
        const test::FileSizeLimit limit(roomBytes);
        m_control->startUpdate({});
        QTRY_COMPARE(reports(), cNotWritable);
        QVERIFY(!QFileInfo::exists(installerPath()));
    }

    /// The application ends at any moment of a download. No file remains.
    void closingInTheMiddle()
    {
        m_server->setReply(cPackagePath, stalledAfter(50000));
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

    /// A package is deleted when the user leaves after its check, stops before it, or exits.
    void packageThatIsNotStarted()
    {
        m_server->setReply(cPackagePath, packageReply());
        learnPackage(digestOf(package()));
        const auto download = [this] {
            m_status->clear();
            m_control->startUpdate({});
            return QTest::qWaitFor([this] { return reports().size() == 3; });
        };
        QVERIFY(download());
        m_control->abandonOperation();
        QVERIFY(!QFileInfo::exists(installerPath()));

        QObject stopper;
        connect(m_control.get(), &CUpgradeControl::updateStatus, &stopper, [this](int status) {
            if (status == CUpgradeControl::UPC_Finished)
                m_control->stopUpdate();
        });
        QVERIFY(download());
        QVERIFY(!QFileInfo::exists(installerPath()));

        disconnect(m_control.get(), nullptr, &stopper, nullptr);
        QVERIFY(download());
        m_control.reset();
        QVERIFY(!QFileInfo::exists(installerPath()));
    }

    void installStartsTheVerifiedPackage()
    {
        m_server->setReply(cPackagePath, packageReply());
        learnPackage(digestOf(package()));
        m_control->startUpdate({});
        QTRY_COMPARE(reports().size(), 3);
        // A later announcement does not change this package.
        learnPackage(digestOf("later"));
        QTimer::singleShot(0, m_control.get(), [this] { m_control->startInstall(); });
        QTimer::singleShot(20000, m_control.get(), [] { QCoreApplication::exit(1); });
        QCOMPARE(QCoreApplication::exec(), 0);
        QTRY_COMPARE(m_scripts->calls(test::ScriptFolder::opener()),
                     QList<QStringList>{{test::ScriptFolder::openerArgument(installerPath())}});
        // The installer uses the file now.
        m_control.reset();
        QVERIFY(QFile::exists(installerPath()));
    }

    /// Nothing is started without a download, or when the package was changed or deleted after its check.
    void installRefusesEverythingElse()
    {
        m_control->startInstall();
        QCOMPARE(reports(), (QList<int>{CUpgradeControl::UPC_NetworkError}));

        // A foreign file with the announced hash is neither started nor deleted.
        expectWarning("is not the downloaded package");
        learnPackage(digestOf("foreign"));
        const QString foreign = m_scripts->path("foreign");
        QVERIFY(test::writeFile(foreign, "foreign"));
        m_control->slotDownloadFinish(foreign);
        QVERIFY(QFile::exists(foreign));
        m_control->startInstall();
        QCOMPARE(reports(), (QList<int>{CUpgradeControl::UPC_NetworkError, CUpgradeControl::UPC_NetworkError,
                                        CUpgradeControl::UPC_NetworkError}));
        m_server->setReply(cPackagePath, packageReply());
        learnPackage(digestOf(package()));
        for (const bool gone : {false, true}) {
            m_status->clear();
            m_control->startUpdate({});
            QTRY_COMPARE(reports(), cGood);
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
        QCOMPARE(opened(), 0);
    }

private:
    static Reply packageReply(const QByteArray& body = package()) { return Reply::of(body); }

    /// Sends the package's first bytes and then nothing more.
    static Reply stalledAfter(qint64 bytes)
    {
        return Reply::of(package(), [bytes](Reply& reply) {
            reply.sendBytes = bytes;
            reply.after = Reply::After::Stall;
        });
    }

    static Reply muteReply()
    {
        return Reply::of({}, [](Reply& reply) { reply.mute = true; });
    }

    int opened() const { return m_scripts->calls(test::ScriptFolder::opener()).size(); }

    void learnPackage(const QString& sha256) { learnPackage(sha256, m_server->url(cPackagePath)); }

    /// Makes the server announce a package with \a sha256 at \a url.
    void learnPackage(const QString& sha256, const QString& url)
    {
        m_server->setReply(cCheckPath, offer("2.0", url, sha256));
        m_manual->clear();
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 1);
    }

    /// Returns the statuses so far, without the progress reports.
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
        QTRY_COMPARE(reports(), cRefused);
        QVERIFY(!QFileInfo::exists(installerPath()));
        m_control->startInstall();
        QCOMPARE(reports().constLast(), int(CUpgradeControl::UPC_NetworkError));
        QCOMPARE(reports().size(), 4);
        QCOMPARE(opened(), 0);
    }

    std::optional<test::ScriptFolder> m_scripts;
    std::unique_ptr<QSignalSpy> m_progress;
};

QUORVEL_TEST_MAIN(UpdateDownloadTest, GenApplication)
#include "tst_UpdateDownload.moc"
