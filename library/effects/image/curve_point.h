// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>
#include <vector>

/// Tone curves as chains of cubic Bezier segments.
namespace kelmo {

/// A knot or a control of a tone curve: input and output value, 0..1 on an ordinary curve.
struct CurvePoint {
    double x = 0.0;
    double y = 0.0;
};

using CurvePoints = std::vector<CurvePoint>;

/// Least and greatest number of knots of a curve that is drawn.
inline constexpr std::size_t kMinCurveKnots = 2;
inline constexpr std::size_t kMaxCurveKnots = 25;

/// Reads a JSON array of objects with the numbers "_time" (x) and "_value" (y). An empty text
/// leaves `points` alone; what is no array of that kind leaves it empty; elements without both
/// numbers are skipped, and so are numbers that are not finite.
void ParseCurveText(std::string_view text, CurvePoints& points);

/// The inner controls of a chain through `knots`: at each inner knot the first and the second
/// derivative go on unbroken, the ends are free (a natural spline in Bezier form). One pair of
/// controls a segment; nothing is computed for fewer than 2 knots.
void ComputeControlPoints(const CurvePoints& knots, CurvePoints& first, CurvePoints& second);

/// Whether two lists have the same length and no point moved by 1e-9 or more in either direction.
bool SameCurve(const CurvePoints& a, const CurvePoints& b);

}  // namespace kelmo
