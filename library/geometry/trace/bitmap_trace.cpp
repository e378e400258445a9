// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/trace/bitmap_trace.h"

#include <algorithm>
#include <cstring>
#include <numeric>

#include "geometry/trace/bitmap_trace_steps.h"

namespace kelmo {

namespace {

/// An order of the paths in which `stripes` equal parts of the loop have about equal work: the
/// longest path first, each to the part with the least work that still has a place. A border as
/// long as ten thousand specks would otherwise leave all threads but one without work.
std::vector<int32_t> BalancedOrder(const std::vector<std::unique_ptr<Path>>& paths,
                                   int32_t stripes) {
    const auto count = static_cast<int32_t>(paths.size());
    std::vector<int32_t> byLength(count);
    std::iota(byLength.begin(), byLength.end(), 0);
    if (stripes < 2 || count <= stripes) {
        return byLength;
    }
    std::stable_sort(byLength.begin(), byLength.end(),
                     [&](int32_t a, int32_t b) { return paths[a]->len > paths[b]->len; });
    struct Part {
        int32_t next;
        int32_t end;
        int64_t work;
    };
    std::vector<Part> parts;
    for (int64_t i = 0; i < stripes; ++i) {
        parts.push_back({static_cast<int32_t>(i * count / stripes),
                         static_cast<int32_t>((i + 1) * count / stripes), 0});
    }
    std::vector<int32_t> order(count);
    for (const int32_t index : byLength) {
        Part* best = nullptr;
        for (Part& part : parts) {
            if (part.next < part.end && (!best || part.work < best->work)) {
                best = &part;
            }
        }
        order[best->next++] = index;
        best->work += paths[index]->len;
    }
    return order;
}

/// Exchanges ink and empty within walks. Each upright edge turns what lies right of it, up to the
/// walk's right end; edges of one row turn what lies between them twice, so only every second
/// stretch is touched. Keeps its memory for the next walk.
class InsideInverter {
public:
    explicit InsideInverter(Bitmap& picture) : bitmap(picture) {}

    void Invert(const Path& path) {
        top = static_cast<int32_t>(path.minY);
        SortEdges(path);
        const auto endX = static_cast<int32_t>(path.maxX);
        for (size_t row = 0; row + 1 < firstOfRow.size(); ++row) {
            const auto begin = edges.begin() + firstOfRow[row];
            const auto end = edges.begin() + firstOfRow[row + 1];
            if (end - begin != 2) {
                std::sort(begin, end);
            } else if (begin[1] < begin[0]) {  // mostly there is one on each side
                std::swap(begin[0], begin[1]);
            }
            for (auto edge = begin; edge < end; edge += 2) {
                bitmap.FlipRow(edge[0], edge + 1 < end ? edge[1] : endX,
                               top + static_cast<int32_t>(row));
            }
        }
    }

private:
    template <typename Use>
    void ForEachEdge(const Path& path, Use&& use) const {
        auto lastY = static_cast<int32_t>(path.pt[0].y);
        for (const cv::Point2d& point : path.pt) {
            const auto y = static_cast<int32_t>(point.y);
            if (y != lastY) {
                use(std::min(lastY, y) - top, static_cast<int32_t>(point.x));
                lastY = y;
            }
        }
    }

    void SortEdges(const Path& path) {
        firstOfRow.assign(static_cast<size_t>(path.maxY) - top + 2, 0);
        ForEachEdge(path, [&](int32_t row, int32_t) { ++firstOfRow[row + 2]; });
        std::partial_sum(firstOfRow.begin(), firstOfRow.end(), firstOfRow.begin());
        edges.resize(firstOfRow.back());
        ForEachEdge(path, [&](int32_t row, int32_t x) { edges[firstOfRow[row + 1]++] = x; });
        firstOfRow.pop_back();
    }

    Bitmap& bitmap;
    int32_t top = 0;
    std::vector<int32_t> firstOfRow;  // rows from `top` on, and the end
    std::vector<int32_t> edges;       // x of the upright edges, row by row
};

}  // namespace

void BitmapTrace::Clear() {
    bitmap = nullptr;
    workBitmap = nullptr;
    pathList.clear();
    isReady = false;
}

void BitmapTrace::Trace(Bitmap* source, Bitmap* work) {
    Clear();
    bitmap = source;
    workBitmap = work;
    isReady = true;
    FindPaths();
    const int32_t stripes = cv::getNumThreads();
    const std::vector<int32_t> order = BalancedOrder(pathList, stripes);
    cv::parallel_for_(cv::Range(0, static_cast<int>(pathList.size())),
                      parallelBitmapTraceInvoker(this, &order), stripes);
}

void parallelBitmapTraceInvoker::operator()(const cv::Range& range) const {
    for (int i = range.start; i < range.end; ++i) {
        trace->WorkOut(*trace->pathList[(*order)[i]]);
    }
}

void BitmapTrace::WorkOut(Path& path) const {
    ComputeSums(path);
    ComputeStraightReach(path);
    FindPolygon(path);
    AdjustVertices(path);
    if (path.sign == "-") {
        std::reverse(path.curve->vertex.begin(), path.curve->vertex.end());
    }
    SmoothCurve(*path.curve, alphaMax);
    if (optCurve != 0) {
        JoinCurves(path, optTolerance);
    }
}

void BitmapTrace::FindPaths() {
    const size_t size = std::max(workBitmap->size, 0);
    InsideInverter inverter(*workBitmap);
    for (size_t at = 0; at < size;) {
        const void* ink = std::memchr(workBitmap->data + at, 0, size - at);
        if (!ink) {
            break;
        }
        at = static_cast<const uint8_t*>(ink) - workBitmap->data;
        std::unique_ptr<Path> path = WalkPath(static_cast<int32_t>(at % workBitmap->width),
                                              static_cast<int32_t>(at / workBitmap->width));
        inverter.Invert(*path);
        if (path->area > turdSize) {
            pathList.push_back(std::move(path));
        }
    }
}

std::unique_ptr<Path> BitmapTrace::WalkPath(int32_t x, int32_t y) const {
    auto path = std::make_unique<Path>();
    path->sign = std::string(1, bitmap->at(x, y) ? '+' : '-');
    const int32_t startX = x;
    const int32_t startY = y;
    int32_t dirX = 0;
    int32_t dirY = 1;
    while (true) {
        path->pt.emplace_back(x, y);
        path->minX = std::min<double>(path->minX, x);
        path->maxX = std::max<double>(path->maxX, x);
        path->minY = std::min<double>(path->minY, y);
        path->maxY = std::max<double>(path->maxY, y);
        ++path->len;
        x += dirX;
        y += dirY;
        path->area -= x * dirY;
        if (x == startX && y == startY) {
            return path;
        }
        const bool left = workBitmap->at(x + (dirX + dirY - 1) / 2, y + (dirY - dirX - 1) / 2);
        const bool right = workBitmap->at(x + (dirX - dirY - 1) / 2, y + (dirY + dirX - 1) / 2);
        if (right && (left || TurnsRight(*path, x, y))) {
            std::swap(dirX, dirY);
            dirX = -dirX;
        } else if (right || !left) {
            std::swap(dirX, dirY);
            dirY = -dirY;
        }
    }
}

bool BitmapTrace::TurnsRight(const Path& path, int32_t x, int32_t y) const {
    return turnPolicy == "right" || (turnPolicy == "black" && path.sign == "+") ||
           (turnPolicy == "white" && path.sign == "-") ||
           (turnPolicy == "majority" && MajorityIsInk(x, y)) ||
           (turnPolicy == "minority" && !MajorityIsInk(x, y));
}

bool BitmapTrace::MajorityIsInk(int32_t x, int32_t y) const {
    const auto vote = [this](int32_t px, int32_t py) { return workBitmap->at(px, py) ? 1 : -1; };
    // Rings around the corner, until one of them is not in balance.
    for (int32_t i = 2; i < 5; ++i) {
        int32_t count = 0;
        for (int32_t a = -i + 1; a <= i - 1; ++a) {
            count += vote(x + a, y + i - 1) + vote(x + i - 1, y + a - 1) + vote(x + a - 1, y - i) +
                     vote(x - i, y + a);
        }
        if (count != 0) {
            return count > 0;
        }
    }
    return false;
}

}  // namespace kelmo
