// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/curve_point.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace kelmo {
namespace {

using Json = nlohmann::json;

/// Deeper nesting is no curve; the limit keeps the parser's recursion small.
constexpr int kMaxDepth = 8;

/// Solves the tridiagonal system for one coordinate: rows (2 1), (1 4 1) ..., (1 3.5), right-hand
/// side in `x`, solution in its place.
template <double CurvePoint::*Axis>
void SolveFirstControls(CurvePoints& x, std::vector<double>& t) {
    const std::size_t m = x.size();
    double b = 2.0;
    x[0].*Axis /= b;
    for (std::size_t i = 1; i < m; ++i) {
        t[i] = 1.0 / b;
        b = (i < m - 1 ? 4.0 : 3.5) - t[i];
        x[i].*Axis = (x[i].*Axis - x[i - 1].*Axis) / b;
    }
    for (std::size_t i = 1; i < m; ++i) {
        x[m - i - 1].*Axis -= t[m - i] * x[m - i].*Axis;
    }
}

template <double CurvePoint::*Axis>
void FillAxis(const CurvePoints& k, CurvePoints& first, CurvePoints& second,
              std::vector<double>& scratch) {
    const std::size_t m = first.size();
    if (m == 1) {
        first[0].*Axis = (2.0 * k[0].*Axis + k[1].*Axis) / 3.0;
        second[0].*Axis = 2.0 * first[0].*Axis - k[0].*Axis;
        return;
    }
    first[0].*Axis = k[0].*Axis + 2.0 * k[1].*Axis;
    for (std::size_t i = 1; i + 1 < m; ++i) {
        first[i].*Axis = 4.0 * k[i].*Axis + 2.0 * k[i + 1].*Axis;
    }
    first[m - 1].*Axis = (8.0 * k[m - 1].*Axis + k[m].*Axis) / 2.0;
    SolveFirstControls<Axis>(first, scratch);
    for (std::size_t i = 0; i + 1 < m; ++i) {
        second[i].*Axis = 2.0 * k[i + 1].*Axis - first[i + 1].*Axis;
    }
    second[m - 1].*Axis = (k[m].*Axis + first[m - 1].*Axis) / 2.0;
}

}  // namespace

void ParseCurveText(std::string_view text, CurvePoints& points) {
    if (text.empty()) return;
    points.clear();
    const auto shallow = [](int depth, Json::parse_event_t, Json&) { return depth <= kMaxDepth; };
    const Json array = Json::parse(text.begin(), text.end(), shallow, false);
    if (!array.is_array()) return;
    for (const Json& element : array) {
        if (!element.is_object()) continue;
        const auto x = element.find("_time");
        const auto y = element.find("_value");
        if (x == element.end() || y == element.end() || !x->is_number() || !y->is_number())
            continue;
        const CurvePoint point{x->get<double>(), y->get<double>()};
        if (std::isfinite(point.x) && std::isfinite(point.y)) points.push_back(point);
    }
}

void ComputeControlPoints(const CurvePoints& knots, CurvePoints& first, CurvePoints& second) {
    if (knots.size() < kMinCurveKnots) return;
    const std::size_t segments = knots.size() - 1;
    first.assign(segments, {});
    second.assign(segments, {});
    std::vector<double> scratch(segments, 0.0);
    FillAxis<&CurvePoint::x>(knots, first, second, scratch);
    FillAxis<&CurvePoint::y>(knots, first, second, scratch);
}

bool SameCurve(const CurvePoints& a, const CurvePoints& b) {
    constexpr double kStep = 0.000000001;
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!(std::abs(a[i].x - b[i].x) < kStep && std::abs(a[i].y - b[i].y) < kStep)) return false;
    }
    return true;
}

}  // namespace kelmo
