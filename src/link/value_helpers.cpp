// Small routines that pages use.
#include "link/value_helpers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "platform/platform.h"
#include "platform/window.h"

namespace kestrel {

namespace {

constexpr std::array<double, 4> PowersOfTen = {1, 10, 100, 1000};

bool hasPattern(int decimals) { return decimals >= 0 && decimals < static_cast<int>(PowersOfTen.size()); }

double scaled(ParamValue raw, int decimals) { return static_cast<double>(raw) / std::pow(10.0, decimals); }

void placeBar(ScrollBar& bar, ParamValue value) {
    const ParamValue highest = bar.Max.get();
    const ParamValue lowest = bar.Min.get();
    ParamValue v = value;
    if (v > highest) v = highest;
    if (v < lowest) v = lowest;
    bar.Value = static_cast<int>(v);
}

}  // namespace

std::string FormatDecimals(double value, int decimals) {
    if (!hasPattern(decimals)) return {};
    // Halves go away from zero, as the system's formatting has it; printf alone would take them to even.
    const double power = PowersOfTen[static_cast<std::size_t>(decimals)];
    const double rounded = std::round(value * power) / power;
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, rounded);
    std::string result = text.data();
    if (const auto point = result.find('.'); point != std::string::npos)
        result.replace(point, 1, platform().decimalSeparator());
    return result;
}

void SetBar(Label& label, ScrollBar& bar, ParamValue value) {
    placeBar(bar, value);
    label.Caption = std::to_string(value);
}

void SetBarTenths(Label& label, ScrollBar& bar, ParamValue value) {
    placeBar(bar, value);
    label.Caption = FormatDecimals(scaled(value, 1), 1);
}

void SetBarDecimals(Label& label, ScrollBar& bar, ParamValue value, int decimals) {
    placeBar(bar, value);
    label.Caption = FormatAmount(value, decimals);
}

std::string FormatAmount(ParamValue raw, int decimals) { return FormatDecimals(scaled(raw, decimals), decimals); }

void CenterPage(Window& form) {
    const Extent frame = platform().mainWindowExtent();
    const Extent page = platform().measure(form);
    form.Top = static_cast<int>(std::lround(frame.height * 0.85 / 2 - page.height / 2.0 + 100));
    form.Left = static_cast<int>(std::lround(frame.width / 2.0 - page.width / 2.0 - 80));
}

}  // namespace kestrel
