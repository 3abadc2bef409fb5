// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/GraphicsNodes.h"
#include "tests/support/TestCase.h"

#include <QTemporaryDir>

class GraphicsEvidenceTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void processorIsRuledOut_data()
    {
        const test::Table<QStringList, QStringList, bool> table("nodes", "environment", "ruledOut");
        table.row("graphics processor", {"dri/card0", "dri/renderD128"}, {"DISPLAY=:0"}, false);
        table.row("driver with a node of its own", {"nvidiactl"}, {"DISPLAY=:0"}, false);
        table.row("local display by its long name", {"dri/renderD128"}, {"DISPLAY=unix:0.0"}, false);
        table.row("software not forced", {"dri/renderD128"}, {"LIBGL_ALWAYS_SOFTWARE=0"}, false);
        table.row("frame buffer without a processor", {"dri/card0"}, {"DISPLAY=:0"}, true);
        table.row("no devices", {}, {"DISPLAY=:0"}, true);
        table.row("software forced", {"dri/renderD128"}, {"LIBGL_ALWAYS_SOFTWARE=true"}, true);
        table.row("forwarded by a secure shell", {"dri/renderD128"}, {"DISPLAY=localhost:10.0"}, true);
        table.row("address of version 6", {"dri/renderD128"}, {"DISPLAY=::1:0"}, true);
        table.row("remote beside a local Wayland", {"dri/renderD128"},
                  {"DISPLAY=host:0", "WAYLAND_DISPLAY=wayland-0"}, false);
    }

    void processorIsRuledOut()
    {
        QFETCH(const QStringList, nodes);
        QFETCH(const QStringList, environment);
        QFETCH(const bool, ruledOut);
        const platform::GraphicsEvidence evidence = evidenceOf(nodes, environment);
        QCOMPARE(!evidence.noProcessor.isEmpty(), ruledOut);
    }

    void fingerprintFollowsDisplayAndDriver()
    {
        const QTemporaryDir tree;
        const QString device = tree.filePath("class/drm/renderD128/device");
        QVERIFY(QDir().mkpath(device));
        QStringList seen;
        for (const char* driver : {"nouveau", "nvidia"}) {
            QVERIFY(
                test::writeFile(device + "/uevent", QByteArray("DRIVER=") + driver + "\nPCI_ID=10DE:1C82\n"));
            for (const char* display : {"DISPLAY=:0", "DISPLAY=:1"})
                seen << evidenceOf({"dri/renderD128"}, {display}, tree.path()).fingerprint;
        }
        QCOMPARE(seen.removeDuplicates(), 0);
        QCOMPARE(evidenceOf({"dri/renderD128"}, {"DISPLAY=:1"}, tree.path()).fingerprint, seen.last());
    }

    void rendererOfTheMainProcessor_data()
    {
        const test::Table<QString, bool> table("name", "processor");
        table.row("Mesa", "llvmpipe (LLVM 15.0.6, 256 bits)", true);
        table.row("Mesa on the host of a virtual machine", "virgl (LLVMPIPE (LLVM 12.0.0, 256 bits))", true);
        table.row("old Mesa", "Software Rasterizer", true);
        table.row("Windows without a driver", "GDI Generic", true);
        table.row("Direct3D", "ANGLE (Microsoft Basic Render Driver Direct3D11 vs_5_0 ps_5_0)", true);
        table.row("Windows' adapter", "Microsoft Basic Display Adapter", true);
        table.row("processor with graphics", "Mesa Intel(R) UHD Graphics 620 (KBL GT2)", false);
        table.row("card", "NVIDIA GeForce GTX 1050 Ti/PCIe/SSE2", false);
        table.row("card over Direct3D", "ANGLE (AMD Radeon(TM) Graphics Direct3D11 vs_5_0 ps_5_0)", false);
    }

    void rendererOfTheMainProcessor()
    {
        QFETCH(const QString, name);
        QTEST(platform::isProcessorRenderer(name), "processor");
    }

private:
    static platform::GraphicsEvidence evidenceOf(const QStringList& nodes, const QStringList& environment,
                                                 const QString& tree = "/nonexistent")
    {
        const QTemporaryDir devices;
        QDir(devices.path()).mkdir("dri");
        for (const QString& node : nodes)
            test::writeFile(devices.filePath(node), {});
        QProcessEnvironment variables;
        for (const QString& variable : environment)
            variables.insert(variable.section('=', 0, 0), variable.section('=', 1));
        return platform::graphicsEvidence(variables, devices.path(), tree);
    }
};

QUORVEL_TEST_MAIN(GraphicsEvidenceTest, QCoreApplication)
#include "tst_GraphicsEvidence.moc"
