// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "settings/GenSettings.h"
#include "tests/support/HttpFaultServer.h"
#include "tests/support/TestCase.h"
#include "upgrade/CUpgradeControl.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <memory>

/// Base of the tests of the update control. Each test gets a new control and a real server on the loopback.
class UpdateTestCase : public TestCase
{
    Q_OBJECT

protected:
    using Reply = HttpFaultServer::Reply;

    static GenSettings* settings() { return genApp()->toolbox()->genSettings(); }

    /// Returns the server's answer to a version check that offers a package.
    static Reply offer(const QString& version, const QString& url, const QString& sha256)
    {
        const QJsonObject data{{"need_update", true},
                               {"url", url},
                               {"latest_version", version},
                               {"sha256", sha256},
                               {"desc", "news"}};
        return Reply::of(QJsonDocument(QJsonObject{{"data", data}}).toJson());
    }

    static constexpr const char* cCheckPath = "/api/check_version";
    std::unique_ptr<HttpFaultServer> m_server;
    std::unique_ptr<CUpgradeControl> m_control;
    std::unique_ptr<QSignalSpy> m_status;
    std::unique_ptr<QSignalSpy> m_manual;

protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_server = std::make_unique<HttpFaultServer>();
        QVERIFY(m_server->isListening());
        settings()->setValue("serverHost", " 127.0.0.1// ", "sysSettings");
        settings()->setValue("apiPort", m_server->port(), "sysSettings");
        settings()->setValue("ignoredVersion", QString(), "upgrade");
        // The automatic check is off. On a slow machine it would come in the middle of a test.
        m_control = std::make_unique<CUpgradeControl>(settings()->file(), nullptr, -1);
        m_status = std::make_unique<QSignalSpy>(m_control.get(), &CUpgradeControl::updateStatus);
        m_manual = std::make_unique<QSignalSpy>(m_control.get(), &CUpgradeControl::manualCheckFinished);
    }
    void cleanup()
    {
        m_control.reset();
        m_server.reset();
        TestCase::cleanup();
    }
};
