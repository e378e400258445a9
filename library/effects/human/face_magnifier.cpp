// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human/face_magnifier.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLFaceMagnifier", MakeEffect<NLEOpenGLFaceMagnifier>,
                   {"3089700B-E68F-45DA-ACBE-C254739B8B17"});

/// Place of the hold flag in the description's parameters.
constexpr std::size_t kHoldIndex = 4;

}  // namespace

NLEOpenGLFaceMagnifier::NLEOpenGLFaceMagnifier(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLFaceMagnifier::InitParams() {
    engine->AddUniformFloat("centerX", centerX);
    engine->AddUniformFloat("centerY", centerY);
    engine->AddUniformFloat("radius", radius);
    return kFilterOk;
}

void NLEOpenGLFaceMagnifier::FindFace(const FrameRecord& first, int32_t frameWidth,
                                      int32_t frameHeight, int32_t frameStride) {
    if (!aiHandle) return;
    cv::Mat picture;
    GetMat(picture, first);
    const auto found = aiHandle.Analyse<AIDATA::HumanFaceInfoMultiDatas>(
        {nullptr, frameWidth, frameHeight, frameStride},
        {picture.data, picture.cols, picture.rows, static_cast<int32_t>(picture.step)});
    if (!found) return;
    const auto columns = static_cast<float>(frameWidth);
    const auto rows = static_cast<float>(frameHeight);
    float bestArea = 0.0F;
    for (const AIDATA::HumanFaceInfo& face : found->faces) {
        const float left = face.rect[0] * columns;
        const float top = face.rect[1] * rows;
        const float right = face.rect[2] * columns;
        const float bottom = face.rect[3] * rows;
        const float across = std::abs(left - right);
        const float down = std::abs(top - bottom);
        const float area = across * down;
        if (!(area > bestArea) || !std::isfinite(area)) continue;
        bestArea = area;
        centerX = (left + right) * 0.5F;
        centerY = (top + bottom) * 0.5F;
        radius = std::max(across / columns, down / rows);
    }
}

void NLEOpenGLFaceMagnifier::HoldOrFollow() {
    const bool hold = params.size() > kHoldIndex && CurrentInt(*params[kHoldIndex]) != 0;
    if (hold) {
        centerX = heldCenterX;
        centerY = heldCenterY;
        radius = heldRadius;
    } else {
        heldCenterX = centerX;
        heldCenterY = centerY;
        heldRadius = radius;
    }
}

int32_t NLEOpenGLFaceMagnifier::DoEffect(const FrameRecord&, const FrameRecord& first,
                                         FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                         int32_t frameStride) {
    if (!engine) return kFilterFailed;
    UploadParams();
    FindFace(first, frameWidth, frameHeight, frameStride);
    HoldOrFollow();
    int32_t slot = 0;
    SetInputFrame(slot, first);
    UploadTime(*engine, Time());
    engine->SetUniformFloat("centerX", centerX);
    engine->SetUniformFloat("centerY", centerY);
    engine->SetUniformFloat("radius", radius);
    engine->SetBlendMode(kBlendOver);
    return RenderTo(out);
}

}  // namespace kelmo
