// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/transition/transform_3d.h"

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGL3DTransform", MakeEffect<NLEOpenGL3DTransform>,
                                        {"087D905B-2CF2-4928-9184-76BC535D26BC"});

}  // namespace

NLEOpenGL3DTransform::NLEOpenGL3DTransform(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGL3DTransform::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                       FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                       int32_t frameStride) {
    if (!engine) return kFilterFailed;
    UploadParams();
    int32_t slot = 0;
    if (inputOverride.InForce()) {
        engine->SetInputTexture(slot++, inputOverride.Record(frameWidth, frameHeight, frameStride),
                                frameWidth, frameHeight, frameStride);
    } else {
        SetInputFrame(slot, first);
    }
    SetInputFrame(slot, second);
    return RenderTo(out);
}

}  // namespace kelmo
