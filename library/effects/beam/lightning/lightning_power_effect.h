// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

#include "bindings/ai_filter_handle.h"
#include "effects/beam/beam_eclosion_effect.h"
#include "effects/beam/lightning/bolt_swing.h"
#include "effects/beam/lightning/bright_ends.h"
#include "effects/beam/lightning/fractal_bolt.h"
#include "effects/beam/lightning/hand_points.h"
#include "effects/beam/lines/beam_effect.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// Branching bolts, from the hands of the first person or between the ends of a bright shape. The
/// GUID of the description chooses:
/// - RadialHands: a crown of ten bolts round each hand, which swings there and back;
/// - GroundedHands: one bolt from each hand to the ground;
/// - ForearmRays: one bolt along each forearm to the edge of the frame;
/// - AnchorArc: two bolts there and back between the ends of what is bright.
///
/// Hands come from the AI library; a frame without a person gives kFilterFailed and draws nothing,
/// as does a forearm that points past the frame, and a GUID that is none of the four. AnchorArc in
/// a frame without anything bright draws nothing, either, but succeeds.
///
/// Passes of the last three: "calLayer" 0 lays main bolts (slot 0) and branches (slot 1) together,
/// 1 shows the clip (slot 0), that layer (slot 1) and the layer feathered (slot 2); AnchorArc has
/// the mask of what is bright and its textures behind that. RadialHands draws once: clip, bolts,
/// bolts feathered. "center_x", "center_y" and the same with a 2 are the hands, or the ends, in
/// texture coordinates; "showLeftBall" and "showRightBall" tell which hands are there.
///
/// The picture depends on the frames drawn before (swing, wobble and seed stay), not on the
/// position alone.
class NLEOpenGLLightningPowerEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLLightningPowerEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    enum class Mode { kNone, kRadialHands, kGroundedHands, kForearmRays, kAnchorArc };
    static Mode ModeOf(const NLEFilterInfo* info);

    /// What a mode is given of the frame.
    struct Frame {
        const FrameRecord& second;
        const FrameRecord& first;
        FrameRecord& out;
        int32_t width, height, stride;
        WorkingSize beamSize;
        WorkingSize workingSize;
    };

    void Seed();
    void SendValues();
    void FlickerBalls();
    bool FindHands(const Frame& frame);
    void ShowHand(std::size_t hand);
    void Bolt(const cv::Point2f& start, const cv::Point2f& end, NLEOpenGLBeamEffect& branches);
    void Reach(const cv::Point2f& place, const WorkingSize& size);
    void SendBound(const WorkingSize& size);
    float FramesASecond() const;

    int32_t RadialHands(const Frame& frame);
    int32_t GroundedHands(const Frame& frame);
    int32_t ForearmRays(const Frame& frame);
    int32_t AnchorArc(const Frame& frame);

    void DrawBeam(int32_t& slot, NLEOpenGLBeamEffect& beam, const char* const (&names)[4],
                  const Frame& frame);
    void Feather(int32_t& slot, const FrameRecord& picture, const Frame& frame);
    int32_t DrawLayers(const Frame& frame);

    const Mode mode;
    SubFilters beams{this};
    SubFilters feathers{this};
    NLEOpenGLBeamEffect* mainBeam;
    NLEOpenGLBeamEffect* branchBeam;
    NLEOpenGLBeamEclosionEffect* eclosion;
    AIFilterHandle poseHandle{kAIPoseFilter};
    ColorUniform coreColor{"core_color"};
    ColorUniform glowColor{"glow_color"};
    ColorUniform ballColor{"ball_color"};
    HandPoints hands;
    /// Pixels of the working size that the bolts run between.
    std::vector<cv::Point> reach;
    BoltPath path;
    BrightEndFinder brightEnds;
    BoltWobble wobble;
    cv::Mat scaledInput;
    cv::Mat maskPicture;
    float displaceScale = 0.0F;
    /// Of the crown, in radians.
    float rotation = 0.0F;
    int32_t seed = 0;
};

}  // namespace kelmo
