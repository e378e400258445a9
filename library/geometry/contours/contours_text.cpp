// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <limits>

#include "geometry/contours/contours.h"
#include "geometry/contours/contours_space.h"

namespace kelmo {

namespace {

/// Lines over and under texts; a host that names more has lost count.
constexpr int32_t kMostRects = 4096;

constexpr float kHuge = std::numeric_limits<float>::max();

/// Farther from the middle of the frame, in half frame heights, a face cannot be triangulated.
constexpr float kFarthest = 1e6f;

/// Stands for a point that cannot be used.
const cv::Point2f kUnusable(kHuge, kHuge);

bool IsUsable(const cv::Point2f& p) {
    // Written so that NaN fails.
    return std::abs(p.x) < kFarthest && std::abs(p.y) < kFarthest;
}

/// Points of one type that make a segment; 0 for a type that we do not know.
int32_t PointsOf(uint8_t type) {
    switch (type) {
        case kTextMoveTo:
        case kTextLineTo:
            return 1;
        case kTextQuadraticTo:
            return 2;
        case kTextCubicTo:
            return 3;
        default:
            return 0;
    }
}

float FiniteOr(float fallback, float value) {
    return std::isfinite(value) ? value : fallback;
}

int Truncated(double value) {
    return static_cast<int>(std::clamp(value, -2147483648.0, 2147483647.0));
}

struct Box {
    float minX, maxX, maxY, minY;

    void Add(const cv::Point2f& p) {
        minX = std::min(minX, p.x);
        maxX = std::max(maxX, p.x);
        maxY = std::max(maxY, p.y);
        minY = std::min(minY, p.y);
    }
};

/// Walks the host's point arrays and collects sub-contours.
class SubPathReader {
public:
    explicit SubPathReader(std::vector<std::vector<PathInfo>>& subPaths) : target(subPaths) {}

    void MoveTo(const cv::Point2f& point) {
        Close();
        isOpen = true;
        isValid = IsUsable(point);
        current = point;
    }

    /// `points` are the segment's own, the last one its end.
    void Add(uint8_t type, const cv::Point2f* points) {
        if (!isOpen) {
            MoveTo(points[0]);
        }
        const int32_t count = PointsOf(type);
        isValid = isValid && std::all_of(points, points + count, IsUsable);
        segments.push_back(count == 1 ? PathInfo::Line(current, points[0])
                           : count == 2
                               ? PathInfo::Quadratic(current, points[0], points[1])
                               : PathInfo::Cubic(current, points[0], points[1], points[2]));
        current = points[count - 1];
    }

    void Close() {
        if (isValid && !segments.empty()) {
            target.push_back(std::move(segments));
        }
        segments.clear();
        isOpen = false;
    }

private:
    std::vector<std::vector<PathInfo>>& target;
    std::vector<PathInfo> segments;
    cv::Point2f current;
    bool isOpen = false;
    bool isValid = true;
};

void ReadSubPaths(const uint8_t* types, const std::vector<cv::Point2f>& points,
                  std::vector<std::vector<PathInfo>>& subPaths) {
    SubPathReader reader(subPaths);
    const size_t count = points.size();
    for (size_t i = 0; i < count;) {
        const size_t used = PointsOf(types[i]);
        if (types[i] == kTextMoveTo) {
            reader.MoveTo(points[i]);
        } else if (used != 0 && i + used <= count) {
            reader.Add(types[i], &points[i]);
        }
        i += std::max<size_t>(used, 1);
    }
    reader.Close();
}

}  // namespace

void Contours::ParseTextPath(TextPath* textPath, int32_t width, int32_t height) {
    if (!textPath || width <= 0 || height <= 0) {
        return;
    }
    m_Paths.clear();
    m_IsText = m_HasDecoration = m_BoxValid = false;
    m_TextAngle = FiniteOr(0, textPath->GetAngle());
    const int32_t count = textPath->GetPathCount();
    textPath->GetOrigin(&m_TextOrigin.x, &m_TextOrigin.y);
    m_TextOrigin = {FiniteOr(0, m_TextOrigin.x), FiniteOr(0, m_TextOrigin.y)};
    float p = 0.5f;
    float q = 0.5f;
    textPath->GetAnchor(&p, &q);
    p = FiniteOr(0.5f, p);
    q = FiniteOr(0.5f, q);
    int32_t canvasWidth = 0;
    int32_t canvasHeight = 0;
    textPath->GetSize(&canvasWidth, &canvasHeight);
    if (canvasWidth == width && canvasHeight == height) {
        p = q = 0.5f;
    }
    m_TextCenter = {2 * p - 1, 2 * q - 1};

    const cv::Point half(canvasWidth / 2, canvasHeight / 2);
    const cv::Point2d centred = cv::Point2d(width * 0.5, height * 0.5) - cv::Point2d(half);
    const cv::Point2d anchored =
        cv::Point2d(double(width) * p, double(height) * q) - cv::Point2d(half);
    const NormalisedSpace upright(width, height);
    const NormalisedSpace rotated(width, height, m_TextAngle);

    Box all{1, -1, -1, 1};
    std::vector<cv::Point2f> points;
    for (int32_t i = 0; i < count; ++i) {
        const uint8_t* types = nullptr;
        const float* xs = nullptr;
        const float* ys = nullptr;
        const int32_t pointCount = textPath->GetPath(i, &types, &xs, &ys, 0);
        if (pointCount <= 0 || !types || !xs || !ys) {
            continue;
        }
        Box box{kHuge, -kHuge, -kHuge, kHuge};
        points.clear();
        for (int32_t k = 0; k < pointCount; ++k) {
            const cv::Point2d pixel(xs[k], ys[k]);
            const cv::Point2f place = upright(pixel + anchored);
            const cv::Point2f point = rotated(pixel + centred);
            const bool isUsable = IsUsable(place) && IsUsable(point);
            if (isUsable) {
                box.Add(place);
                all.Add(place);
            }
            points.push_back(isUsable ? point : kUnusable);
        }
        ContourPath& group = m_Paths.emplace_back();
        group.minX = box.minX;
        group.maxX = box.maxX;
        group.maxY = box.maxY;
        group.minY = box.minY;
        ReadSubPaths(types, points, group.subPaths);
    }
    m_Bound =
        cv::Rect(Truncated((all.minX + 1) * width * 0.5), Truncated((1 - all.maxY) * height * 0.5),
                 Truncated((all.maxX - all.minX) * width * 0.5),
                 Truncated((all.maxY - all.minY) * height * 0.5));
    ReadDecoration(*textPath, centred, rotated);
}

void Contours::ReadDecoration(TextPath& textPath, const cv::Point2d& offset,
                              const NormalisedSpace& space) {
    if (!textPath.HasDecoration()) {
        return;
    }
    m_HasDecoration = true;
    // False, and all corners at 0, when one of them is not usable.
    const auto place = [&](const float* pixels, cv::Point2f* corners) {
        for (int k = 0; k < 4; ++k) {
            corners[k] = space(cv::Point2d(pixels[2 * k], pixels[2 * k + 1]) + offset);
        }
        const bool isUsable = std::all_of(corners, corners + 4, IsUsable);
        if (!isUsable) {
            std::fill_n(corners, 4, cv::Point2f());
        }
        return isUsable;
    };
    float pixels[8] = {};
    m_BoxValid = textPath.GetBox(pixels, &m_BoxColor) && place(pixels, m_BoxCorners.data());
    m_RectCount = std::clamp(textPath.GetRectCount(), 0, kMostRects);
    m_RectColor = textPath.GetRectColor();
    m_Rects.clear();
    for (int32_t i = 0; i < m_RectCount; ++i) {
        textPath.GetRect(i, pixels);
        cv::Point2f corners[4];
        place(pixels, corners);
        for (const cv::Point2f& corner : corners) {
            m_Rects.insert(m_Rects.end(), {corner.x, corner.y});
        }
    }
}

}  // namespace kelmo
