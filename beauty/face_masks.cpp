// SPDX-License-Identifier: GPL-3.0-or-later
#include "beauty/face_masks.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace kelmo::beauty {
namespace {

using Point = cv::Point2f;
using Outline = std::vector<cv::Point>;

enum Plane { kSkin, kEyes, kMouth, kBelowEyes, kFolds, kPlanes };

/// Bits of a pixel that outlines are drawn with.
constexpr int kShift = 4;

class FaceDrawing {
public:
    FaceDrawing(const FaceSdkFace& face, float scale) : face(face), scale(scale) {
        const Point left = At(104);
        const Point right = At(105);
        eyes = (left + right) * 0.5F;
        const Point span = right - left;
        const float length = std::max(std::hypot(span.x, span.y), 0.001F);
        down = Point(-span.y, span.x) / length;
        width = std::hypot(At(32).x - At(0).x, At(32).y - At(0).y);
        height = std::abs((At(16) - eyes).dot(down));
    }

    Point At(int index) const {
        return Point(face.landmarks[index].x, face.landmarks[index].y) * scale;
    }
    void Fill(cv::Mat& plane, const std::vector<Point>& outline, int level) const {
        Outline fixed;
        for (const Point& point : outline) {
            // A landmark far outside of the frame must not overflow the drawing.
            const auto fix = [](float value) {
                return cvRound(std::clamp(value, -4000.0F, 4000.0F) * (1 << kShift));
            };
            fixed.emplace_back(fix(point.x), fix(point.y));
        }
        cv::fillPoly(plane, std::vector<Outline>{fixed}, cv::Scalar(level), cv::LINE_AA, kShift);
    }
    std::vector<Point> Ring(std::initializer_list<int> indices) const {
        std::vector<Point> outline;
        for (const int index : indices) outline.push_back(At(index));
        return outline;
    }
    std::vector<Point> Range(int first, int last) const {
        std::vector<Point> outline;
        for (int i = first; i <= last; ++i) outline.push_back(At(i));
        return outline;
    }
    /// The same grown about its middle.
    static std::vector<Point> Grown(std::vector<Point> outline, float factor) {
        Point middle;
        for (const Point& point : outline) middle += point;
        middle /= static_cast<float>(outline.size());
        for (Point& point : outline) point = middle + (point - middle) * factor;
        return outline;
    }

    const FaceSdkFace& face;
    float scale;
    Point eyes;
    Point down;
    float width;
    float height;
};

}  // namespace

void FaceMasks::Draw(const FaceSdkFace& face, float scale) {
    const FaceDrawing drawing(face, scale);
    std::vector<Point> skin = drawing.Range(0, 32);
    for (int i = 42; i >= 33; --i) {
        const float middle = 1.0F - std::abs(static_cast<float>(i) - 37.5F) / 4.5F;
        skin.push_back(drawing.At(i) - drawing.down * ((0.22F + 0.16F * middle) * drawing.height));
    }
    drawing.Fill(planes[kSkin], skin, 255);
    const auto left = drawing.Ring({52, 57, 73, 56, 55, 54, 72, 53});
    const auto right = drawing.Ring({58, 63, 76, 62, 61, 60, 75, 59});
    for (const auto& eye : {left, right}) {
        drawing.Fill(planes[kEyes], eye, 255);
        drawing.Fill(planes[kSkin], FaceDrawing::Grown(eye, 1.35F), 0);
        // The hollow below the eye: the eye itself, one lid further down.
        std::vector<Point> below = FaceDrawing::Grown(eye, 1.25F);
        for (Point& point : below) point += drawing.down * (0.11F * drawing.height);
        drawing.Fill(planes[kBelowEyes], below, 255);
    }
    drawing.Fill(planes[kSkin], drawing.Ring({33, 34, 35, 36, 37, 67, 66, 65, 64}), 0);
    drawing.Fill(planes[kSkin], drawing.Ring({38, 39, 40, 41, 42, 71, 70, 69, 68}), 0);
    drawing.Fill(planes[kSkin], FaceDrawing::Grown(drawing.Range(84, 95), 1.06F), 0);
    drawing.Fill(planes[kMouth], drawing.Range(96, 103), 255);
    for (const auto& [nose, corner] : {std::pair(82, 84), std::pair(83, 90)}) {
        const Point from = drawing.At(nose);
        const Point to = drawing.At(corner) * 1.15F - from * 0.15F;
        const Point across = Point(drawing.down.y, -drawing.down.x) * (0.035F * drawing.width);
        const Point out = nose == 82 ? -across : across;
        drawing.Fill(planes[kFolds], {from - out, to - out, to + out * 1.8F, from + out * 1.8F},
                     255);
    }
}

void FaceMasks::Make(const FaceSdkResult& faces) {
    const int rows = std::min(std::max(faces.height, 1), kRows);
    const float scale = static_cast<float>(rows) / static_cast<float>(std::max(faces.height, 1));
    const int columns = std::clamp(cvRound(static_cast<float>(faces.width) * scale), 1, 8 * kRows);
    for (cv::Mat& plane : planes) {
        plane.create(rows, columns, CV_8UC1);
        plane.setTo(0);
    }
    faceWidth = 0.0F;
    for (int32_t i = 0; i < faces.faceCount; ++i) {
        Draw(faces.faces[i], scale);
        const FaceDrawing drawing(faces.faces[i], scale);
        faceWidth = std::max(faceWidth, drawing.width / static_cast<float>(rows));
    }
    const double width = std::max(static_cast<double>(faceWidth) * rows, 8.0);
    const double softness[kPlanes] = {0.02, 0.008, 0.008, 0.03, 0.025};
    for (int i = 0; i < kPlanes; ++i) {
        cv::GaussianBlur(planes[i], planes[i], {}, softness[i] * width);
    }
    cv::merge(planes, 4, parts);
    folds = planes[kFolds];
}

}  // namespace kelmo::beauty
