// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/passes/pass_stage.h"

#include <algorithm>
#include <cmath>

namespace kelmo {
namespace {

constexpr int32_t kBytesPerPixel = 4;

std::shared_ptr<NLEFilterInfo> InfoOfPass(const NLEFilterInfo& owner, const FilterPass& pass) {
    auto info = std::make_shared<NLEFilterInfo>();
    info->guid = owner.guid;
    info->name = owner.name + ", pass " + pass.name;
    info->dataPath = owner.dataPath;
    info->openglPath = pass.fragmentPath;
    info->hasOpengl = 1;
    info->fragmentExterns = owner.fragmentExterns;
    for (int32_t index = 0; index < owner.paramCount; ++index) {
        info->AddParam(info->paramCount++, owner.GetParam(index));
    }
    return info;
}

}  // namespace

PassStage::PassStage(const NLEFilterInfo& owner, std::size_t index, bool keepPicture)
    : NLEOpenGLFilter(InfoOfPass(owner, owner.passes[index])),
      pass(owner.passes[index]),
      kept(keepPicture) {}

int32_t PassStage::InitParams() {
    if (kept) engine->AddRenderTarget();
    // The base declares one input more.
    for (std::size_t i = 1; i < pass.reads.size(); ++i) {
        engine->AddInputTexture(width, height, stride, true);
    }
    engine->AddUniformInt("hasPast", 0);
    engine->AddUniformFloat("elapsed", 0.0F);
    return kFilterOk;
}

void PassStage::ShareParams(const FilterParamList& owners) {
    params = owners;
    needed.clear();
    for (const auto& param : params) {
        if (std::find(pass.needs.begin(), pass.needs.end(), param->name) != pass.needs.end()) {
            needed.push_back(param);
        }
    }
}

int32_t PassStage::ResizeForFrame(int32_t frameWidth, int32_t frameHeight) {
    const double scale =
        pass.height > 0 ? static_cast<double>(pass.height) / std::max(frameHeight, 1) : pass.scale;
    const auto part = [scale](int32_t size) {
        return std::clamp(static_cast<int32_t>(std::lround(size * scale)), 1, 2 * kMaxPassHeight);
    };
    const int32_t passWidth = part(frameWidth);
    return Resize(passWidth, part(frameHeight), passWidth * kBytesPerPixel);
}

bool PassStage::Skipped() const {
    return std::any_of(needed.begin(), needed.end(),
                       [](const auto& param) { return CurrentNumber(*param) == 0.0F; });
}

int32_t PassStage::Draw(const FrameTime& time, bool hasPast, float elapsed) {
    UploadTime(*engine, time);
    UploadParams();
    engine->SetUniformInt("hasPast", hasPast ? 1 : 0);
    engine->SetUniformFloat("elapsed", elapsed);
    return RenderPass();
}

}  // namespace kelmo
