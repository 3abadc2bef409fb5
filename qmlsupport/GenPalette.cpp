// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/GenPalette.h"

#include <QList>

/// Data that all palettes of the process share. It is filled once and never freed.
struct GenPalette::SharedState
{
    enum Group { Disabled = 0, Enabled = 1, cGroups = 2 };

    SharedState()
    {
        const auto addRow = [this](ColorIndex index, const char* name, const char* lightDisabled,
                                   const char* lightEnabled, const char* darkDisabled,
                                   const char* darkEnabled) {
            table[Light][Enabled][index] = QColor(QLatin1String(lightEnabled));
            table[Light][Disabled][index] = QColor(QLatin1String(lightDisabled));
            table[Dark][Enabled][index] = QColor(QLatin1String(darkEnabled));
            table[Dark][Disabled][index] = QColor(QLatin1String(darkDisabled));
            names.append(QLatin1String(name));
        };
#define GEN_PALETTE_ROW(name, ...) addRow(name##Index, #name, __VA_ARGS__);
        GEN_PALETTE_COLORS(GEN_PALETTE_ROW)
#undef GEN_PALETTE_ROW
    }

    QColor table[cMaxTheme][cGroups][cColorCount];
    QStringList names;
    Theme theme = Dark;
    QList<GenPalette*> palettes;
};

GenPalette::GenPalette(GenApplication* app, GenToolbox* toolbox) : GenTool(app, toolbox)
{
    shared().palettes.append(this);
}

GenPalette::~GenPalette()
{
    shared().palettes.removeOne(this);
}

void GenPalette::setToolbox(GenToolbox* toolbox)
{
    GenTool::setToolbox(toolbox);
    publishToQml(this, "GenTool.GenPalette", "GenPalette");
}

GenPalette::SharedState& GenPalette::shared()
{
    static auto* const state = new SharedState;
    return *state;
}

void GenPalette::notifyAll()
{
    const QList<GenPalette*> palettes = shared().palettes;
    for (GenPalette* palette : palettes)
        Q_EMIT palette->paletteChanged();
}

GenPalette::Theme GenPalette::globalTheme() const
{
    return shared().theme;
}

void GenPalette::setGlobalTheme(Theme theme)
{
    if (theme == shared().theme || theme < Light || theme >= cMaxTheme)
        return;
    shared().theme = theme;
    notifyAll();
}

void GenPalette::setColorGroupEnabled(bool enabled)
{
    m_colorGroupEnabled = enabled;
    Q_EMIT paletteChanged();
}

QStringList GenPalette::colors() const
{
    return shared().names;
}

QColor GenPalette::color(ColorIndex index) const
{
    return shared().table[shared().theme][m_colorGroupEnabled][index];
}

void GenPalette::setColor(ColorIndex index, const QColor& value)
{
    shared().table[shared().theme][m_colorGroupEnabled][index] = value;
    notifyAll();
}

QStringList GenPalette::colorTexts(ColorIndex index)
{
    const auto& table = shared().table;
    return {
        table[Light][SharedState::Enabled][index].name(), table[Light][SharedState::Disabled][index].name(),
        table[Dark][SharedState::Enabled][index].name(), table[Dark][SharedState::Disabled][index].name()};
}
