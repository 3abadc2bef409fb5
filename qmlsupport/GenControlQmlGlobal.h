// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "qmlsupport/GenTool.h"

/// Layering constants and services of the application for QML: the singleton "GenControl". Lives on the GUI
/// thread.
class GenControlQmlGlobal : public GenTool
{
    Q_OBJECT
    Q_PROPERTY(double zOrderTopMost READ zOrderTopMost CONSTANT)
    Q_PROPERTY(double zOrderWidgets READ zOrderWidgets CONSTANT)
    Q_PROPERTY(double zOrderMapItems READ zOrderMapItems CONSTANT)
    Q_PROPERTY(double zOrderVehicles READ zOrderVehicles CONSTANT)
    Q_PROPERTY(double zOrderWaypointIndicators READ zOrderWaypointIndicators CONSTANT)
    Q_PROPERTY(double zOrderTrajectoryLines READ zOrderTrajectoryLines CONSTANT)
    Q_PROPERTY(double zOrderWaypointLines READ zOrderWaypointLines CONSTANT)

public:
    using GenTool::GenTool;

    double zOrderTopMost() const { return 1000; }
    double zOrderWidgets() const { return 100; }
    double zOrderMapItems() const { return 50; }
    double zOrderVehicles() const { return 49; }
    double zOrderWaypointIndicators() const { return 50; }
    double zOrderTrajectoryLines() const { return 48; }
    double zOrderWaypointLines() const { return 47; }

    /// Closes all windows, starts a new process of this executable, and leaves the event loop with 0. The new
    /// process waits for the end of this one. When it cannot be started, a message is shown first.
    Q_INVOKABLE void restartApp();
    /// Returns true when Chinese without a country is the locale "zh_CN". With the standard locale data this
    /// is always so, in every interface language. The interface language is GenApp.currentLanguage.
    Q_INVOKABLE bool isChineseLanguage() const;
};
