// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <optional>

#include "geometry/trace/bitmap_trace_steps.h"

namespace kelmo {

namespace {

/// Edges of a joined run that turn back by more than 179 degrees end it.
constexpr double kCosine179 = -0.999847695156;

/// One curve in the place of several.
struct Opti {
    double pen = 0;
    cv::Point2d c[2];
    double t = 0;
    double s = 0;
    double alpha = 0;
};

struct Bezier {
    cv::Point2d p0, p1, p2, p3;

    cv::Point2d At(double u) const {
        const double s = 1 - u;
        return s * s * s * p0 + 3 * (s * s * u) * p1 + 3 * (u * u * s) * p2 + u * u * u * p3;
    }

    /// Where the tangent is parallel to `edge`, in [0, 1].
    std::optional<double> ParallelTo(const cv::Point2d& edge) const {
        const double first = Cross(p1 - p0, edge);
        const double second = Cross(p2 - p1, edge);
        const double third = Cross(p3 - p2, edge);
        const double a = first - 2 * second + third;
        const double b = 2 * second - 2 * first;
        const double discriminant = b * b - 4 * a * first;
        if (a == 0 || discriminant < 0) {
            return std::nullopt;
        }
        const double root = std::sqrt(discriminant);
        for (const double u : {(-b + root) / (2 * a), (-b - root) / (2 * a)}) {
            if (u >= 0 && u <= 1) {
                return u;
            }
        }
        return std::nullopt;
    }
};

class Joiner {
public:
    Joiner(const Curve& source, double allowed)
        : curve(source), tolerance(allowed), convexity(source.n), areas(source.n + 1) {
        FindConvexity();
        SumAreas();
    }

    std::unique_ptr<Curve> Join() {
        Search();
        return Assemble();
    }

private:
    int32_t Next(int32_t i) const { return i + 1 < curve.n ? i + 1 : 0; }

    void FindConvexity() {
        for (int32_t i = 0; i < curve.n; ++i) {
            convexity[i] = curve.tag[i] == kCornerSegment
                               ? 0
                               : TruncatedSign(Dpara(curve.vertex[Mod(i - 1, curve.n)],
                                                     curve.vertex[i], curve.vertex[Next(i)]));
        }
    }

    void SumAreas() {
        double area = 0;
        for (int32_t i = 0; i < curve.n; ++i) {
            const int32_t i1 = Next(i);
            if (curve.tag[i1] == kCurveSegment) {
                area += 0.3 * curve.alpha[i1] * (4 - curve.alpha[i1]) *
                        Dpara(curve.End(i), curve.vertex[i1], curve.End(i1)) / 2;
            }
            area += Dpara(curve.vertex[0], curve.End(i), curve.End(i1)) / 2;
            areas[i + 1] = area;
        }
    }

    /// The fewest segments from place 0 to each place, and among those the least penalty.
    void Search() {
        const int32_t m = curve.n;
        back.assign(m + 1, -1);
        length.assign(m + 1, 0);
        joined.resize(m + 1);
        std::vector<int32_t> penalty(m + 1);
        for (int32_t j = 1; j <= m; ++j) {
            back[j] = j - 1;
            penalty[j] = penalty[j - 1];
            length[j] = length[j - 1] + 1;
            for (int32_t i = j - 2; i >= 0; --i) {
                const std::optional<Opti> o = Test(i, Mod(j, m));
                if (!o) {
                    break;
                }
                if (length[j] > length[i] + 1 ||
                    (length[j] == length[i] + 1 && penalty[j] > penalty[i] + o->pen)) {
                    back[j] = i;
                    penalty[j] = Truncate(penalty[i] + o->pen);
                    length[j] = length[i] + 1;
                    joined[j] = *o;
                }
            }
        }
    }

    std::unique_ptr<Curve> Assemble() const {
        const int32_t m = curve.n;
        auto result = std::make_unique<Curve>(length[m]);
        std::vector<double> s(result->n, 1.0);
        std::vector<double> t(result->n, 1.0);
        for (int32_t i = result->n - 1, j = m; i >= 0; j = back[j], --i) {
            const int32_t from = Mod(j, m);
            if (back[j] == j - 1) {
                CopySegment(*result, i, from);
            } else {
                PutJoined(*result, i, from, joined[j]);
                s[i] = joined[j].s;
                t[i] = joined[j].t;
            }
        }
        for (int32_t i = 0; i < result->n; ++i) {
            result->beta[i] = s[i] / (s[i] + t[Mod(i + 1, result->n)]);
        }
        result->alphaCurve = 1;
        return result;
    }

    void CopySegment(Curve& result, int32_t i, int32_t from) const {
        result.tag[i] = curve.tag[from];
        std::copy_n(curve.c.begin() + 3 * from, 3, result.c.begin() + 3 * i);
        result.vertex[i] = curve.vertex[from];
        result.alpha[i] = curve.alpha[from];
        result.alpha0[i] = curve.alpha0[from];
        result.beta[i] = curve.beta[from];
    }

    void PutJoined(Curve& result, int32_t i, int32_t from, const Opti& o) const {
        const size_t at = 3 * static_cast<size_t>(i);
        result.tag[i] = kCurveSegment;
        result.c[at] = o.c[0];
        result.c[at + 1] = o.c[1];
        result.c[at + 2] = curve.End(from);
        result.vertex[i] = Interval(o.s, curve.End(from), curve.vertex[from]);
        result.alpha[i] = result.alpha0[i] = o.alpha;
    }

    /// One curve from the end of segment `i` to the end of segment `j`, or nothing when it would
    /// stray too far.
    std::optional<Opti> Test(int32_t i, int32_t j) const {
        if (i == j || !BendsOneWay(i, j)) {
            return std::nullopt;
        }
        std::optional<Opti> o = WithSameArea(i, j);
        if (!o) {
            return std::nullopt;
        }
        const Bezier bezier{curve.End(i), o->c[0], o->c[1], curve.End(j)};
        const bool fits = TouchesEdges(bezier, i, j, *o) && StaysOutsideChords(bezier, i, j, *o);
        return fits ? o : std::nullopt;
    }

    bool BendsOneWay(int32_t i, int32_t j) const {
        const int32_t i1 = Next(i);
        const int32_t bend = convexity[i1];
        if (bend == 0) {
            return false;
        }
        const cv::Point2d start = curve.vertex[i1] - curve.vertex[i];
        const double d = cv::norm(start);
        for (int32_t k = i1; k != j;) {
            const int32_t k1 = Next(k);
            const cv::Point2d edge = curve.vertex[Next(k1)] - curve.vertex[k1];
            if (convexity[k1] != bend || TruncatedSign(Cross(start, edge)) != bend ||
                start.dot(edge) < d * cv::norm(edge) * kCosine179) {
                return false;
            }
            k = k1;
        }
        return true;
    }

    /// The curve tangential to the first and last edge that encloses the area of the run.
    std::optional<Opti> WithSameArea(int32_t i, int32_t j) const {
        const cv::Point2d& p0 = curve.End(i);
        const cv::Point2d& p1 = curve.vertex[Next(i)];
        const cv::Point2d& p2 = curve.vertex[j];
        const cv::Point2d& p3 = curve.End(j);
        double area = areas[j] - areas[i] - Dpara(curve.vertex[0], p0, p3) / 2;
        if (i >= j) {
            area += areas[curve.n];
        }
        const double a1 = Dpara(p0, p1, p2);
        const double a2 = Dpara(p0, p1, p3);
        const double a3 = Dpara(p0, p2, p3);
        const double a4 = a1 + a3 - a2;
        if (a2 == a1) {
            return std::nullopt;
        }
        Opti o;
        o.t = a3 / (a3 - a4);
        o.s = a2 / (a2 - a1);
        const double whole = a2 * o.t / 2;
        if (whole == 0) {
            return std::nullopt;
        }
        o.alpha = 2 - std::sqrt(4 - area / whole / 0.3);
        if (!std::isfinite(o.alpha)) {
            return std::nullopt;
        }
        o.c[0] = Interval(o.t * o.alpha, p0, p1);
        o.c[1] = Interval(o.s * o.alpha, p3, p2);
        return o;
    }

    bool TouchesEdges(const Bezier& bezier, int32_t i, int32_t j, Opti& o) const {
        for (int32_t k = Next(i); k != j;) {
            const int32_t k1 = Next(k);
            const cv::Point2d& from = curve.vertex[k];
            const cv::Point2d& to = curve.vertex[k1];
            const std::optional<double> u = bezier.ParallelTo(to - from);
            const double d = cv::norm(to - from);
            if (!u || d == 0) {
                return false;
            }
            const cv::Point2d point = bezier.At(*u);
            const double distance = Dpara(from, to, point) / d;
            if (std::abs(distance) > tolerance || (to - from).dot(point - from) < 0 ||
                (from - to).dot(point - to) < 0) {
                return false;
            }
            o.pen += distance * distance;
            k = k1;
        }
        return true;
    }

    bool StaysOutsideChords(const Bezier& bezier, int32_t i, int32_t j, Opti& o) const {
        for (int32_t k = i; k != j;) {
            const int32_t k1 = Next(k);
            const cv::Point2d& from = curve.End(k);
            const cv::Point2d& to = curve.End(k1);
            const std::optional<double> u = bezier.ParallelTo(to - from);
            const double d = cv::norm(to - from);
            if (!u || d == 0) {
                return false;
            }
            double distance = Dpara(from, to, bezier.At(*u)) / d;
            double bulge = Dpara(from, to, curve.vertex[k1]) / d * 0.75 * curve.alpha[k1];
            if (bulge < 0) {
                distance = -distance;
                bulge = -bulge;
            }
            if (distance < bulge - tolerance) {
                return false;
            }
            if (distance < bulge) {
                o.pen += (distance - bulge) * (distance - bulge);
            }
            k = k1;
        }
        return true;
    }

    const Curve& curve;
    double tolerance;
    std::vector<int32_t> convexity;  ///< -1, 0 (corner or straight), 1 for each vertex
    std::vector<double> areas;       ///< running area under the curve from vertex 0
    std::vector<int32_t> back;
    std::vector<int32_t> length;
    std::vector<Opti> joined;
};

}  // namespace

void JoinCurves(Path& path, double tolerance) {
    if (path.curve->n > 0) {
        path.curve = Joiner(*path.curve, tolerance).Join();
    }
}

}  // namespace kelmo
