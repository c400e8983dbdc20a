// The colours of the program, light, dark and of high contrast, and how far two colours stand apart.
// Greys carry everything; colour is kept for what is lit, alarmed or not yet confirmed.
#pragma once

#include <QColor>
#include <array>

namespace kestrel::qt {

struct Colors {
    QColor window;                   ///< behind the groups of a page
    QColor panel;                    ///< behind the controls of a group
    QColor field;                    ///< inside of boxes, lists, charts and unlit shapes
    QColor button;                   ///< face of what can be pressed
    QColor text;                     ///< captions and values
    QColor quietText;                ///< scales, axes, column heads
    QColor disabledText;             ///< captions and values that cannot be changed now
    QColor line;                     ///< hairlines that only separate
    QColor outline;                  ///< edges that make a shape
    QColor accent;                   ///< the chosen segment, the handle, the focus ring
    QColor onAccent;                 ///< text on the accent
    QColor title;                    ///< title bar of the page in front
    QColor onTitle;                  ///< text on it
    QColor lit;                      ///< a lamp that is lit
    QColor onLit;                    ///< the mark on a lit lamp
    QColor alarm;                    ///< a value out of its range
    QColor waiting;                  ///< a change that the board has not confirmed
    std::array<QColor, 2> channels;  ///< the lines of a strip chart
};

extern const Colors lightColors;
extern const Colors darkColors;
extern const Colors contrastColors;

/// The colours of the look that is in force.
const Colors& colors();
void setColors(const Colors& chosen);

/// How far two colours stand apart, 1 (alike) to 21 (black on white).
double contrast(const QColor& one, const QColor& other);
/// The colour, made lighter or darker until its contrast with the ground is at least this.
QColor readable(const QColor& color, const QColor& ground, double least);
/// The colour as that of a text which can be read on a panel and on the window itself.
QColor readableText(const QColor& color);

inline constexpr double TextContrast = 4.5;
inline constexpr double ShapeContrast = 3.0;

}  // namespace kestrel::qt
