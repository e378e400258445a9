// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

namespace kelmo {

/// A picture as coloured particles at some of its pixels, as vertex data: six vertices (two
/// triangles) each. They are chosen once, in cells of 10 x 10 pixels of the working size, and
/// repeat from run to run; places and colours follow the picture.
class PictureParticles {
public:
    /// Takes a picture of 4 channels of 8 bits (any other counts as black) that fills a frame of
    /// the given size. `amount` is the number of draws in each cell; several may hit one pixel.
    /// Dark pixels (grey 3 and less) have no particle. A picture whose grey has the same mean or
    /// the same deviation as before is not looked at again, unless amount or size changed. Returns
    /// whether the particles are new.
    bool Follow(const cv::Mat& picture, int32_t amount, int32_t frameWidth, int32_t frameHeight);

    int32_t VertexCount() const { return static_cast<int32_t>(positions.size() / 2); }
    /// 2 floats a vertex: the particle's place, -1..1, y down.
    const float* Positions() const { return positions.data(); }
    /// 2 floats a vertex, -1..1.
    const float* Corners() const { return corners.data(); }
    /// 4 floats a vertex: straight blue, green, red in 0..1, and 1.
    const float* Colors() const { return colors.data(); }

private:
    void ChooseSamples(const cv::Size& size);
    void Build();
    void Put(const cv::Vec2f& place, const cv::Vec4b& pixel);

    cv::Mat small;  ///< the picture at the working size
    cv::Mat gray;
    cv::Mat bright;      ///< 255 where a particle may be
    cv::Mat sampleMask;  ///< 255 at the chosen pixels
    int32_t lastAmount = -1;
    double lastMean = 0.0, lastStdDev = 0.0;
    int32_t lastWidth = 0, lastHeight = 0;
    std::vector<float> positions;
    std::vector<float> corners;
    std::vector<float> colors;
};

}  // namespace kelmo
