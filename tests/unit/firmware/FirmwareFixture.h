// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "firmware/BootModeWatch.h"
#include "storage/DebugLog.h"
#include "tests/support/HttpFaultServer.h"
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"

#include <QCoreApplication>
#include <QSignalSpy>

#include <memory>
#include <optional>

class SettingsFile;

/// What the objects around the firmware stand on: settings, a log that is on, a real HTTP server, stand-ins
/// for the external programs, and a bus on which the controller always is.
class FirmwareFixture
{
public:
    /// Removes the log and the firmware cache of earlier tests.
    FirmwareFixture();
    Q_DISABLE_COPY(FirmwareFixture)

    static QString cacheFolder();
    /// Returns the names of all files in the firmware cache.
    static QStringList cached();
    /// Puts a program there that never ends; the file that holds its process id while it runs.
    QString addHanging(const QString& name) const;
    /// Puts a flash tool there that answers "version", keeps what it is told to write in "written-ADDRESS",
    /// reads from there, and prints the bar of a real run. The steps \a atWrite are taken at the beginning of
    /// a write or read, with the address in $3. A run beside another one leaves the file "clash"; with a file
    /// "slow" every run takes a while.
    void addFlashTool(const QByteArray& atWrite = "when never exit 1") const;
    /// Returns the number of calls of the flash tool with \a command.
    int toolCalls(const QString& command) const;

    /// Returns today's log without the time stamps.
    QStringList logLines() const;
    bool logHas(const QString& text) const { return logLines().contains(text); }
    int logged(const QString& text) const { return logLines().count(text); }

    std::shared_ptr<SettingsFile> settings;
    DebugLog log;
    HttpFaultServer server;
    test::ScriptFolder scripts;
    BootModeServices bootMode;
};

/// Base of tests. Each test gets a new fixture.
class FirmwareTestCase : public TestCase
{
    Q_OBJECT

protected:
    std::optional<FirmwareFixture> m_fixture;

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

/// Returns a catalogue document with one type.
QByteArray catalogueOf(const QString& type, const QStringList& urls, const QStringList& names);
