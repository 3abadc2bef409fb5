// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/SceneGraphMemory.h"

#include <QMetaObject>
#include <QString>

class QQuickWindow;

/**
 * The scene graph that paints this process's windows, and why. OpenGL is used where a graphics processor
 * renders it; else the scene graph paints in software, which costs a ninth of OpenGL on the main processor.
 *
 * prepare(), decide() and watch() are called in this order, on the GUI thread. There is one choice for each
 * process, as Qt Quick has one.
 */
class SceneGraph
{
public:
    enum class Backend { Undecided, OpenGl, Software, UserChosen };

    static SceneGraph& instance();

    /**
     * Decides without loading OpenGL where that is possible: by the environment variable QT_QUICK_BACKEND
     * ("opengl" is understood besides Qt's names), by what the system says about its graphics, or by what
     * earlier starts learnt. Call it before the application object is created, after its attributes are set:
     * for the software scene graph, the windows then share no OpenGL context and OpenGL is never loaded.
     */
    void prepare();
    /// Asks OpenGL itself where prepare() decided nothing, and says the result in the log. Call it before the
    /// first window.
    void decide();
    /**
     * Follows the first frame of \a window: remembers that OpenGL works, or that it does not. When OpenGL
     * cannot be started, the program starts again with the software scene graph.
     */
    void watch(QQuickWindow& window);

    Backend backend() const { return m_backend; }
    /// Why this backend was chosen, untranslated.
    QString reason() const { return m_reason; }
    /// OpenGL's name for what renders; empty with the software scene graph and before OpenGL was asked.
    QString renderer() const { return m_renderer; }
    /// Version of OpenGL and its driver, in the driver's words; empty as renderer().
    QString driver() const { return m_driver; }
    /// Qt's name of the backend, with the reason, for a log or a diagnosis.
    QString description() const;

private:
    void choose(Backend backend, const QString& reason);
    void useSoftware(const QString& reason);
    /// Nothing of this process loads OpenGL's library. Has no effect once an application object exists.
    void keepOpenGlOut();
    void tryOpenGl();
    void giveUpOpenGl(const QString& reason);
    void onFirstFrame();
    void onFailure(const QString& message);
    void remember(SceneGraphMemory::State state) const;

    Backend m_backend = Backend::Undecided;
    bool m_prepared = false;
    /// OpenGL's library is kept out of the process by an environment variable, which goes with decide().
    bool m_hidesOpenGl = false;
    /// OpenGL was to show the first frame of the last start and did not.
    bool m_failed = false;
    /// OpenGL is to show the first frame of this start.
    bool m_trying = false;
    QString m_reason;
    QString m_fingerprint;
    QString m_renderer;
    QString m_driver;
    QMetaObject::Connection m_firstFrame;
};
