// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SceneGraph.h"
#include "platform/GraphicsEvidence.h"
#include "tests/support/TestCase.h"

#include <QApplication>
#include <QProcess>
#include <QQuickWindow>
#include <QtTest>

#include <optional>

namespace {

/// Makes this program play one start: it writes what it came to into this file.
constexpr const char* cResultVariable = "QUORVEL_TEST_RESULT";
/// Why there is no graphics processor; without it there may be one.
constexpr const char* cEvidenceVariable = "QUORVEL_TEST_NO_PROCESSOR";
/// Takes what renders OpenGL in the test for a graphics processor.
constexpr const char* cProcessorVariable = "QUORVEL_TEST_PROCESSOR";
/// How a start goes on once the choice is made: "quit" before the first frame, or "error" from the scene
/// graph.
constexpr const char* cCourseVariable = "QUORVEL_TEST_COURSE";

constexpr const char* cDisplay = "the display";

QString fingerprint()
{
    return QStringLiteral("Qt %1\n%2").arg(QLatin1String(qVersion()), QLatin1String(cDisplay));
}

/// What main() does about the scene graph, up to the first frame.
int playStart(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    SceneGraph& sceneGraph = SceneGraph::instance();
    sceneGraph.prepare();
    QApplication app(argc, argv);
    sceneGraph.decide();
    const QByteArray course = qgetenv(cCourseVariable);
    if (course == "quit") {
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        return QCoreApplication::exec();
    }
    QQuickWindow window;
    sceneGraph.watch(window);
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&] {
        if (course == "error" && sceneGraph.backend() == SceneGraph::Backend::OpenGl) {
            Q_EMIT window.sceneGraphError(QQuickWindow::ContextNotAvailable, "as a test wants it");
            return;
        }
        const bool loaded = test::contentOf("/proc/self/maps").contains("libGLX_mesa");
        QFile result(qEnvironmentVariable(cResultVariable));
        if (result.open(QIODevice::WriteOnly))
            result.write(sceneGraph.description().toUtf8() + (loaded ? ", loaded" : ", not loaded"));
        QCoreApplication::quit();
    });
    window.show();
    return QCoreApplication::exec();
}

void writeMemory(SceneGraphMemory::State state, const QString& display, int ageDays)
{
    SceneGraphMemory memory;
    memory.state = state;
    memory.fingerprint = display;
    memory.renderer = "remembered renderer";
    memory.written = QDateTime::currentDateTimeUtc().addDays(-ageDays);
    QVERIFY(memory.write());
}

} // namespace

// What the system would say, in its place.
platform::GraphicsEvidence platform::graphicsEvidence()
{
    return {qEnvironmentVariable(cEvidenceVariable), cDisplay};
}

bool platform::isProcessorRenderer(const QString&)
{
    return !qEnvironmentVariableIsSet(cProcessorVariable);
}

class SceneGraphTest : public TestCase
{
    Q_OBJECT

    using State = SceneGraphMemory::State;
    using Memory = std::optional<State>;
    using Variables = QStringList;

private Q_SLOTS:
    void initTestCase()
    {
        // Real OpenGL needs a display.
        m_display.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp", "-screen", "0", "800x600x24"});
        QVERIFY(m_display.waitForReadyRead());
        m_displayName = ":" + QString::fromLatin1(m_display.readLine()).trimmed();
    }

    void cleanupTestCase()
    {
        m_display.terminate();
        QVERIFY(m_display.waitForFinished());
    }

    void init()
    {
        TestCase::init();
        QFile::remove(SceneGraphMemory::path());
    }

    void startMakesAndRemembersAChoice_data()
    {
        const test::Table<int, int, QString, Variables, QString, int> table(
            "remembered", "ageDays", "display", "environment", "choice", "remembersThen");
        const QString same = fingerprint();
        const int works = int(State::Works);
        const int trying = int(State::Trying);
        const int unusable = int(State::Unusable);
        const Variables gpu{QString(cProcessorVariable) + "=1"};
        table.row("new, main processor", -1, 0, same, {}, "software (OpenGL is rendered by llvmpipe",
                  unusable);
        table.row("new, graphics processor", -1, 0, same, gpu, "opengl (llvmpipe", works);
        table.row("remembered", works, 99, same, gpu, "opengl (remembered), loaded", works);
        table.row("remembered as unusable", unusable, 6, same, gpu, "software (remembered), not loaded",
                  unusable);
        table.row("unusable long ago", unusable, 8, same, gpu, "opengl (llvmpipe", works);
        table.row("unusable in the future", unusable, -8, same, gpu, "opengl (llvmpipe", works);
        table.row("other display", unusable, 0, "other", gpu, "opengl (llvmpipe", works);
        table.row("no frame at the last start", trying, 0, same, gpu,
                  "software (OpenGL showed no frame at the last start), not loaded", unusable);
        // The window shows, in OpenGL once more; the next start is right.
        table.row("processor gone without a trace", works, 0, same, {}, "opengl (remembered)", unusable);
        table.row("OpenGL gone", works, 0, same, gpu + Variables{"QT_XCB_GL_INTEGRATION=none"},
                  "software (OpenGL is not available)", unusable);
        table.row("evidence", works, 0, same, gpu + Variables{QString(cEvidenceVariable) + "=remote"},
                  "software (remote), not loaded", works);
        table.row("user wants software", works, 0, same, gpu + Variables{"QT_QUICK_BACKEND=software"},
                  "software (QT_QUICK_BACKEND is set), not loaded", works);
        table.row("user wants OpenGL", unusable, 0, same, {"QT_QUICK_BACKEND=opengl"},
                  "opengl (QT_QUICK_BACKEND is opengl), loaded", unusable);
    }

    void startMakesAndRemembersAChoice()
    {
        QFETCH(const int, remembered);
        QFETCH(const int, ageDays);
        QFETCH(const QString, display);
        QFETCH(const Variables, environment);
        QFETCH(const QString, choice);
        QFETCH(const int, remembersThen);
        if (remembered >= 0)
            writeMemory(State(remembered), display, ageDays);
        const QString result = start(environment);
        QVERIFY2(result.startsWith(choice), qPrintable(result));
        QCOMPARE(int(rememberedState().value()), remembersThen);
    }

    void orderlyEndBeforeTheFirstFrameIsNoFailure()
    {
        start({QString(cProcessorVariable) + "=1", QString(cCourseVariable) + "=quit"});
        QVERIFY(!rememberedState());
    }

    void failureOfTheSceneGraphRestartsInSoftware()
    {
        const QString result =
            start({QString(cProcessorVariable) + "=1", QString(cCourseVariable) + "=error"}, true);
        QVERIFY2(result.startsWith("software"), qPrintable(result));
        QCOMPARE(rememberedState(), Memory(State::Unusable));
    }

    void damagedMemoryIsNone_data()
    {
        const test::Table<QByteArray> table("content");
        table.row("empty", "");
        table.row("torn", "{\"state\": \"works\", \"finger");
        table.row("unknown state",
                  "{\"state\": \"fine\", \"fingerprint\": \"f\", \"written\": \"2026-01-01T00:00:00Z\"}");
        table.row("no time", "{\"state\": \"works\", \"fingerprint\": \"f\"}");
        table.row("other types", "{\"state\": 0, \"fingerprint\": [], \"written\": {}}");
    }

    void damagedMemoryIsNone()
    {
        QFETCH(const QByteArray, content);
        writeMemory(State::Works, "f", 0);
        QVERIFY(SceneGraphMemory::read("f", QDateTime::currentDateTimeUtc()));
        QVERIFY(test::writeFile(SceneGraphMemory::path(), content));
        QVERIFY(!SceneGraphMemory::read("f", QDateTime::currentDateTimeUtc()));
    }

private:
    static Memory rememberedState()
    {
        const auto memory = SceneGraphMemory::read(fingerprint(), QDateTime::currentDateTimeUtc());
        return memory ? Memory(memory->state) : Memory();
    }

    /// What one start of this program with the given variables came to; with \a restarts, its successor.
    QString start(const QStringList& variables, bool restarts = false)
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath("result");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.insert("DISPLAY", m_displayName);
        environment.insert("LIBGL_ALWAYS_SOFTWARE", "1");
        environment.insert(cResultVariable, path);
        for (const QString& variable : variables)
            environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), QStringList());
        if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
            process.exitCode() != 0)
            return "failed: " + process.errorString();
        if (restarts && !QTest::qWaitFor([&path] { return !test::contentOf(path).isEmpty(); }, 60000))
            return "not restarted";
        return QString::fromUtf8(test::contentOf(path));
    }

    QProcess m_display;
    QString m_displayName;
};

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsSet(cResultVariable))
        return playStart(argc, argv);
    test::isolateHome();
    QCoreApplication app(argc, argv);
    SceneGraphTest testObject;
    return QTest::qExec(&testObject, argc, argv);
}
#include "tst_SceneGraph.moc"
