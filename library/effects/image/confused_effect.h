// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"
#include "framework/shared/kept_picture.h"

namespace kelmo {

/// A picture of a moment ago hangs over the clip; it is renewed about once in a while.
///
/// Parameters: the first one of the description, a float p, by position: the pace is p x 0.5 + 0.5
/// renewals a second. No parameter goes to the shader by name. Shader: "global_time", "speed" (the
/// pace), "frame_rate"; slots: the clip, the kept picture (the clip itself on a renewing frame).
class NLEOpenGLConfusedEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLConfusedEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    KeptPicture kept;
};

}  // namespace kelmo
