// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human/human_map_effect.h"

#include <opencv2/imgproc.hpp>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLHumanMapEffect", MakeEffect<NLEOpenGLHumanMapEffect>,
                   {"HumanMap", "974364C8-7F9A-27CA-FD3E-D544D57C8BBD"});

constexpr double kCertain = 100.0;
/// Of a description without material.
const cv::Size kUsualSize(1920, 1080);

}  // namespace

NLEOpenGLHumanMapEffect::NLEOpenGLHumanMapEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
    asyncTextureLoad = 1;
}

int32_t NLEOpenGLHumanMapEffect::InitParams() {
    engine->AddUniformVec3("uCenter", 0.0F, 0.0F, 0.0F);
    engine->AddUniformVec4("uBound", 0.0F, 0.0F, 1.0F, 1.0F);
    // With the one that the base declares for the clip these are four: clip, mask and two textures,
    // clamped at the edge, for the material ends where it ends. The base would ask whether the
    // first texture has been loaded yet.
    for (int i = 0; i < 3; ++i) engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

cv::Size NLEOpenGLHumanMapEffect::MaterialSize() const {
    if (!textureFrames || textureFrames->SlotCount() == 0) return kUsualSize;
    const cv::Size size = WaitForFrame(*textureFrames, 0, 0).size();
    return size.empty() ? kUsualSize : size;
}

void NLEOpenGLHumanMapEffect::SendBound(float scale) {
    cv::threshold(maskMat, certain, kCertain, 250.0, cv::THRESH_BINARY);
    const cv::Rect person = cv::boundingRect(certain);
    if (person.empty()) {
        const auto& [left, top, right, bottom] = kBoundOfNobody;
        engine->SetUniformVec4("uBound", left, top, right, bottom);
        return;
    }
    const auto columns = static_cast<float>(certain.cols);
    const auto rows = static_cast<float>(certain.rows);
    const auto across = static_cast<float>(person.width);
    const auto down = static_cast<float>(person.height);
    const float centerX = (static_cast<float>(person.x) + across * 0.5F) / columns;
    const float centerY = (static_cast<float>(person.y) + down * 0.5F) / rows;
    // The person's box is stretched about its middle to the size of the material, which leaves
    // nothing of its own size.
    const cv::Size material = MaterialSize();
    const float halfWidth = scale * static_cast<float>(material.width) * 0.5F / columns;
    const float halfHeight = scale * static_cast<float>(material.height) * 0.5F / rows;
    engine->SetUniformVec4("uBound", centerX - halfWidth, centerY - halfHeight, centerX + halfWidth,
                           centerY + halfHeight);
}

int32_t NLEOpenGLHumanMapEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                          FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    UploadParams();
    const float scale = FloatOr("scale", 1.0F);
    const float centerX = FloatOr("center_x", 0.0F);
    const float centerY = FloatOr("center_y", 0.0F);
    FrameRecord mask;
    if (!GetHumanMask(mask, aiHandle.Get(), maskMat, first, false, false, nullptr, true, 1)) {
        return kFilterFailed;
    }
    SendBound(scale);
    engine->SetUniformVec3("uCenter", centerX, centerY, 0.0F);
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, mask);
    BindMaterialWaiting(*engine, slot, textureFrames.get(), Time().position);
    return RenderTo(out);
}

}  // namespace kelmo
