#include <printman/render/units.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

int inches_to_pixels(double inches, int pixels, int millimetres) {
    if (inches == 0.0 || millimetres == 0 || !std::isfinite(inches))
        return 0;
    const double value = inches * 25.4 * pixels / millimetres;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, lowest, highest));
}

} // namespace

int itopX(double inches, const QPaintDeviceMetrics& m) {
    return inches_to_pixels(inches, m.width(), m.widthMM());
}

int itopY(double inches, const QPaintDeviceMetrics& m) {
    return inches_to_pixels(inches, m.height(), m.heightMM());
}
