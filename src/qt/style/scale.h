// Round steps for the marks of scales and axes.
// Used by the thermometer and the strip chart.
#pragma once

namespace kestrel::qt {

/// The smallest of 1, 2, 5, 10, 20, 50, ... (or of their fractions) that divides a range into at most `most` steps.
double roundStep(double range, int most);

/// The same for times: whole minutes, hours and days, one minute at least. Range and result in days.
double roundTimeStep(double days, int most);

}  // namespace kestrel::qt
