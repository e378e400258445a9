// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

#include "bindings/ai_filter_handle.h"
#include "effects/beam/edge_flow/beam_edge_flow_effect.h"
#include "effects/beam/lines/contour_to_lines.h"
#include "framework/shared/working_size.h"

namespace kelmo {

/// Base of the effects whose light follows parts of people: a derived class makes the lines, a look
/// of the edge flow draws them over the clip.
///
/// Every parameter goes to the look and its line renderer by its name; "uEclosion" widens the box
/// outside of which the look draws nothing. Without lines nothing shines. Shader of its own: none
/// is drawn.
class TrackedLight : public NLEOpenGLCombineFilter {
public:
    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

protected:
    /// A null `lookGuid` is the look of tracked lights.
    TrackedLight(std::shared_ptr<NLEFilterInfo> filterInfo, const char* lookGuid,
                 const char* aiGuid);

    /// Puts the lines of the frame into the renderer with `AddRing` and `AddRay`. `frame` carries
    /// width, height and stride of the effect for the AI library, `input` the clip.
    virtual void MakeLines(const AIImage& frame, const AIImage& input) = 0;

    /// A closed smooth line through points in pixels of `size`; fewer than 3 give nothing.
    void AddRing(const std::vector<cv::Point>& points);
    /// A straight line, in pixels.
    void AddRay(const cv::Point2f& from, const cv::Point2f& to);

    AIFilterHandle tracker;
    /// The picture in whose pixels lines are told.
    cv::Size size;

private:
    void SendBound();

    SubFilters looks{this};
    NLEOpenGLBeamEdgeFlowEffect* look;
    ContourToLines converter;
    cv::Rect box;
    int32_t count = 0;
    int32_t boundMargin = 0;
};

}  // namespace kelmo
