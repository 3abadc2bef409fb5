// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FirmwareCatalogue.h"
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
        const test::Table<QByteArray, QStringList> table("body", "types");
        const QStringList none;
        table.row("in order, with a repetition",
                  "{'firmware':[{'type':'F1','files':1},{'type':'A'},{'type':'F1','files':2}],'x':[]}",
                  QStringList{"F1", "A", "F1"});
        table.row("elements that are none", "{'firmware':[null,7,{'type':7},{'type':'B'},[{'type':'C'}]]}",
                  QStringList{"", "", "", "B", ""});
        table.row("empty body", {}, none);
        table.row("a page", "<html>502</html>", none);
        table.row("cut off", "{'firmware':[{'type':'F1'},{'ty", none);
        table.row("no list", "{'firmware':{'type':'F1'}}", none);
        table.row("an array at the top", "[{'firmware':[{'type':'F1'}]}]", none);
        table.row("deeper than any parser goes",
                  QByteArray("{'firmware':") + QByteArray(200000, '[') + QByteArray(200000, ']') + '}', none);
        table.row("zero bytes and broken text", QByteArray("{'firmware':[{'type':'\xff\xfe'}]") + '\0' + '}',
                  none);
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
        QCOMPARE(FirmwareFiles::fromEntry(catalogue.byType.value("F1")).urls, QStringList{"u"});
    }

    void filesOfAType_data()
    {
        const test::Table<QByteArray, QStringList, QString> table("files", "urls", "boot");
        table.row("usual", "[{'url':'u1','name':'f1boot.bin'},{'url':'u2','name':'logo.bin'}]",
                  QStringList{"u1", "u2"}, "f1boot.bin");
        table.row("the last boot counts, upper case does not",
                  "[{'name':'boot1'},{'name':'reboot2'},{'name':'BOOT3'}]", QStringList{"", "", ""},
                  "reboot2");
        table.row("none", "[{'url':'u','name':'logo.bin'}]", QStringList{"u"}, "");
        table.row("no list", "'boot'", {}, "");
    }

    void filesOfAType()
    {
        QFETCH(QByteArray, files);
        const FirmwareCatalogue catalogue =
            FirmwareCatalogue::fromJson(json("{'firmware':[{'type':'F1','files':" + files + "}]}"));
        const FirmwareFiles parsed = FirmwareFiles::fromEntry(catalogue.byType.value("F1"));
        QTEST(parsed.urls, "urls");
        QTEST(parsed.bootFileName, "boot");
    }

    /// A file name from a hostile server cannot leave the cache folder.
    void fileNames_data()
    {
        const test::Table<QString, QString, bool> table("url", "name", "plain");
        table.row("usual", "http://h:8078/f1/boot.bin", "boot.bin", true);
        table.row("query and fragment", "http://h/f1/logo.bin?v=2#x", "logo.bin", true);
        table.row("blank and Chinese", "http://h/%E5%9B%BA%E4%BB%B6%201.bin", "固件 1.bin", true);
        table.row("a folder", "http://h/f1/", "", false);
        table.row("no path", "http://h", "", false);
        table.row("nothing", "", "", false);
        table.row("parent", "http://h/f1/..", "..", false);
        table.row("encoded slash", "http://h/f1/..%2F..%2Fevil.bin", "evil.bin", true);
        table.row("encoded backslash", "http://h/f1/..%5Cevil.bin", "..\\evil.bin", false);
        table.row("drive", "http://h/C:evil.bin", "C:evil.bin", false);
        table.row("stream", "http://h/logo.bin:hidden", "logo.bin:hidden", false);
        table.row("line break", "http://h/a%0Ab.bin", "a\nb.bin", false);
        table.row("device", "http://h/nul.bin", "nul.bin", false);
        table.row("device, upper case", "http://h/COM1", "COM1", false);
        table.row("not quite a device", "http://h/console.bin", "console.bin", true);
        table.row("dot at the end", "http://h/logo.bin.", "logo.bin.", false);
        table.row("too long", "http://h/" + QString(300, 'a'), QString(300, 'a'), false);
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
