// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// Old looks: picture sequences of the description step at 5 to 25 pictures a second; one of the
/// GUIDs blurs the clip first.
///
/// Parameters: "strength" 0..100 (int; of the blur, too), "speed" 0..100 (int; 25 pictures a second
/// when absent); all go to the shader.
class NLEOpenGLRetroEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLRetroEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    FrameRecord Blurred(const FrameRecord& second, const FrameRecord& first, int32_t frameWidth,
                        int32_t frameHeight, int32_t frameStride);
    /// Pictures a second.
    float PictureRate();

    SubFilters subFilters{this};
    NLEOpenGLFilter* blurFilter;
};

}  // namespace kelmo
