// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/**
 * Every setting that the application stores: the one place for group, key, type and default. The comment of
 * an entry is its meaning in docs/settings.md. scripts/check-settings holds the interface's documents,
 * pack/Quorvel.ini and docs/settings.md against this table.
 */
namespace setting {

/// Where a setting is stored and what it is while nothing is stored. T is bool, int, double or const char*
/// for a text.
template <typename T>
struct Setting
{
    const char* group;
    const char* key;
    T byDefault;
};

// The entries are read as setting::language.
// NOLINTBEGIN(readability-identifier-naming)

/// Language of the interface: 0 Chinese, 1 English
inline constexpr Setting<int> language{"system", "language", 0};

/// The version that automatic update checks do not offer again; empty offers every one
inline constexpr Setting<const char*> ignoredVersion{"upgrade", "ignoredVersion", ""};

/// Server of firmware, updates and manuals: a host, with or without "http://" or "https://"
inline constexpr Setting<const char*> serverHost{"sysSettings", "serverHost", "http://127.0.0.1"};
/// TCP port of the server's firmware list and version check, 1 to 65535
inline constexpr Setting<int> apiPort{"sysSettings", "apiPort", 8078};
/// TCP port of the server's manuals, 1 to 65535
inline constexpr Setting<int> docsPort{"sysSettings", "docsPort", 8000};
/// Daily log files of the application and of the USB traffic in Documents/Quorvel/Logs
inline constexpr Setting<bool> usbDebugEnabled{"sysSettings", "usbDebugEnabled", false};
/// Keep recorded multimeter readings in Documents/Quorvel/Database
inline constexpr Setting<bool> saveMultimeterHistoryToFile{"sysSettings", "saveMultimeterHistoryToFile",
                                                           false};
/// Opacity of the window's background, 0 (clear) to 1 (solid)
inline constexpr Setting<double> windowBackgroundOpacity{"sysSettings", "windowBackgroundOpacity", 0.92};

/// Whether the window's place was stored; without it the other values of the group count for nothing
inline constexpr Setting<bool> windowValid{"windowGeometry", "valid", false};
/// Left edge of the window in logical pixels
inline constexpr Setting<int> windowX{"windowGeometry", "x", 0};
/// Upper edge of the window in logical pixels
inline constexpr Setting<int> windowY{"windowGeometry", "y", 0};
/// Width of the window in logical pixels; 0 or less when none is stored
inline constexpr Setting<int> windowWidth{"windowGeometry", "width", -1};
/// Height of the window in logical pixels; 0 or less when none is stored
inline constexpr Setting<int> windowHeight{"windowGeometry", "height", -1};

/// Range of the needle gauge: index into the page's list; the last one finds the range by itself
inline constexpr Setting<int> gaugeRangeIndex{"pointerGauge", "currentRangeIndex", 4};

/// Whether the multimeter page shows the table of recorded readings
inline constexpr Setting<bool> historyTableVisible{"multimeterGauge", "historyTableVisible", true};

/// Whether the power analysis shows the voltage curve
inline constexpr Setting<bool> showVoltageCurve{"powerWaveAnalysis", "showVoltageCurve", true};
/// Whether the power analysis shows the curve to compare with
inline constexpr Setting<bool> showStandardCurve{"powerWaveAnalysis", "showStandardCurve", false};
/// Whether the axes of the power analysis follow the curves
inline constexpr Setting<bool> autoScaleAxis{"powerWaveAnalysis", "autoScaleAxis", false};
/// Whether the control panel of the power analysis is folded
inline constexpr Setting<bool> controlPanelCollapsed{"powerWaveAnalysis", "controlPanelCollapsed", true};
/// Current range of the power analysis: index into the page's list
inline constexpr Setting<int> waveRangeIndex{"powerWaveAnalysis", "currentRangeIndex", 3};

// NOLINTEND(readability-identifier-naming)

} // namespace setting
