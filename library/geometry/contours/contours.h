// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <opencv2/core.hpp>
#include <vector>

#include "contract/text_path.h"
#include "geometry/contours/contour_path.h"
#include "geometry/offset/edge_core_info.h"
#include "geometry/offset/edge_extend_info.h"
#include "geometry/triangulation/triangle2f.h"

namespace kelmo {

class NormalisedSpace;

/// Outlines of what is to be extruded: read from the host's text or traced from a picture, cut
/// into polylines, and the faces that `ContourFace` builds from them.
///
/// Spaces: pixel space has its origin at the top left of the frame and y down; normalised frame
/// space has y up, spans -1..1 in y over the frame and -W/H..W/H in x. Everything that is stored
/// is normalised unless its line says pixels.
///
/// A group is one piece that moves on its own: a path of the host's text, or the whole of a mask.
/// `m_Paths` and `m_Bound` live on between rebuilds; `ClearDerived` gives everything below
/// `m_Points` back. One thread at a time; all members are owned by value.
class Contours {
public:
    static constexpr size_t kMostStepsOfFace = 1 << 14;

    Contours() = default;
    virtual ~Contours() = default;
    Contours(const Contours&) = delete;
    Contours& operator=(const Contours&) = delete;

    /// Reads the host's text for a frame of `width` x `height` pixels. A null `textPath` or a frame
    /// without area changes nothing.
    ///
    /// What a host should not send: a point of unknown type is passed over; a segment before the
    /// first move begins a sub-contour at its first point; a curve that lacks points at the end of
    /// the arrays is dropped; a sub-contour with a point that is not finite, or a million half
    /// frame heights or more from the middle of the frame, is dropped. A box with such a corner
    /// counts as none, and a rect with one has no area. An angle that is not finite counts as 0, an
    /// anchor as the middle, an origin as 0. Of more than 4096 rects the first ones count.
    void ParseTextPath(TextPath* textPath, int32_t width, int32_t height);

    /// Makes a mask of a four-channel 8-bit picture and traces it. `width` and `height` are the
    /// frame's size in pixels and map the outline; `segment` is not used by this step and stands
    /// here for the caller's symmetry. `threshold` 0..255, what lies beyond counts as the nearest;
    /// `reverse` turns the background level; `force` traces even when the mask's box is that of the
    /// last call.
    ///
    /// True when `m_Paths` was rebuilt, also when nothing was found. A frame that is empty or of
    /// another pixel format is logged, and false is returned.
    bool ParseMask(const cv::Mat& frame, int32_t width, int32_t height, float segment,
                   int32_t threshold, bool reverse, bool force);

    /// Cuts the segments of `m_Paths` into steps. `segment` is the step length relative to the size
    /// of a group; lines are cut only with `subdivideLines`. Steps are longer where a group would
    /// get more than `kMostStepsOfFace` of them beyond the first of each segment, or all groups
    /// half a million: finer ones show nothing more, and a face of so many points takes about a
    /// second.
    void FlattenPaths(float segment, bool subdivideLines);

    /// Gives back what flattening and triangulation have built.
    void ClearDerived();

    bool m_IsText = false;  ///< set by the effect after the flattening of host text
    bool m_HasDecoration = false;
    bool m_BoxValid = false;
    std::array<cv::Point2f, 4> m_BoxCorners{};
    std::vector<float> m_Rects;  ///< `m_RectCount` records of 8 floats: 4 corners
    cv::Point2f m_TextOrigin;
    cv::Point2f m_TextCenter;
    int32_t m_RectCount = 0;
    uint32_t m_RectColor = 0;  ///< as packed by the host
    uint32_t m_BoxColor = 0;
    cv::Rect m_Bound;  ///< pixels; the cache key of the traced road
    std::vector<ContourPath> m_Paths;

    /// Polylines: group, sub-contour, point. Point k is the end of step k.
    std::vector<std::vector<std::vector<cv::Point2f>>> m_Points;
    /// Same nesting: step k stands as start and end at places 2k and 2k + 1.
    std::vector<std::vector<std::vector<cv::Point2f>>> m_Edges;
    /// Same nesting, one entry per point of `m_Points`.
    std::vector<std::vector<std::vector<EdgeCoreInfo>>> m_EdgeCores;
    std::vector<float> m_PathLengths;  ///< polyline length of each group
    /// Group, sub-contour, two records per step: that of its start and that of its end.
    std::vector<std::vector<std::vector<EdgeExtendInfo>>> m_EdgeExtends;
    std::vector<std::vector<Triangle2f>> m_Triangles;  ///< one list per group
    std::vector<cv::RotatedRect> m_GroupRects;         ///< smallest rotated rectangle of each group
    cv::RotatedRect m_AllRect;                         ///< the same over all groups
    /// Over all groups, the longer side of the upright box around the group's rectangle.
    float m_MinGroupSize = std::numeric_limits<float>::max();
    float m_MaxGroupSize = std::numeric_limits<float>::lowest();
    float m_SpareAngle = 0;  ///< degrees; always 0
    float m_TextAngle = 0;   ///< degrees, counter-clockwise; 0 for masks

private:
    void ReadDecoration(TextPath& textPath, const cv::Point2d& offset,
                        const NormalisedSpace& space);
};

}  // namespace kelmo
