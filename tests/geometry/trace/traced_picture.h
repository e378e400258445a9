// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "geometry/trace/bitmap_trace.h"

namespace kelmo::test {

/// A tracer whose settings can be changed, over pictures of its own.
class Tracer : public BitmapTrace {
public:
    /// Traces a picture in which 0 is ink.
    explicit Tracer(const cv::Mat& picture) : source(picture.clone()), copy(picture.clone()) {}
    const std::vector<std::unique_ptr<Path>>& Run();
    /// The same, the paths being worked out in two halves on two threads of the test's own.
    const std::vector<std::unique_ptr<Path>>& RunOnTwoThreads();

    using BitmapTrace::alphaMax;
    using BitmapTrace::isReady;
    using BitmapTrace::optCurve;
    using BitmapTrace::turdSize;
    using BitmapTrace::turnPolicy;

private:
    cv::Mat source;
    cv::Mat copy;
    Bitmap sourceBitmap{source};
    Bitmap copyBitmap{copy};
};

/// '#' is ink (0), everything else empty (255).
cv::Mat Drawing(const std::vector<std::string>& rows);
/// White letters of a stroke font, 0 is ink: a letter is about `height` pixels high.
cv::Mat Letters(const std::string& text, int height);

/// A closed polygon, one for each path: curves cut into short lines, or the pixel-edge walk.
using Polygons = std::vector<std::vector<cv::Point2d>>;
Polygons Outlines(const std::vector<std::unique_ptr<Path>>& paths);
Polygons Walks(const std::vector<std::unique_ptr<Path>>& paths);

/// Fills polygons by the even-odd rule at pixel centres: inside is 0, outside 255.
cv::Mat Fill(const Polygons& polygons, cv::Size size);

/// Ink in both over ink in any; 1 when there is none.
double InkOverlap(const cv::Mat& a, const cv::Mat& b);

}  // namespace kelmo::test
