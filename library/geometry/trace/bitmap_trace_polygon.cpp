// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdlib>

#include "geometry/trace/bitmap_trace_steps.h"

namespace kelmo {

namespace {

/// Farther than any path of a picture that we meet is long.
constexpr int32_t kBeyond = 10000000;

int64_t WholeCross(const cv::Point& a, const cv::Point& b) {
    return int64_t(a.x) * b.y - int64_t(a.y) * b.x;
}

int32_t Sign(int32_t v) {
    return (v > 0) - (v < 0);
}

/// The walk in whole numbers, with the jumps from corner to corner that the search for straight
/// lines makes.
struct CornerWalk {
    explicit CornerWalk(const Path& path)
        : points(path.pt.begin(), path.pt.end()), nextCorner(path.len), direction(path.len) {
        int32_t k = 0;
        for (int32_t i = path.len - 1; i >= 0; --i) {
            if (points[i].x != points[k].x && points[i].y != points[k].y) {
                k = i + 1;
            }
            nextCorner[i] = k;
            direction[i] = DirectionBit(points[k] - points[i]);
        }
    }

    /// One of four bits for the four directions along the axes.
    static uint8_t DirectionBit(const cv::Point& d) {
        return static_cast<uint8_t>(1 << ((3 + 3 * Sign(d.x) + Sign(d.y)) / 2));
    }

    std::vector<cv::Point> points;
    /// For each point the first later one that is not on the same horizontal or vertical run.
    std::vector<int32_t> nextCorner;
    std::vector<uint8_t> direction;  ///< to the next corner
};

/// The cone in which a straight line from a point must stay to pass within half a pixel of all
/// points so far. (0, 0) is no limit.
struct Cone {
    cv::Point first;
    cv::Point second;

    bool Excludes(const cv::Point& cur) const {
        return WholeCross(first, cur) < 0 || WholeCross(second, cur) > 0;
    }

    void Narrow(const cv::Point& cur) {
        if (std::abs(cur.x) <= 1 && std::abs(cur.y) <= 1) {
            return;
        }
        cv::Point off(cur.x + (cur.y >= 0 && (cur.y > 0 || cur.x < 0) ? 1 : -1),
                      cur.y + (cur.x <= 0 && (cur.x < 0 || cur.y < 0) ? 1 : -1));
        if (WholeCross(first, off) >= 0) {
            first = off;
        }
        off = {cur.x + (cur.y <= 0 && (cur.y < 0 || cur.x < 0) ? 1 : -1),
               cur.y + (cur.x >= 0 && (cur.x > 0 || cur.y < 0) ? 1 : -1)};
        if (WholeCross(second, off) <= 0) {
            second = off;
        }
    }

    /// How many steps of `step` beyond `cur` stay inside.
    int32_t Steps(const cv::Point& cur, const cv::Point& step) const {
        const int64_t b = WholeCross(first, step);
        const int64_t d = WholeCross(second, step);
        int64_t count = kBeyond;
        if (b < 0) {
            count = -(WholeCross(first, cur) / b);
        }
        if (d > 0) {
            count = std::min(count, -(WholeCross(second, cur) / d));
        }
        return static_cast<int32_t>(std::min<int64_t>(count, kBeyond));
    }
};

/// The last point that a straight line from point `i` reaches when later points are not looked at.
int32_t Pivot(const CornerWalk& walk, int32_t i) {
    constexpr int kAllDirections = 15;
    const auto n = static_cast<int32_t>(walk.points.size());
    const cv::Point origin = walk.points[i];
    int directions = CornerWalk::DirectionBit(walk.points[Mod(i + 1, n)] - origin);
    Cone cone;
    int32_t k = walk.nextCorner[i];
    int32_t k1 = i;
    do {
        directions |= walk.direction[k1];
        if (directions == kAllDirections) {
            return k1;
        }
        const cv::Point cur = walk.points[k] - origin;
        if (cone.Excludes(cur)) {
            break;
        }
        cone.Narrow(cur);
        k1 = k;
        k = walk.nextCorner[k1];
    } while (Cyclic(k, i, k1));
    const cv::Point step = walk.points[k] - walk.points[k1];
    const int32_t steps =
        cone.Steps(walk.points[k1] - origin, cv::Point(Sign(step.x), Sign(step.y)));
    return Mod(k1 + steps, n);
}

/// The distance of the points i to j from the line through both, as a root of the mean square times
/// the length. `j` may be beyond the last point by less than a turn.
double Penalty(const Path& path, int32_t i, int32_t j) {
    const int32_t n = path.len;
    const Sum& from = path.sums[i];
    double k = j + 1 - i;
    Sum sum;
    if (j >= n) {
        j -= n;
        sum = path.sums[n];
    }
    const Sum& to = path.sums[j + 1];
    sum.x += to.x - from.x;
    sum.y += to.y - from.y;
    sum.xy += to.xy - from.xy;
    sum.x2 += to.x2 - from.x2;
    sum.y2 += to.y2 - from.y2;

    const cv::Point2d& a = path.pt[i];
    const cv::Point2d& b = path.pt[j];
    const double px = (a.x + b.x) / 2 - path.x0;
    const double py = (a.y + b.y) / 2 - path.y0;
    const double ex = -(b.y - a.y);
    const double ey = b.x - a.x;
    const double xx = (sum.x2 - 2 * sum.x * px) / k + px * px;
    const double xy = (sum.xy - sum.x * py - sum.y * px) / k + px * py;
    const double yy = (sum.y2 - 2 * sum.y * py) / k + py * py;
    // A sum of squares; rounding may bring it below 0.
    return std::sqrt(std::max(0.0, ex * ex * xx + 2 * ex * ey * xy + ey * ey * yy));
}

/// For each point the farthest corner that a segment from it may have.
std::vector<int32_t> FarthestCorners(const Path& path) {
    const int32_t n = path.len;
    std::vector<int32_t> clip(n);
    for (int32_t i = 0; i < n; ++i) {
        int32_t c = Mod(path.lon[Mod(i - 1, n)] - 1, n);
        if (c == i) {
            c = Mod(i + 1, n);
        }
        clip[i] = c < i ? n : c;
    }
    return clip;
}

/// The reverse: for each point the first one from which a segment may reach it.
std::vector<int32_t> FirstCorners(const std::vector<int32_t>& farthest) {
    const auto n = static_cast<int32_t>(farthest.size());
    std::vector<int32_t> first(n + 1);
    int32_t j = 1;
    for (int32_t i = 0; i < n; ++i) {
        for (; j <= farthest[i]; ++j) {
            first[j] = i;
        }
    }
    return first;
}

}  // namespace

void ComputeSums(Path& path) {
    path.x0 = path.pt[0].x;
    path.y0 = path.pt[0].y;
    path.sums.assign(1, Sum());
    path.sums.reserve(path.pt.size() + 1);
    Sum sum;
    for (const cv::Point2d& point : path.pt) {
        const double x = point.x - path.x0;
        const double y = point.y - path.y0;
        sum.x += x;
        sum.y += y;
        sum.xy += x * y;
        sum.x2 += x * x;
        sum.y2 += y * y;
        path.sums.push_back(sum);
    }
}

void ComputeStraightReach(Path& path) {
    const int32_t n = path.len;
    const CornerWalk walk(path);
    std::vector<int32_t> pivot(n);
    for (int32_t i = n - 1; i >= 0; --i) {
        pivot[i] = Pivot(walk, i);
    }
    // A line from i must also do for all points behind i: the nearest end counts.
    path.lon.resize(n);
    int32_t j = pivot[n - 1];
    path.lon[n - 1] = j;
    for (int32_t i = n - 2; i >= 0; --i) {
        if (Cyclic(i + 1, pivot[i], j)) {
            j = pivot[i];
        }
        path.lon[i] = j;
    }
    for (int32_t i = n - 1; i >= 0 && Cyclic(Mod(i + 1, n), j, path.lon[i]); --i) {
        path.lon[i] = j;
    }
}

void FindPolygon(Path& path) {
    const int32_t n = path.len;
    const std::vector<int32_t> farthest = FarthestCorners(path);
    const std::vector<int32_t> first = FirstCorners(farthest);

    // Corner j of a shortest polygon lies between earliest[j] and latest[j].
    std::vector<int32_t> latest;
    for (int32_t i = 0; i < n; i = farthest[i]) {
        latest.push_back(i);
    }
    latest.push_back(n);
    const auto m = static_cast<int32_t>(latest.size()) - 1;
    std::vector<int32_t> earliest(m + 1);
    for (int32_t i = n, j = m; j > 0; --j) {
        earliest[j] = i;
        i = first[i];
    }

    // Penalties are kept as integers: a candidate is compared with the truncated best.
    std::vector<int32_t> penalty(n + 1);
    std::vector<int32_t> previous(n + 1);
    for (int32_t j = 1; j <= m; ++j) {
        for (int32_t i = earliest[j]; i <= latest[j]; ++i) {
            int32_t best = -1;
            for (int32_t k = latest[j - 1]; k >= first[i]; --k) {
                const double candidate = Penalty(path, k, i) + penalty[k];
                if (best < 0 || best > candidate) {
                    previous[i] = k;
                    best = Truncate(candidate);
                }
            }
            penalty[i] = best;
        }
    }
    path.m = m;
    path.po.resize(m);
    for (int32_t i = n, j = m - 1; j >= 0; --j) {
        i = previous[i];
        path.po[j] = i;
    }
}

}  // namespace kelmo
