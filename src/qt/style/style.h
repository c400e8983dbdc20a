// The look of the program: one style and three palettes over the toolkit's Fusion style.
// It is put on once at start; every window and dialog follows.
#pragma once

#include <QApplication>

namespace kestrel::qt {

enum class Theme {
    System,  ///< as the desktop: dark when its own text is lighter than its windows
    Light,
    Dark,
    Contrast,  ///< the strongest contrasts, for weak eyes and bright light
};

void applyLook(QApplication& application, Theme theme);

}  // namespace kestrel::qt
