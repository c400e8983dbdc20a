// The colours of the program.
#include "qt/style/palette.h"

#include <algorithm>
#include <cmath>

namespace kestrel::qt {

const Colors lightColors{
    .window = QColor(0xe9ecef),
    .panel = QColor(0xf8f9fa),
    .field = QColor(0xffffff),
    .button = QColor(0xffffff),
    .text = QColor(0x1b2127),
    .quietText = QColor(0x4b545e),
    .disabledText = QColor(0x5f6872),
    .line = QColor(0xd3d8dd),
    .outline = QColor(0x7a848e),
    .accent = QColor(0x3b5268),
    .onAccent = QColor(0xffffff),
    .title = QColor(0x3b5268),
    .onTitle = QColor(0xffffff),
    .lit = QColor(0x14854a),
    .onLit = QColor(0xffffff),
    .alarm = QColor(0xc0272d),
    .waiting = QColor(0xa86200),
    .channels = {QColor(0x2d5f8b), QColor(0x9a4f1c)},
};

const Colors darkColors{
    .window = QColor(0x1b1f23),
    .panel = QColor(0x252a2f),
    .field = QColor(0x171a1d),
    .button = QColor(0x333a41),
    .text = QColor(0xe7eaed),
    .quietText = QColor(0xb3bbc3),
    .disabledText = QColor(0x9ca6b0),
    .line = QColor(0x3b4249),
    .outline = QColor(0x848e98),
    .accent = QColor(0xa3b8ca),
    .onAccent = QColor(0x14181c),
    .title = QColor(0x3d5063),
    .onTitle = QColor(0xf0f2f4),
    .lit = QColor(0x3ecf80),
    .onLit = QColor(0x08301b),
    .alarm = QColor(0xff7f77),
    .waiting = QColor(0xf0b24a),
    .channels = {QColor(0x7db4e0), QColor(0xe6a36a)},
};

const Colors contrastColors{
    .window = QColor(Qt::black),
    .panel = QColor(Qt::black),
    .field = QColor(Qt::black),
    .button = QColor(Qt::black),
    .text = QColor(0xffffff),
    .quietText = QColor(0xffffff),
    .disabledText = QColor(0xb8b8b8),
    .line = QColor(0x5c5c5c),
    .outline = QColor(0xffffff),
    .accent = QColor(0xffff00),
    .onAccent = QColor(Qt::black),
    .title = QColor(0xffff00),
    .onTitle = QColor(Qt::black),
    .lit = QColor(0x00ff66),
    .onLit = QColor(Qt::black),
    .alarm = QColor(0xff8080),
    .waiting = QColor(0xffb000),
    .channels = {QColor(0x66ccff), QColor(0xffb066)},
};

namespace {

const Colors* chosenColors = &lightColors;

/// The relative luminance of the accessibility guidelines for web content.
double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

}  // namespace

const Colors& colors() { return *chosenColors; }

void setColors(const Colors& chosen) { chosenColors = &chosen; }

double contrast(const QColor& one, const QColor& other) {
    const double first = luminance(one);
    const double second = luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor readable(const QColor& color, const QColor& ground, double least) {
    const QColor end = luminance(ground) > 0.18 ? Qt::black : Qt::white;
    QColor result = color;
    for (int step = 1; step <= 20 && contrast(result, ground) < least; ++step) {
        const double part = step / 20.0;
        const auto mixed = [part](float from, float to) { return static_cast<float>(from * (1 - part) + to * part); };
        result = QColor::fromRgbF(mixed(color.redF(), end.redF()), mixed(color.greenF(), end.greenF()),
                                  mixed(color.blueF(), end.blueF()));
    }
    return result;
}

QColor readableText(const QColor& color) {
    return readable(readable(color, colors().panel, TextContrast), colors().window, TextContrast);
}

}  // namespace kestrel::qt
