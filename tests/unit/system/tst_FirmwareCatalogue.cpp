// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/FirmwareCatalogue.h"
#include "tests/support/TestCase.h"

#include <QtTest>

namespace {

/// JSON text, written with apostrophes for quotation marks.
QByteArray json(QByteArray text)
{
    return text.replace('\'', '"');
}

} // namespace

class FirmwareCatalogueTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void types_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QStringList>("types");
        const QStringList none;
        QTest::newRow("in order, with a repetition")
            << QByteArray(
                   "{'firmware':[{'type':'F1','files':1},{'type':'A'},{'type':'F1','files':2}],'x':[]}")
            << QStringList{"F1", "A", "F1"};
        QTest::newRow("elements that are none")
            << QByteArray("{'firmware':[null,7,{'type':7},{'type':'B'},[{'type':'C'}]]}")
            << QStringList{"", "", "", "B", ""};
        QTest::newRow("empty body") << QByteArray() << none;
        QTest::newRow("a page") << QByteArray("<html>502</html>") << none;
        QTest::newRow("cut off") << QByteArray("{'firmware':[{'type':'F1'},{'ty") << none;
        QTest::newRow("no list") << QByteArray("{'firmware':{'type':'F1'}}") << none;
        QTest::newRow("an array at the top") << QByteArray("[{'firmware':[{'type':'F1'}]}]") << none;
        QTest::newRow("deeper than any parser goes")
            << QByteArray("{'firmware':") + QByteArray(200000, '[') + QByteArray(200000, ']') + '}' << none;
        QTest::newRow("zero bytes and broken text")
            << QByteArray("{'firmware':[{'type':'\xff\xfe'}]") + '\0' + '}' << none;
    }

    void types()
    {
        QFETCH(QByteArray, body);
        const FirmwareCatalogue catalogue = FirmwareCatalogue::fromJson(json(body));
        QTEST(catalogue.types, "types");
        for (const QString& type : catalogue.types)
            QVERIFY(catalogue.byType.contains(type));
    }

    void lastEntryOfATypeCounts()
    {
        const FirmwareCatalogue catalogue = FirmwareCatalogue::fromJson(
            json("{'firmware':[{'type':'F1','files':[]},{'type':'F1','files':[{'url':'u','name':'n'}]}]}"));
        QCOMPARE(FirmwareFiles::fromEntry(catalogue.byType.value(QStringLiteral("F1"))).urls,
                 QStringList{"u"});
    }

    void filesOfAType_data()
    {
        QTest::addColumn<QByteArray>("files");
        QTest::addColumn<QStringList>("urls");
        QTest::addColumn<QString>("boot");
        QTest::newRow("usual") << QByteArray(
                                      "[{'url':'u1','name':'f1boot.bin'},{'url':'u2','name':'logo.bin'}]")
                               << QStringList{"u1", "u2"} << "f1boot.bin";
        QTest::newRow("the last boot counts, upper case does not")
            << QByteArray("[{'name':'boot1'},{'name':'reboot2'},{'name':'BOOT3'}]") << QStringList{"", "", ""}
            << "reboot2";
        QTest::newRow("none") << QByteArray("[{'url':'u','name':'logo.bin'}]") << QStringList{"u"} << "";
        QTest::newRow("no list") << QByteArray("'boot'") << QStringList() << "";
    }

    void filesOfAType()
    {
        QFETCH(QByteArray, files);
        const FirmwareCatalogue catalogue =
            FirmwareCatalogue::fromJson(json("{'firmware':[{'type':'F1','files':" + files + "}]}"));
        const FirmwareFiles parsed = FirmwareFiles::fromEntry(catalogue.byType.value(QStringLiteral("F1")));
        QTEST(parsed.urls, "urls");
        QTEST(parsed.bootFileName, "boot");
    }

    /// Whatever a hostile server calls its files, the name stays inside the cache folder.
    void fileNames_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("plain");
        QTest::newRow("usual") << "http://h:8078/f1/boot.bin"
                               << "boot.bin" << true;
        QTest::newRow("query and fragment") << "http://h/f1/logo.bin?v=2#x"
                                            << "logo.bin" << true;
        QTest::newRow("blank and Chinese")
            << "http://h/%E5%9B%BA%E4%BB%B6%201.bin" << QStringLiteral("固件 1.bin") << true;
        QTest::newRow("a folder") << "http://h/f1/"
                                  << "" << false;
        QTest::newRow("no path") << "http://h"
                                 << "" << false;
        QTest::newRow("nothing") << ""
                                 << "" << false;
        QTest::newRow("parent") << "http://h/f1/.."
                                << ".." << false;
        QTest::newRow("encoded slash") << "http://h/f1/..%2F..%2Fevil.bin"
                                       << "evil.bin" << true;
        QTest::newRow("encoded backslash") << "http://h/f1/..%5Cevil.bin"
                                           << "..\\evil.bin" << false;
        QTest::newRow("drive") << "http://h/C:evil.bin"
                               << "C:evil.bin" << false;
        QTest::newRow("stream") << "http://h/logo.bin:hidden"
                                << "logo.bin:hidden" << false;
        QTest::newRow("line break") << "http://h/a%0Ab.bin"
                                    << "a\nb.bin" << false;
        QTest::newRow("device") << "http://h/nul.bin"
                                << "nul.bin" << false;
        QTest::newRow("device, upper case") << "http://h/COM1"
                                            << "COM1" << false;
        QTest::newRow("not quite a device") << "http://h/console.bin"
                                            << "console.bin" << true;
        QTest::newRow("dot at the end") << "http://h/logo.bin."
                                        << "logo.bin." << false;
        QTest::newRow("too long") << "http://h/" + QString(300, 'a') << QString(300, 'a') << false;
    }

    void fileNames()
    {
        QFETCH(QString, url);
        QFETCH(QString, name);
        QCOMPARE(firmware::fileNameOf(url), name);
        QTEST(firmware::isPlainFileName(name), "plain");
    }

    void zeroByteInAName()
    {
        QVERIFY(!firmware::isPlainFileName(QStringLiteral("logo.bin") + QChar(0) + QStringLiteral("x")));
    }
};

QUORVEL_TEST_MAIN(FirmwareCatalogueTest, QCoreApplication)
#include "tst_FirmwareCatalogue.moc"
