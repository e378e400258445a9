// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "geometry/contours/contours.h"
#include "geometry/contours/contours_space.h"
#include "geometry/trace/bitmap_trace.h"
#include "platform/host_access.h"

namespace kelmo {

namespace {

/// Handles shorter than this, in normalised space, have no direction to be relied on.
constexpr double kShortHandle = 0.01;

/// Luminance times alpha, at least 1 where there is any opacity: 0 means fully transparent.
cv::Mat Coverage(const cv::Mat& frame) {
    std::array<double, 256> opacity;
    for (int a = 0; a < 256; ++a) {
        opacity[a] = a / 255.0;
    }
    std::array<double, 3 * 255 + 1> luminance;
    for (int sum = 0; sum <= 3 * 255; ++sum) {
        luminance[sum] = std::clamp(sum / 3.0, 1.0, 255.0);
    }
    cv::Mat picture(frame.size(), CV_8UC1);
    for (int y = 0; y < frame.rows; ++y) {
        const cv::Vec4b* from = frame.ptr<cv::Vec4b>(y);
        uint8_t* to = picture.ptr<uint8_t>(y);
        for (int x = 0; x < frame.cols; ++x) {
            const cv::Vec4b& c = from[x];
            to[x] = static_cast<uint8_t>(opacity[c[3]] * luminance[c[0] + c[1] + c[2]]);
        }
    }
    return picture;
}

/// The most frequent value; among equals the lowest.
int32_t Peak(const cv::Mat& picture) {
    std::array<int32_t, 256> histogram{};
    for (int y = 0; y < picture.rows; ++y) {
        const uint8_t* row = picture.ptr<uint8_t>(y);
        for (int x = 0; x < picture.cols; ++x) {
            ++histogram[row[x]];
        }
    }
    return static_cast<int32_t>(std::max_element(histogram.begin(), histogram.end()) -
                                histogram.begin());
}

/// 255 for what differs from the background, 0 elsewhere and on the border of one pixel.
cv::Mat Foreground(const cv::Mat& frame, int32_t threshold, bool reverse) {
    cv::Mat picture = Coverage(frame);
    const cv::Rect content = cv::boundingRect(picture);
    const int32_t peak = content.empty() ? 0 : Peak(picture(content));
    if (!content.empty()) {
        const cv::Mat inside = picture(content).clone();
        cv::copyMakeBorder(inside, picture, content.y, frame.rows - content.y - content.height,
                           content.x, frame.cols - content.x - content.width, cv::BORDER_CONSTANT,
                           cv::Scalar(peak));
    }
    const int32_t level = reverse ? 255 - peak : peak;
    if (level >= 128) {
        cv::threshold(picture, picture, level - threshold, 255, cv::THRESH_BINARY_INV);
    } else {
        cv::threshold(picture, picture, level * threshold / 255.0 + level, 255, cv::THRESH_BINARY);
    }
    cv::Mat mask = cv::Mat::zeros(frame.size(), CV_8UC1);
    if (frame.cols > 2 && frame.rows > 2) {
        const cv::Rect inner(1, 1, frame.cols - 2, frame.rows - 2);
        picture(inner).copyTo(mask(inner));
    }
    return mask;
}

/// (0, 0) where there is no direction.
cv::Point2d Unit(const cv::Point2d& v) {
    const double length = cv::norm(v);
    return length > 0 ? v / length : cv::Point2d();
}

double AngleBetween(const cv::Point2d& a, const cv::Point2d& b) {
    return std::acos(std::clamp(a.dot(b), -1.0, 1.0)) * 180 / CV_PI;
}

/// Turns a traced outline into segments and marks the curves that are not worth cutting.
class CurveReader {
public:
    CurveReader(const Curve& traced, const NormalisedSpace& toSpace)
        : curve(traced), space(toSpace) {}

    std::vector<PathInfo> Read() {
        current = End(curve.n - 1);
        direction = Unit(current - End(curve.n - 2));
        for (int32_t i = 0; i < curve.n; ++i) {
            const cv::Point2d& end = curve.End(i);
            if (curve.tag[i] == kCornerSegment) {
                AddLine(curve.c[3 * static_cast<size_t>(i) + 1]);
                AddLine(end);
            } else {
                AddCurve(i);
            }
        }
        return std::move(segments);
    }

private:
    const cv::Point2d& End(int32_t i) const { return curve.End((i + 2 * curve.n) % curve.n); }

    void AddLine(const cv::Point2d& to) {
        segments.push_back(PathInfo::Line(space(current), space(to)));
        direction = Unit(to - current);
        current = to;
    }

    void AddCurve(int32_t i) {
        const size_t at = 3 * static_cast<size_t>(i);
        const cv::Point2d& end = curve.c[at + 2];
        segments.push_back(PathInfo::Cubic(space(current), space(curve.c[at]),
                                           space(curve.c[at + 1]), space(end)));
        segments.back().subdivide = IsWorthCutting(i, segments.back());
        direction = Unit(end - current);
        current = end;
    }

    bool IsWorthCutting(int32_t i, const PathInfo& path) const {
        const cv::Point2d& end = End(i);
        const cv::Point2d& before = End(i - 2);
        const cv::Point2d& after = End(i + 1);
        const cv::Point2d chord = end - current;
        bool result = true;
        // At a sharp turn with a handle that is hardly there, only a turn to the outside counts.
        if (AngleBetween(direction, Unit(chord)) > 90 &&
            cv::norm(path.control1 - path.start) < kShortHandle) {
            result = chord.x * (current.y - before.y) - chord.y * (current.x - before.x) >= 0;
        }
        if (AngleBetween(Unit(chord), Unit(after - end)) > 90 &&
            cv::norm(path.control2 - path.end) < kShortHandle &&
            chord.y * (after.x - end.x) - chord.x * (after.y - end.y) < 0) {
            result = false;
        }
        // Handles in one direction: as good as a line.
        const cv::Point2d a = Unit(cv::Point2d(path.end) - cv::Point2d(path.control1));
        const cv::Point2d b = Unit(cv::Point2d(path.control2) - cv::Point2d(path.start));
        return result && std::abs(a.dot(b)) <= 0.99;
    }

    const Curve& curve;
    const NormalisedSpace& space;
    std::vector<PathInfo> segments;
    cv::Point2d current;
    cv::Point2d direction;  ///< unit vector along the last segment
};

}  // namespace

bool Contours::ParseMask(const cv::Mat& frame, int32_t width, int32_t height, float /*segment*/,
                         int32_t threshold, bool reverse, bool force) {
    if (frame.empty() || frame.type() != CV_8UC4 || width <= 0 || height <= 0) {
        LogError("Contours: cannot make a mask of a picture of %d x %d pixels, type %d", frame.cols,
                 frame.rows, frame.type());
        return false;
    }
    cv::Mat mask = Foreground(frame, std::clamp(threshold, 0, 255), reverse);
    cv::Mat work = mask.clone();
    const cv::Rect bound = cv::boundingRect(mask);
    if (!force && bound == m_Bound) {
        return false;
    }
    m_Bound = bound;
    m_Paths.clear();

    // The tracer's ink is value 0: the background. Its first path is the border of the picture, the
    // others are the shapes.
    Bitmap bitmap(mask);
    Bitmap workBitmap(work);
    BitmapTrace trace;
    trace.Trace(&bitmap, &workBitmap);
    const auto& paths = trace.GetPathList();
    if (paths.size() <= 1) {
        return true;
    }
    const NormalisedSpace space(width, height);
    const cv::Point2f topLeft = space(bound.tl());
    const cv::Point2f bottomRight = space(bound.br());
    ContourPath& group = m_Paths.emplace_back();
    group.minX = topLeft.x;
    group.maxX = bottomRight.x;
    group.maxY = topLeft.y;
    group.minY = bottomRight.y;
    for (size_t i = 1; i < paths.size(); ++i) {
        group.subPaths.push_back(CurveReader(*paths[i]->curve, space).Read());
    }
    return true;
}

}  // namespace kelmo
