// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/GenToolbox.h"
#include "system/SystemManager.h"
#include "tests/support/HttpFaultServer.h"
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"

#include <QSignalSpy>

#include <memory>
#include <optional>

/**
 * A system manager on a real settings store and a real HTTP server, with scripts for the external programs.
 * Its own checks are out of the way: no status timer, no presence check after start-up, no long pauses.
 */
class ManagerFixture
{
public:
    ManagerFixture();
    ~ManagerFixture();
    Q_DISABLE_COPY(ManagerFixture)

    /// Creates the manager, with the server's address in the settings.
    SystemManager& start();
    /// Creates the manager and has it read a catalogue with the one type "F1" of \a files.
    SystemManager& startWithCatalogue(const QStringList& urls, const QStringList& names);

    /// Removes log, cache and archive of earlier tests.
    static void cleanFolders();
    static QString cacheDir();
    /// Names of everything in the firmware cache.
    static QStringList cached();
    /// Puts a script there that never ends; the file that holds its process id while it runs.
    QString addHanging(const QString& name) const
    {
        const QString id = scripts.path(name + ".id");
        scripts.add(name, "echo $$ > " + QFile::encodeName(id) + "; exec sleep 60");
        return id;
    }
    /// Today's log without the time stamps.
    QStringList log() const;
    bool logHas(const QString& text) const { return log().contains(text); }

    GenToolbox toolbox;
    HttpFaultServer server;
    test::ScriptFolder scripts;
    SystemServices services;
    SystemTimings timings;
    std::unique_ptr<SystemManager> manager;
    /// The messages and progress values since start().
    QStringList messages;
    QList<int> progress;
};

/// Base of the manager's tests: a new fixture for each of them.
class ManagerTestCase : public TestCase
{
    Q_OBJECT

protected:
    std::optional<ManagerFixture> m_fixture;

protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_fixture.emplace();
    }
    void cleanup()
    {
        m_fixture.reset();
        TestCase::cleanup();
    }
};

/// A catalogue with one type.
QByteArray catalogueOf(const QString& type, const QStringList& urls, const QStringList& names);
