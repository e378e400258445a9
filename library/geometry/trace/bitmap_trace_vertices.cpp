// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "geometry/trace/bitmap_trace_steps.h"

namespace kelmo {

namespace {

/// A quadratic form in (x, y, 1): the squared distance from lines.
struct Quad {
    std::array<std::array<double, 3>, 3> at{};

    /// Adds the squared distance from the line v[0] x + v[1] y + v[2] = 0, divided by `divisor`.
    void AddLine(const cv::Vec3d& v, double divisor) {
        for (int l = 0; l < 3; ++l) {
            for (int k = 0; k < 3; ++k) {
                at[l][k] += v[l] * v[k] / divisor;
            }
        }
    }

    double Value(const cv::Point2d& p) const {
        const cv::Vec3d v(p.x, p.y, 1);
        double sum = 0;
        for (int l = 0; l < 3; ++l) {
            for (int k = 0; k < 3; ++k) {
                sum += v[l] * at[l][k] * v[k];
            }
        }
        return sum;
    }

    double Determinant() const { return at[0][0] * at[1][1] - at[0][1] * at[1][0]; }
};

Quad operator+(const Quad& a, const Quad& b) {
    Quad sum;
    for (int l = 0; l < 3; ++l) {
        for (int k = 0; k < 3; ++k) {
            sum.at[l][k] = a.at[l][k] + b.at[l][k];
        }
    }
    return sum;
}

struct Line {
    cv::Point2d center;     ///< relative to the first point of the path
    cv::Point2d direction;  ///< about of unit length, or (0, 0)
};

/// The line nearest to the points i to j. `i` and `j` may lie outside of the path by turns.
Line FitLine(const Path& path, int32_t i, int32_t j) {
    const int32_t n = path.len;
    int32_t r = 0;
    for (; j >= n; j -= n) ++r;
    for (; i >= n; i -= n) --r;
    for (; j < 0; j += n) --r;
    for (; i < 0; i += n) ++r;
    const Sum& from = path.sums[i];
    const Sum& to = path.sums[j + 1];
    const Sum& turn = path.sums[n];
    const double x = to.x - from.x + r * turn.x;
    const double y = to.y - from.y + r * turn.y;
    const double x2 = to.x2 - from.x2 + r * turn.x2;
    const double xy = to.xy - from.xy + r * turn.xy;
    const double y2 = to.y2 - from.y2 + r * turn.y2;
    const double k = j + 1 - i + r * n;

    Line line;
    line.center = {x / k, y / k};
    double a = (x2 - x * x / k) / k;
    const double b = (xy - x * y / k) / k;
    double c = (y2 - y * y / k) / k;
    const double largest = (a + c + std::sqrt((a - c) * (a - c) + 4 * b * b)) / 2;
    a -= largest;
    c -= largest;
    // The length is a whole number: short lines lose their direction, others are not quite of unit
    // length, which the division by its square makes up for.
    const bool byRow = std::abs(a) >= std::abs(c);
    const int32_t length = Truncate(byRow ? std::sqrt(a * a + b * b) : std::sqrt(c * c + b * b));
    if (length != 0) {
        line.direction =
            byRow ? cv::Point2d(-b / length, a / length) : cv::Point2d(-c / length, b / length);
    }
    return line;
}

Quad DistanceFrom(const Line& line) {
    Quad quad;
    const double d = line.direction.dot(line.direction);
    if (d != 0) {
        const cv::Vec3d v(line.direction.y, -line.direction.x,
                          line.direction.x * line.center.y - line.direction.y * line.center.x);
        quad.AddLine(v, d);
    }
    return quad;
}

/// Where the form is least. A form without a single such point (parallel lines, no lines) gets
/// lines through `s` added until it has one.
cv::Point2d Minimum(Quad& quad, const cv::Point2d& s) {
    // Two lines always do; the third turn is for forms that rounding has spoiled.
    for (int turn = 0; turn < 3 && quad.Determinant() == 0; ++turn) {
        const auto& q = quad.at;
        cv::Vec3d v(1, 0, 0);
        if (q[0][0] > q[1][1]) {
            v = {-q[0][1], q[0][0], 0};
        } else if (q[1][1] != 0) {
            v = {-q[1][1], q[1][0], 0};
        }
        const double d = v[0] * v[0] + v[1] * v[1];
        v[2] = -v[1] * s.y - v[0] * s.x;
        quad.AddLine(v, d);
    }
    const auto& q = quad.at;
    const double determinant = quad.Determinant();
    if (determinant == 0) {
        return s;
    }
    return {(-q[0][2] * q[1][1] + q[1][2] * q[0][1]) / determinant,
            (q[0][2] * q[1][0] - q[1][2] * q[0][0]) / determinant};
}

/// The least point of the form on the border of the unit square around `s`, or `s` itself.
cv::Point2d MinimumInSquare(const Quad& quad, const cv::Point2d& s) {
    const auto& q = quad.at;
    cv::Point2d best = s;
    double least = quad.Value(s);
    const auto offer = [&](const cv::Point2d& candidate) {
        const double value = quad.Value(candidate);
        if (value < least) {
            least = value;
            best = candidate;
        }
    };
    for (int z = 0; z < 2 && q[0][0] != 0; ++z) {
        const double y = s.y - 0.5 + z;
        const double x = -(q[0][1] * y + q[0][2]) / q[0][0];
        if (std::abs(x - s.x) <= 0.5) {
            offer({x, y});
        }
    }
    for (int z = 0; z < 2 && q[1][1] != 0; ++z) {
        const double x = s.x - 0.5 + z;
        const double y = -(q[1][0] * x + q[1][2]) / q[1][1];
        if (std::abs(y - s.y) <= 0.5) {
            offer({x, y});
        }
    }
    for (int l = 0; l < 2; ++l) {
        for (int k = 0; k < 2; ++k) {
            offer(s + cv::Point2d(l - 0.5, k - 0.5));
        }
    }
    return best;
}

}  // namespace

void AdjustVertices(Path& path) {
    const int32_t m = path.m;
    const int32_t n = path.len;
    path.curve = std::make_unique<Curve>(m);
    std::vector<Quad> forms(m);
    for (int32_t i = 0; i < m; ++i) {
        const int32_t from = path.po[i];
        const int32_t to = Mod(path.po[Mod(i + 1, m)] - from, n) + from;
        forms[i] = DistanceFrom(FitLine(path, from, to));
    }
    const cv::Point2d origin(path.x0, path.y0);
    for (int32_t i = 0; i < m; ++i) {
        const cv::Point2d s = path.pt[path.po[i]] - origin;
        Quad quad = forms[Mod(i - 1, m)] + forms[i];
        const cv::Point2d w = Minimum(quad, s);
        const bool isNear = std::abs(w.x - s.x) <= 0.5 && std::abs(w.y - s.y) <= 0.5;
        path.curve->vertex[i] = (isNear ? w : MinimumInSquare(quad, s)) + origin;
    }
}

}  // namespace kelmo
