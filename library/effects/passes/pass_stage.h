// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/filter_pass.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// One pass of a filter of passes: an engine object of its own size with the parameters of its
/// owner. The owner binds what it reads and draws it with `Draw`.
class PassStage : public NLEOpenGLFilter {
public:
    /// `owner` and `kept`: the filter's description, and whether somebody reads the picture of the
    /// frame before.
    PassStage(const NLEFilterInfo& owner, std::size_t index, bool kept);

    int32_t InitParams() override;

    /// The owner's own parameters instead of copies: what the host sets arrives without a word.
    void ShareParams(const FilterParamList& owners);
    /// Brings the pass to its part of a frame of that size.
    int32_t ResizeForFrame(int32_t frameWidth, int32_t frameHeight);
    /// True when a parameter that the pass needs is 0.
    bool Skipped() const;
    /// Draws into the pass's own picture; the inputs are bound. `hasPast` and `elapsed` (seconds
    /// since the picture before) are uniforms.
    int32_t Draw(const FrameTime& time, bool hasPast, float elapsed);
    /// Puts the picture of this frame where `Before` finds it in the next one.
    void Keep() { engine->SetRenderTarget(0); }
    FrameRecord Before() const { return GetTargetFrame(0); }

private:
    const FilterPass pass;
    const bool kept;
    FilterParamList needed;
};

}  // namespace kelmo
