// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

namespace kelmo {

/// A cloud of cards over those parts of a picture that are not black, as vertex data: six vertices
/// (two triangles) a card.
///
/// Card 0 is the backdrop: its corners at z = -10. Each other card has one place for all of its
/// vertices, x and y of the picture in -1..1 (y down), z in -1..1, and a number of its own in
/// 0..1; a direction in -1..1; and the corner of the vertex in -1..1. Chance is drawn from the
/// card's number: the same picture gives the same cloud.
class PhotoCards {
public:
    /// Larger grids are made smaller, keeping their shape.
    static constexpr int32_t kMostCards = 40000;

    /// The grid that `count` cards on the longer side give in a frame; 0 x 0 for none.
    static cv::Size GridFor(int32_t count, int32_t frameWidth, int32_t frameHeight);

    /// Builds grid.area() + 1 cards over a picture of 4 channels of 8 bits (an empty one counts as
    /// black), on all of OpenCV's threads.
    void Build(const cv::Size& grid, const cv::Mat& picture);

    int32_t VertexCount() const { return static_cast<int32_t>(positions.size() / 4); }
    const float* Positions() const { return positions.data(); }    ///< 4 floats a vertex
    const float* Directions() const { return directions.data(); }  ///< 2 floats a vertex
    const float* Corners() const { return corners.data(); }        ///< 2 floats a vertex

private:
    void PutCard(std::size_t card, const cv::Mat& picture);

    std::vector<float> positions;
    std::vector<float> directions;
    std::vector<float> corners;
};

}  // namespace kelmo
