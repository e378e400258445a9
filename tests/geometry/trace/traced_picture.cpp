// SPDX-License-Identifier: GPL-3.0-or-later
#include "traced_picture.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <opencv2/imgproc.hpp>
#include <thread>

namespace kelmo::test {

namespace {

constexpr int kSteps = 16;

cv::Point2d BezierPoint(const cv::Point2d& a, const cv::Point2d& b, const cv::Point2d& c,
                        const cv::Point2d& d, double t) {
    const double s = 1 - t;
    return s * s * s * a + 3 * s * s * t * b + 3 * s * t * t * c + t * t * t * d;
}

/// Where the polygons cross the middle of a pixel row, in rising order.
std::vector<double> Crossings(const Polygons& polygons, double y) {
    std::vector<double> crossings;
    for (const auto& polygon : polygons) {
        for (size_t i = 0; i < polygon.size(); ++i) {
            const cv::Point2d& a = polygon[i];
            const cv::Point2d& b = polygon[(i + 1) % polygon.size()];
            if ((a.y <= y) != (b.y <= y)) {
                crossings.push_back(a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x));
            }
        }
    }
    std::sort(crossings.begin(), crossings.end());
    return crossings;
}

}  // namespace

const std::vector<std::unique_ptr<Path>>& Tracer::Run() {
#ifdef __SANITIZE_THREAD__
    // The end of OpenCV's loop is not seen as such, and every result would look like a race.
    cv::setNumThreads(1);
#endif
    Trace(&sourceBitmap, &copyBitmap);
    return GetPathList();
}

const std::vector<std::unique_ptr<Path>>& Tracer::RunOnTwoThreads() {
    bitmap = &sourceBitmap;
    workBitmap = &copyBitmap;
    FindPaths();
    const int count = static_cast<int>(pathList.size());
    std::vector<int32_t> order(pathList.size());
    std::iota(order.begin(), order.end(), 0);
    const parallelBitmapTraceInvoker invoker(this, &order);
    std::thread other([&] { invoker(cv::Range(0, count / 2)); });
    invoker(cv::Range(count / 2, count));
    other.join();
    return pathList;
}

cv::Mat Drawing(const std::vector<std::string>& rows) {
    cv::Mat picture(static_cast<int>(rows.size()), static_cast<int>(rows.at(0).size()), CV_8UC1);
    for (int y = 0; y < picture.rows; ++y) {
        for (int x = 0; x < picture.cols; ++x) {
            picture.at<uint8_t>(y, x) = rows[y].at(x) == '#' ? 0 : 255;
        }
    }
    return picture;
}

cv::Mat Letters(const std::string& text, int height) {
    const double scale = height / 21.0;  // the capitals of the stroke font are 21 units high
    const int thickness = height / 5;
    int baseline = 0;
    const cv::Size size =
        cv::getTextSize(text, cv::FONT_HERSHEY_SIMPLEX, scale, thickness, &baseline);
    cv::Mat picture(size.height + baseline + 2 * thickness, size.width + 2 * thickness, CV_8UC1,
                    cv::Scalar(255));
    cv::putText(picture, text, cv::Point(thickness, size.height + thickness),
                cv::FONT_HERSHEY_SIMPLEX, scale, cv::Scalar(0), thickness);
    return picture;
}

Polygons Outlines(const std::vector<std::unique_ptr<Path>>& paths) {
    Polygons polygons;
    for (const auto& path : paths) {
        const Curve& curve = *path->curve;
        std::vector<cv::Point2d>& polygon = polygons.emplace_back();
        cv::Point2d start = curve.End(curve.n - 1);
        for (int i = 0; i < curve.n; ++i) {
            const cv::Point2d* c = &curve.c[3 * static_cast<size_t>(i)];
            if (curve.tag[i] == kCornerSegment) {
                polygon.push_back(c[1]);
                polygon.push_back(c[2]);
            } else {
                for (int k = 1; k <= kSteps; ++k) {
                    polygon.push_back(BezierPoint(start, c[0], c[1], c[2], double(k) / kSteps));
                }
            }
            start = c[2];
        }
    }
    return polygons;
}

Polygons Walks(const std::vector<std::unique_ptr<Path>>& paths) {
    Polygons polygons;
    for (const auto& path : paths) {
        polygons.push_back(path->pt);
    }
    return polygons;
}

cv::Mat Fill(const Polygons& polygons, cv::Size size) {
    cv::Mat picture(size, CV_8UC1, cv::Scalar(255));
    for (int y = 0; y < size.height; ++y) {
        const std::vector<double> crossings = Crossings(polygons, y + 0.5);
        for (size_t i = 0; i + 1 < crossings.size(); i += 2) {
            const int from = std::max(0, static_cast<int>(std::ceil(crossings[i] - 0.5)));
            const int to =
                std::min(size.width, static_cast<int>(std::ceil(crossings[i + 1] - 0.5)));
            for (int x = from; x < to; ++x) {
                picture.at<uint8_t>(y, x) = 0;
            }
        }
    }
    return picture;
}

double InkOverlap(const cv::Mat& a, const cv::Mat& b) {
    const int both = cv::countNonZero((a == 0) & (b == 0));
    const int any = cv::countNonZero((a == 0) | (b == 0));
    return any == 0 ? 1 : double(both) / any;
}

}  // namespace kelmo::test
