// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocalServer>
#include <QString>

/**
 * Keeps a user to one running instance: the first one listens on a local socket of the user, later ones find
 * it there. Lives on the GUI thread and needs an application object, which it may outlive. Nobody reads the
 * connections of later instances.
 */
class SingleInstance
{
public:
    enum class Claim {
        /// No other instance of this user runs, and later ones find this one.
        First,
        AnotherRuns,
        /// The socket cannot be opened; errorString() says why.
        Failed,
    };

    /**
     * Looks for another instance and listens when there is none. Blocks for 30 ms at most for each place to
     * look, and while another instance starts; an instance that was started to take another one's place
     * (cRestartVariable) waits up to ten seconds for that one's end.
     */
    Claim claim();
    /// Why the last claim failed, untranslated; empty when it did not.
    QString errorString() const { return m_error; }

private:
    QLocalServer m_server;
    QString m_error;
};
