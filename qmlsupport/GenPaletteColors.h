// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Every named colour of the interface, in the order of the palette's list:
// X(name, light disabled, light enabled, dark disabled, dark enabled)
// clang-format off
#define GEN_PALETTE_COLORS(X) \
    X(windowShadeLight, "#909090", "#828282", "#707070", "#626262") \
    X(window, "#ffffff", "#ffffff", "#232323", "#1f1f1f") \
    X(windowShade, "#d9d9d9", "#d9d9d9", "#404040", "#303030") \
    X(windowShadeDark, "#bdbdbd", "#bdbdbd", "#020508", "#020508") \
    X(text, "#9d9d9d", "#000000", "#707070", "#ffffff") \
    X(warningText, "#cc0808", "#cc0808", "#f85761", "#f85761") \
    X(button, "#778899", "#4766BB", "transparent", "transparent") \
    X(button2, "#778899", "#4766BB", "#32E8C3", "#32E8C3") \
    X(buttonText2, "#9d9d9d", "#000000", "#A6A6A6", "#000000") \
    X(buttonText, "#9d9d9d", "#ffffff", "#A6A6A6", "#ffffff") \
    X(buttonHighlight, "#9d9d9d", "#2EAAEE", "#1E90FF", "#4682B4") \
    X(buttonHighlightText, "#2c2c2c", "#ffffff", "#2c2c2c", "#000000") \
    X(primaryButton, "#585858", "#5DB6F5", "#585858", "#8cb3be") \
    X(primaryButtonText, "#2c2c2c", "#000000", "#2c2c2c", "#000000") \
    X(textField, "#ffffff", "#ffffff", "#707070", "#ffffff") \
    X(textFieldText, "#808080", "#000000", "#000000", "#000000") \
    X(mapButton, "#585858", "#000000", "#585858", "#000000") \
    X(mapButtonHighlight, "#585858", "#be781c", "#585858", "#be781c") \
    X(mapIndicator, "#585858", "#be781c", "#585858", "#be781c") \
    X(mapIndicatorChild, "#585858", "#766043", "#585858", "#766043") \
    X(colorGreen, "#009431", "#009431", "#00e04b", "#00e04b") \
    X(colorOrange, "#b95604", "#b95604", "#de8500", "#de8500") \
    X(colorRed, "#ed3939", "#ed3939", "#f32836", "#f32836") \
    X(colorGrey, "#808080", "#808080", "#bfbfbf", "#bfbfbf") \
    X(colorBlue, "#1a72ff", "#1a72ff", "#536dff", "#536dff") \
    X(alertBackground, "#eecc44", "#eecc44", "#eecc44", "#eecc44") \
    X(alertBorder, "#808080", "#808080", "#808080", "#808080") \
    X(alertText, "#000000", "#000000", "#000000", "#000000") \
    X(missionItemEditor, "#585858", "#dbfef8", "#585858", "#585d83") \
    X(toolStripHoverColor, "#585858", "#9D9D9D", "#585858", "#585d83") \
    X(hoverColor, "#585858", "#dbfef8", "#585858", "#FF6035") \
    X(statusFailedText, "#9d9d9d", "#000000", "#707070", "#ffffff") \
    X(statusPassedText, "#9d9d9d", "#000000", "#707070", "#ffffff") \
    X(statusPendingText, "#9d9d9d", "#000000", "#707070", "#ffffff") \
    X(toolbarBackground, "#ffffff", "#ffffff", "#222222", "#222222") \
    X(mapWidgetBorderLight, "#ffffff", "#ffffff", "#ffffff", "#ffffff") \
    X(mapWidgetBorderDark, "#000000", "#000000", "#000000", "#000000") \
    X(brandingPurple, "#F34343", "#F34343", "#F34343", "#F34343") \
    X(brandingBlue, "#48D6FF", "#6045c5", "#48D6FF", "#6045c5") \
    X(leftPanelColor, "#48D6FF", "#6045c5", "#292929", "#292929") \
    X(selectButtonBorderColor, "#48D6FF", "#6045c5", "#32E8C3", "#32E8C3") \
    X(selectButtonColor, "#48D6FF", "#6045c5", "#10584B", "#10584B") \
    X(toolStripFGColor, "#707070", "#ffffff", "#707070", "#ffffff")
// clang-format on
