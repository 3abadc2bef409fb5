// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "qmlsupport/GenPaletteColors.h"
#include "qmlsupport/GenTool.h"

#include <QColor>
#include <QStringList>

/**
 * The named colours of the interface for two themes, each with an enabled and a disabled variant. Lives
 * on the GUI thread.
 *
 * The colour table and the theme are shared by all palettes of the process; the choice between enabled
 * and disabled colours belongs to each palette. For every colour N there is a property N and a read-only
 * property NColors: its four colours as "#rrggbb" in the order light enabled, light disabled, dark
 * enabled, dark disabled.
 */
class GenPalette : public GenTool
{
    Q_OBJECT
    Q_PROPERTY(Theme globalTheme READ globalTheme WRITE setGlobalTheme NOTIFY paletteChanged)
    Q_PROPERTY(bool colorGroupEnabled READ colorGroupEnabled WRITE setColorGroupEnabled NOTIFY paletteChanged)
    Q_PROPERTY(QStringList colors READ colors CONSTANT)

#define GEN_PALETTE_PROPERTY(name, ...)                                                                      \
    Q_PROPERTY(QColor name READ name WRITE set_##name NOTIFY paletteChanged)                                 \
    Q_PROPERTY(QStringList name##Colors READ name##Colors NOTIFY paletteChanged)
    GEN_PALETTE_COLORS(GEN_PALETTE_PROPERTY)
#undef GEN_PALETTE_PROPERTY

public:
    enum Theme { Light = 0, Dark = 1, cMaxTheme = 2 };
    Q_ENUM(Theme)

    GenPalette(GenApplication* app, GenToolbox* toolbox);
    ~GenPalette() override;

    void setToolbox(GenToolbox* toolbox) override;

    Theme globalTheme() const;
    /// Sets the theme of every palette. Unknown values are ignored.
    void setGlobalTheme(Theme theme);
    bool colorGroupEnabled() const
    {
        return m_colorGroupEnabled;
    }
    void setColorGroupEnabled(bool enabled);
    /// The colour names in table order.
    QStringList colors() const;

#define GEN_PALETTE_ACCESSORS(name, ...)                                                                     \
    QColor name() const                                                                                      \
    {                                                                                                        \
        return color(name##Index);                                                                           \
    }                                                                                                        \
    void set_##name(const QColor& value)                                                                     \
    {                                                                                                        \
        setColor(name##Index, value);                                                                        \
    }                                                                                                        \
    QStringList name##Colors() const                                                                         \
    {                                                                                                        \
        return colorTexts(name##Index);                                                                      \
    }
    GEN_PALETTE_COLORS(GEN_PALETTE_ACCESSORS)
#undef GEN_PALETTE_ACCESSORS

Q_SIGNALS:
    void paletteChanged();

private:
#define GEN_PALETTE_INDEX(name, ...) name##Index,
    enum ColorIndex { GEN_PALETTE_COLORS(GEN_PALETTE_INDEX) cColorCount };
#undef GEN_PALETTE_INDEX
    struct SharedState;

    static SharedState& shared();
    static void notifyAll();
    QColor color(ColorIndex index) const;
    void setColor(ColorIndex index, const QColor& value);
    static QStringList colorTexts(ColorIndex index);

    bool m_colorGroupEnabled = true;
};
