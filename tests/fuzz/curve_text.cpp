// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "effects/image/curve_point.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    kelmo::CurvePoints points;
    kelmo::ParseCurveText({reinterpret_cast<const char*>(data), size}, points);
    for (const kelmo::CurvePoint& point : points) {
        if (!std::isfinite(point.x) || !std::isfinite(point.y)) std::abort();
    }
    kelmo::CurvePoints first;
    kelmo::CurvePoints second;
    kelmo::ComputeControlPoints(points, first, second);
    if (first.size() != second.size()) std::abort();
    return 0;
}
