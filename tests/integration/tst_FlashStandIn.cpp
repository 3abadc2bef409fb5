// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TestCase.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int cTimeoutMs = 20'000;
constexpr int cFlashBytes = 16 << 20;

struct Result
{
    int exitCode = -1;
    QByteArray output;
    QByteArray errors;
};

} // namespace

/// What the stand-in prints and does, as the real tool would.
class FlashStandInTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
    }

    void tellsItsDevice()
    {
        const Result result = run({QStringLiteral("version")});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.output, QByteArray("AWUSBFEX soc=00001663(F1C100s) 00000001 ver=0001 44 08 "
                                           "scratchpad=00007e00 00000000 00000000\n"));
        QVERIFY(result.errors.isEmpty());
    }

    void progressLines_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("lines");
        QTest::newRow("nothing") << 0 << 0;
        QTest::newRow("one byte") << 1 << 1;
        QTest::newRow("one step") << 65536 << 1;
        QTest::newRow("four steps") << 200000 << 4;
    }

    void progressLines()
    {
        QFETCH(int, size);
        QFETCH(int, lines);
        const Result result = write(QStringLiteral("0x6000"), QByteArray(size, 'x'));
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.output.count('\r'), lines);
        QCOMPARE(result.output.count('\n'), lines > 0 ? 1 : 0);
        QVERIFY(!result.output.contains("\r  0%"));
        const QRegularExpression step(QStringLiteral("^ {0,2}\\d{1,3}% \\[=* *\\](?: *\\d+\\.\\d kB/s, ETA "
                                                     "\\d\\d:\\d\\d | *\\d+ kB, *\\d+\\.\\d kB/s\\n)$"));
        const QList<QByteArray> shown = result.output.split('\r').mid(1);
        for (const QByteArray& line : shown) {
            QVERIFY2(step.match(QString::fromLatin1(line)).hasMatch(), line.constData());
            QCOMPARE(line.indexOf(']') - line.indexOf('[') - 1, 48);
        }
        QVERIFY(lines == 0 || shown.constLast().startsWith("100% ["));
    }

    void flashKeepsWhatIsNotWritten()
    {
        QCOMPARE(write(QStringLiteral("0x6000"), QByteArray(5000, 'a')).exitCode, 0);
        QCOMPARE(write(QStringLiteral("0x8000"), QByteArray(10, 'b')).exitCode, 0);
        QCOMPARE(write(QStringLiteral("0x7000"), QByteArray(10, 'c')).exitCode, 0);
        const QByteArray flash = image();
        QCOMPARE(flash.size(), cFlashBytes);
        QCOMPARE(flash.mid(0x5FF0, 0x10), QByteArray(0x10, '\xFF'));
        QCOMPARE(flash.mid(0x6000, 0x1000), QByteArray(0x1000, 'a'));
        // The sector of the third write was erased first.
        QCOMPARE(flash.mid(0x7000, 20), QByteArray(10, 'c') + QByteArray(10, '\xFF'));
        QCOMPARE(flash.mid(0x8000, 11), QByteArray(10, 'b') + '\xFF');
    }

    void failures_data()
    {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("errors");
        QTest::newRow("no device") << QByteArray("FAULT=no-device") << 1
                                   << QByteArray("ERROR: Allwinner USB FEL device not found!\n");
        QTest::newRow("no permission")
            << QByteArray("FAULT=no-permission") << 1
            << QByteArray("ERROR: You don't have permission to access Allwinner USB FEL device\n");
        QTest::newRow("transfer") << QByteArray("FAIL_AT=40") << 2
                                  << QByteArray("usb_bulk_send() ERROR -7: Operation timed out\n");
        QTest::newRow("unsupported") << QByteArray("FAULT=unsupported-spi") << 0 << QByteArray();
        QTest::newRow("misspelt fault")
            << QByteArray("FAULT=no-devcie") << 64
            << QByteArray("flash stand-in: QUORVEL_FLASH_FAULT cannot be \"no-devcie\"\n");
        QTest::newRow("other address")
            << QByteArray("FAIL_AT=40\nQUORVEL_FLASH_ADDRESS=0x0") << 0 << QByteArray();
    }

    void failures()
    {
        QFETCH(QByteArray, variable);
        QFile control(m_folder->filePath(QStringLiteral("control")));
        QVERIFY(control.open(QIODevice::WriteOnly));
        control.write("QUORVEL_FLASH_" + variable + '\n');
        control.close();
        const Result result = write(QStringLiteral("0x6000"), QByteArray(200000, 'x'));
        QTEST(result.exitCode, "exitCode");
        QTEST(result.errors, "errors");
    }

    void badArguments()
    {
        const Result missing = run({QStringLiteral("-p"), QStringLiteral("spiflash-write"),
                                    QStringLiteral("0x0"), QStringLiteral("/nowhere/boot.bin")});
        QCOMPARE(missing.exitCode, 1);
        QCOMPARE(missing.errors, QByteArray("Failed to open input file: /nowhere/boot.bin\n"));
        QCOMPARE(run({QStringLiteral("spiflash-write"), QStringLiteral("0x0"), m_folder->path()}).exitCode,
                 1);
        QCOMPARE(run({QStringLiteral("frobnicate")}).exitCode, 1);
        QCOMPARE(write(QStringLiteral("0xFFF000"), QByteArray(5000, 'x')).exitCode, 2);
        QCOMPARE(write(QStringLiteral("0x10"), QByteArray(10, 'x')).exitCode, 1);
    }

private:
    Result run(const QStringList& arguments) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QUORVEL_FLASH_IMAGE"),
                           m_folder->filePath(QStringLiteral("flash.img")));
        environment.insert(QStringLiteral("QUORVEL_FLASH_CONTROL"),
                           m_folder->filePath(QStringLiteral("control")));
        environment.insert(QStringLiteral("QUORVEL_FLASH_SPEED"), QStringLiteral("0"));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(QUORVEL_FLASH_STAND_IN), arguments);
        if (!process.waitForFinished(cTimeoutMs))
            return {};
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }

    Result write(const QString& address, const QByteArray& bytes) const
    {
        QFile file(m_folder->filePath(QStringLiteral("image.bin")));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return {};
        file.close();
        return run({QStringLiteral("-p"), QStringLiteral("spiflash-write"), address, file.fileName()});
    }

    QByteArray image() const
    {
        QFile file(m_folder->filePath(QStringLiteral("flash.img")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QUORVEL_TEST_MAIN(FlashStandInTest, QCoreApplication)
#include "tst_FlashStandIn.moc"
