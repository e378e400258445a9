// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/material_binding.h"

namespace kelmo {

struct TexDesc {
    int32_t word0 = 0;
    int32_t word1 = 0;
};

std::size_t MaterialSlots(const TextureFrames*) {
    return 0;
}

cv::Mat FirstMaterialFrame(const TextureFrames&, std::size_t) {
    return {};
}

void BindMaterialAtTime(NLEOpenGLEngineEffect&, int32_t&, const TextureFrames&,
                        const std::vector<TexDesc>&, const FrameTime&) {}

}  // namespace kelmo
