// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core/types.hpp>
#include <vector>

namespace kelmo {

/// Tells on which side of a closed contour a point lies, with the very answers of
/// `cv::pointPolygonTest` without distance, but looking only at the edges at the point's height:
/// they are sorted into horizontal slabs once. Finite coordinates only. Keeps a copy of the edges;
/// `Side` may be called from several threads.
class ContourProbe {
public:
    explicit ContourProbe(const std::vector<cv::Point2f>& contour);

    /// 1 inside, 0 on the contour, -1 outside.
    int Side(const cv::Point2f& point) const;

    /// Beyond this box every point is outside. Empty for no contour.
    cv::Rect2f Box() const { return {cv::Point2f(minX, minY), cv::Point2f(maxX, maxY)}; }

private:
    struct EdgeEnds {
        cv::Point2f start;
        cv::Point2f end;
    };

    int SlabOf(float y) const;

    float minY = 0;
    float maxY = -1;
    float minX = 0;  // a little further out than the points
    float maxX = 0;
    float slabsPerUnit = 0;
    int slabCount = 1;
    std::vector<uint32_t> firstOfSlab;  // slabCount + 1 places in `edges`
    std::vector<EdgeEnds> edges;        // slab by slab
};

}  // namespace kelmo
