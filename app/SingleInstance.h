// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocalServer>
#include <QString>

/**
 * Allows one running instance for each user. The first instance listens on a local socket of the user, and
 * later ones find it there. Lives on the GUI thread and needs an application object, but may outlive it. The
 * connections of later instances are not read.
 */
class SingleInstance
{
public:
    enum class Claim {
        /// No other instance of this user runs. Later instances find this one.
        First,
        AnotherRuns,
        /// The socket cannot be opened; errorString() has the reason.
        Failed,
    };

    /**
     * Looks for another instance, and listens when there is none. Blocks for at most 30 ms for each place to
     * look, and while another instance starts. An instance that replaces another one (cRestartVariable) waits
     * up to ten seconds for its end.
     */
    Claim claim();
    /// Reason of the last failed claim, untranslated; empty after a success.
    QString errorString() const { return m_error; }

private:
    QLocalServer m_server;
    QString m_error;
};
