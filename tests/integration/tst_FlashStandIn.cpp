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

/// The stand-in prints and does the same as the real tool.
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
        const Result result = run({"version"});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.output, QByteArray("AWUSBFEX soc=00001663(F1C100s) 00000001 ver=0001 44 08 "
                                           "scratchpad=00007e00 00000000 00000000\n"));
        QVERIFY(result.errors.isEmpty());
    }

    void progressLines_data()
    {
        const test::Table<int, int> table("size", "lines");
        table.row("nothing", 0, 0);
        table.row("one byte", 1, 1);
        table.row("one step", 65536, 1);
        table.row("four steps", 200000, 4);
    }

    void progressLines()
    {
        QFETCH(int, size);
        QFETCH(int, lines);
        const Result result = write("0x6000", QByteArray(size, 'x'));
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.output.count('\r'), lines);
        QCOMPARE(result.output.count('\n'), lines > 0 ? 1 : 0);
        QVERIFY(!result.output.contains("\r  0%"));
        static const QRegularExpression step("^ {0,2}\\d{1,3}% \\[=* *\\](?: *\\d+\\.\\d kB/s, ETA "
                                             "\\d\\d:\\d\\d | *\\d+ kB, *\\d+\\.\\d kB/s\\n)$");
        const QList<QByteArray> shown = result.output.split('\r').mid(1);
        for (const QByteArray& line : shown) {
            QVERIFY2(step.match(QString::fromLatin1(line)).hasMatch(), line.constData());
            QCOMPARE(line.indexOf(']') - line.indexOf('[') - 1, 48);
        }
        QVERIFY(lines == 0 || shown.constLast().startsWith("100% ["));
    }

    void flashKeepsWhatIsNotWritten()
    {
        QCOMPARE(write("0x6000", QByteArray(5000, 'a')).exitCode, 0);
        QCOMPARE(write("0x8000", QByteArray(10, 'b')).exitCode, 0);
        QCOMPARE(write("0x7000", QByteArray(10, 'c')).exitCode, 0);
        const QByteArray flash = test::contentOf(m_folder->filePath("flash.img"));
        QCOMPARE(flash.size(), cFlashBytes);
        QCOMPARE(flash.mid(0x5FF0, 0x10), QByteArray(0x10, '\xFF'));
        QCOMPARE(flash.mid(0x6000, 0x1000), QByteArray(0x1000, 'a'));
        // The sector of the third write was erased first.
        QCOMPARE(flash.mid(0x7000, 20), QByteArray(10, 'c') + QByteArray(10, '\xFF'));
        QCOMPARE(flash.mid(0x8000, 11), QByteArray(10, 'b') + '\xFF');
    }

    void failures_data()
    {
        const test::Table<QByteArray, int, QByteArray> table("variable", "exitCode", "errors");
        table.row("no device", "FAULT=no-device", 1, "ERROR: Allwinner USB FEL device not found!\n");
        table.row("no permission", "FAULT=no-permission", 1,
                  "ERROR: You don't have permission to access Allwinner USB FEL device\n");
        table.row("transfer", "FAIL_AT=40", 2, "usb_bulk_send() ERROR -7: Operation timed out\n");
        table.row("unsupported", "FAULT=unsupported-spi", 0, {});
        table.row("misspelt fault", "FAULT=no-devcie", 64,
                  "flash stand-in: QUORVEL_FLASH_FAULT cannot be \"no-devcie\"\n");
        table.row("other address", "FAIL_AT=40\nQUORVEL_FLASH_ADDRESS=0x0", 0, {});
    }

    void failures()
    {
        QFETCH(QByteArray, variable);
        QVERIFY(test::writeFile(m_folder->filePath("control"), "QUORVEL_FLASH_" + variable + '\n'));
        const Result result = write("0x6000", QByteArray(200000, 'x'));
        QTEST(result.exitCode, "exitCode");
        QTEST(result.errors, "errors");
    }

    void badArguments()
    {
        const Result missing = run({"-p", "spiflash-write", "0x0", "/nowhere/boot.bin"});
        QCOMPARE(missing.exitCode, 1);
        QCOMPARE(missing.errors, QByteArray("Failed to open input file: /nowhere/boot.bin\n"));
        // A folder can be opened like an empty file.
        const Result folder = run({"-p", "spiflash-write", "0x0", m_folder->path()});
        QCOMPARE(folder.exitCode, 0);
        QCOMPARE(folder.output + folder.errors, QByteArray());
        QCOMPARE(run({"frobnicate"}).exitCode, 1);
        QCOMPARE(write("0xFFF000", QByteArray(5000, 'x')).exitCode, 2);
        QCOMPARE(write("0x10", QByteArray(10, 'x')).exitCode, 1);
    }

private:
    Result run(const QStringList& arguments) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QUORVEL_FLASH_IMAGE", m_folder->filePath("flash.img"));
        environment.insert("QUORVEL_FLASH_CONTROL", m_folder->filePath("control"));
        environment.insert("QUORVEL_FLASH_SPEED", "0");
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(QUORVEL_FLASH_STAND_IN), arguments);
        if (!process.waitForFinished(cTimeoutMs))
            return {};
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }

    Result write(const QString& address, const QByteArray& bytes) const
    {
        const QString path = m_folder->filePath("image.bin");
        if (!test::writeFile(path, bytes))
            return {};
        return run({"-p", "spiflash-write", address, path});
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QUORVEL_TEST_MAIN(FlashStandInTest, QCoreApplication)
#include "tst_FlashStandIn.moc"
