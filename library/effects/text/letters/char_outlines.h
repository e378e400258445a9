// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

#include "contract/text_path.h"

namespace kelmo {

/// One step of a flattened outline.
struct CharEdge {
    cv::Point2f start;
    cv::Point2f end;
};

/// How the outlines of a text are read.
struct CharReading {
    enum class Space : uint8_t {
        kFrame,   ///< parts of the frame, y up
        kDevice,  ///< -1..1, y up
    };
    Space space = Space::kFrame;
    /// The outlines before the host's placement.
    bool layout = false;
    /// Length of a step, relative to the size of the character.
    float tolerance = 0.01F;
    /// Characters that lie wholly beyond these are left out, on either side.
    float farthestX = 1.2F;
    float farthestY = 1.2F;
};

/// The characters of a host's text as polygons; one entry for each character that is kept, in the
/// order of the text. Knows no engine. Foreign numbers: a character with a point that is no number
/// is left out, a path ends at a curve that its points cut short.
class CharOutlines {
public:
    static constexpr int32_t kMostChars = 4096;
    /// Of one curve.
    static constexpr int32_t kMostSteps = 1024;
    /// Points that are searched for a triangle of the placement.
    static constexpr std::size_t kMostPlacementPoints = 256;

    using Polylines = std::vector<std::vector<cv::Point2f>>;
    using Edges = std::vector<std::vector<CharEdge>>;

    void ReadCharOutlines(TextPath& text, const cv::Size& frame, const CharReading& reading);

    std::size_t Count() const { return charPolylines.size(); }
    /// End point of each step, by closed outline.
    const std::vector<Polylines>& CharPolylines() const { return charPolylines; }
    const std::vector<Edges>& CharEdges() const { return charEdges; }
    /// Sum of the steps.
    const std::vector<float>& CharLengths() const { return charLengths; }
    /// Of the kept characters, as pixels of a frame whose points are in device space; with parts of
    /// the frame a mark that tells one text from another.
    const cv::Rect& Bound() const { return bound; }
    /// From pixels of the layout to those of the frame; read with `layout`.
    const cv::Matx23d& Placement() const { return placement; }

private:
    struct Path {
        const uint8_t* types = nullptr;
        const float* xs = nullptr;
        const float* ys = nullptr;
        int32_t count = 0;
    };
    Path PathOf(TextPath& text, int32_t index, bool layout) const;
    cv::Point2f Place(float x, float y) const;
    void FlattenCharPath(const Path& path, float tolerance);
    void Step(const cv::Point2f& from, const cv::Point2f& to);
    void FindPlacement(TextPath& text, int32_t index, const Path& layout);

    std::vector<Polylines> charPolylines;
    std::vector<Edges> charEdges;
    std::vector<float> charLengths;
    cv::Rect bound;
    cv::Matx23d placement;
    cv::Size size;
    cv::Point2f offset;
    CharReading::Space space = CharReading::Space::kFrame;
};

}  // namespace kelmo
