// The look of the program.
#include "qt/style/style.h"

#include <QPalette>

#include "qt/style/look_style.h"
#include "qt/style/palette.h"
#include "qt/views/accessible.h"

namespace kestrel::qt {

namespace {

bool desktopIsDark() {
    const QPalette palette = QApplication::palette();
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

QPalette paletteOf(const Colors& c) {
    QPalette palette;
    palette.setColor(QPalette::Window, c.window);
    palette.setColor(QPalette::Base, c.field);
    palette.setColor(QPalette::AlternateBase, c.panel);
    palette.setColor(QPalette::Button, c.button);
    palette.setColor(QPalette::ToolTipBase, c.panel);
    palette.setColor(QPalette::ToolTipText, c.text);
    palette.setColor(QPalette::Light, c.panel);
    palette.setColor(QPalette::Midlight, c.panel);
    palette.setColor(QPalette::Mid, c.line);
    palette.setColor(QPalette::Dark, c.outline);
    palette.setColor(QPalette::Shadow, c.outline);
    palette.setColor(QPalette::Link, c.accent);
    palette.setColor(QPalette::LinkVisited, c.accent);
    palette.setColor(QPalette::Highlight, c.accent);
    palette.setColor(QPalette::HighlightedText, c.onAccent);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::BrightText, QPalette::PlaceholderText}) {
        palette.setColor(role, role == QPalette::PlaceholderText ? c.quietText : c.text);
        palette.setColor(QPalette::Disabled, role, c.disabledText);
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, c.panel);
    palette.setColor(QPalette::Disabled, QPalette::Button, c.panel);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, c.outline);
    return palette;
}

}  // namespace

void applyLook(QApplication& application, Theme theme) {
    const bool dark = theme == Theme::Dark || (theme == Theme::System && desktopIsDark());
    setColors(theme == Theme::Contrast ? contrastColors : dark ? darkColors : lightColors);
    installAccessibility();
    application.setStyle(new LookStyle);
    application.setPalette(paletteOf(colors()));
}

}  // namespace kestrel::qt
