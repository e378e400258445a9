// SPDX-License-Identifier: GPL-3.0-or-later
#include "plain_passes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <opencv2/imgproc.hpp>

#include "geometry/triangulation/delaunay.h"

namespace kelmo::test {
namespace {

using Point = cv::Point2f;
using Triangles = std::vector<Triangle2f>;

constexpr double kDegrees = 180 / std::numbers::pi;

bool Has(const Triangle2f& t, const Point& p) {
    return t.a == p || t.b == p || t.c == p;
}

double Clamped(double value) {
    return std::clamp(value, -1.0, 1.0);
}

double Angle(const Point& u, const Point& v) {
    const double dot = double{u.x} * v.x + double{u.y} * v.y;
    return std::acos(Clamped(dot / (std::hypot(u.x, u.y) * std::hypot(v.x, v.y)))) * kDegrees;
}

double CrossOf(const Point& u, const Point& v) {
    return double{u.x} * v.y - double{u.y} * v.x;
}

double Sine(const Point& u, const Point& v) {
    return std::asin(Clamped(CrossOf(u, v) / (std::hypot(u.x, u.y) * std::hypot(v.x, v.y)))) *
           kDegrees;
}

bool IsCrossing(const Triangle2f& t, const Point& a, const Point& b) {
    const Point corners[] = {t.a, t.b, t.c, t.a};
    for (int i = 0; i < 3; ++i) {
        const Point &p = corners[i], &q = corners[i + 1];
        if (CrossOf(b - a, p - a) * CrossOf(b - a, q - a) < 0 &&
            CrossOf(q - p, a - p) * CrossOf(q - p, b - p) < 0) {
            return true;
        }
    }
    return false;
}

void RecoverEdge(Triangles& triangles, const Point& a, const Point& b) {
    Triangles listA, listB;
    for (const Triangle2f& t : triangles) {
        if (Has(t, a) && Has(t, b)) return;
        if (Has(t, a)) listA.push_back(t);
        if (Has(t, b)) listB.push_back(t);
    }
    const Point d = b - a;
    std::vector<Point> points;
    for (size_t i = 0; i < triangles.size();) {
        const Triangle2f t = triangles[i];
        if (!IsCrossing(t, a, b)) {
            ++i;
            continue;
        }
        triangles.erase(triangles.begin() + static_cast<std::ptrdiff_t>(i));
        for (const Point& v : {t.a, t.b, t.c}) {
            if (v == a || v == b) continue;
            if (static_cast<float>(double{v.x - b.x} * d.y - double{d.x} * (v.y - b.y)) >= 0) {
                points.push_back(v);
            }
        }
    }
    const bool hasCrossing = !points.empty();
    points.push_back(a);
    points.push_back(b);
    if (!hasCrossing) {
        double best = 1e9;
        Point c;
        for (const Triangle2f& t : listA) {
            for (const Point& v : {t.a, t.b, t.c}) {
                if (v == a) continue;
                double angle = Angle(v - a, d);
                if (static_cast<float>(double{d.x} * (a.y - v.y) - double{a.x - v.x} * d.y) < 0) {
                    angle = 360 - angle;
                }
                if (angle < best) best = angle, c = v;
            }
        }
        if (best < 1e9) {
            points.push_back(c);
            const Point e = c - b;
            best = 1e9;
            Point winner;
            for (const Triangle2f& t : listB) {
                for (const Point& v : {t.a, t.b, t.c}) {
                    if (v == b) continue;
                    double angle = Angle(v - b, e);
                    if (static_cast<float>(double{v.x - b.x} * (b.y - c.y) -
                                           double{b.x - c.x} * (v.y - b.y)) < 0) {
                        angle = 360 - angle;
                    }
                    if (angle < best) best = angle, winner = v;
                }
            }
            if (best < 1e9) points.push_back(winner);
        }
    }
    if (points.size() >= 3) GetDelaunayTriangleList(triangles, points);
}

void Recover(Triangles& triangles, const Polyline& contour) {
    for (size_t i = 0; i < contour.size(); ++i) {
        RecoverEdge(triangles, contour[i], contour[(i + 1) % contour.size()]);
    }
}

void Carve(Triangles& triangles, const Polyline& contour, bool isOuter) {
    std::erase_if(triangles, [&](const Triangle2f& t) {
        const Point ab = (t.a + t.b) / 2, ac = (t.a + t.c) / 2, bc = (t.b + t.c) / 2;
        for (const Point& probe : {(t.a + ab + ac) / 3, (t.b + ab + bc) / 3, (t.c + ac + bc) / 3}) {
            const double side = cv::pointPolygonTest(contour, probe, false);
            if (isOuter ? side < 0 : side > 0) return true;
        }
        return false;
    });
}

void Repair(Triangles& triangles, const Polyline& contour, bool isOuter) {
    Triangles collected;
    const size_t n = contour.size();
    for (size_t i = 0; i < n; ++i) {
        const Point &p = contour[i], &next = contour[(i + 1) % n], &prev = contour[(i + n - 1) % n];
        std::vector<Point> fan;
        bool hasEdge = false;
        double sum1 = 0, sum2 = 0;
        for (const Triangle2f& t : triangles) {
            if (!Has(t, p)) continue;
            hasEdge = hasEdge || Has(t, next);
            std::vector<Point> others;
            for (const Point& v : {t.a, t.b, t.c}) {
                if (v != p) others.push_back(v);
            }
            for (const Point& v : others) {
                if (v != next && v != prev) fan.push_back(v);
            }
            const double s = Sine(others[0] - p, others[1] - p);
            sum1 += Angle(others[0] - p, others[1] - p);
            sum2 += isOuter ? std::abs(90 - s) : s + 90;
        }
        if (!hasEdge) continue;
        const Point u = next - p, w = prev - p;
        const double t = CrossOf(next - p, p - prev);
        double angle1 = Angle(u, w);
        if (isOuter ? t < 0 : t > 0) angle1 = 360 - angle1;
        double angle2 = -Sine(w, u);
        if (!isOuter) angle2 = -angle2;
        if (angle2 < 0) angle2 += 360;
        if (!(angle1 > sum1 + 0.0001) && !(angle2 > sum2 + 0.0001)) continue;
        std::vector<Point> gap;
        for (const Point& v : fan) {
            if (std::count(fan.begin(), fan.end(), v) == 1) gap.push_back(v);
        }
        gap.push_back(p);
        if (gap.size() == 2) gap.push_back(next);
        if (gap.size() < 3) continue;
        Triangles local;
        GetDelaunayTriangleList(local, gap);
        Carve(local, contour, isOuter);
        collected.insert(collected.end(), local.begin(), local.end());
    }
    triangles.insert(triangles.end(), collected.begin(), collected.end());
}

}  // namespace

void PlainTriangulate(std::vector<Triangle2f>& out, const std::vector<cv::Point2f>& points,
                      const Polyline& outer, const std::vector<const Polyline*>& holes) {
    if (points.size() < 3) return;
    Triangles triangles;
    GetDelaunayTriangleList(triangles, points);
    for (int round = 0; round < 2; ++round) {
        for (const Polyline* hole : holes) Recover(triangles, *hole);
        Recover(triangles, outer);
        Carve(triangles, outer, true);
        for (const Polyline* hole : holes) Carve(triangles, *hole, false);
    }
    Triangles repairs;
    const auto repair = [&](const Polyline& contour, bool isOuter) {
        const auto before = static_cast<std::ptrdiff_t>(triangles.size());
        Repair(triangles, contour, isOuter);
        repairs.insert(repairs.end(), triangles.begin() + before, triangles.end());
    };
    const size_t carved = triangles.size();
    repair(outer, true);
    for (const Polyline* hole : holes) repair(*hole, false);
    triangles.resize(carved);
    Carve(repairs, outer, true);
    for (const Polyline* hole : holes) Carve(repairs, *hole, false);
    out.insert(out.end(), triangles.begin(), triangles.end());
    out.insert(out.end(), repairs.begin(), repairs.end());
}

}  // namespace kelmo::test
