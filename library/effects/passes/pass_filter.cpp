// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/passes/pass_filter.h"

#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"
#include "platform/host_access.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLPassFilter", MakeEffect<NLEOpenGLPassFilter>, {"Passes"});

}  // namespace

NLEOpenGLPassFilter::NLEOpenGLPassFilter(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    slots.resize(info->passes.size() + 1);
    const auto markKept = [this](const std::vector<PassInput>& reads) {
        for (const PassInput& input : reads) {
            if (input.before) slots[input.pass].kept = true;
        }
    };
    for (const FilterPass& pass : info->passes) markKept(pass.reads);
    markKept(info->ownReads);
    for (std::size_t i = 0; i < info->passes.size(); ++i) {
        slots[i].standsFor = info->passes[i].reads.front();
        stages.push_back(std::make_unique<PassStage>(*info, i, slots[i].kept));
        stages.back()->SetParent(this);
    }
}

int32_t NLEOpenGLPassFilter::InitEffect() {
    for (const auto& stage : stages) {
        if (const int32_t result = stage->InitEffect(); result != kFilterOk) return result;
    }
    const int32_t result = NLEOpenGLFilter::InitEffect();
    for (const auto& stage : stages) stage->ShareParams(params);
    return result;
}

int32_t NLEOpenGLPassFilter::InitParams() {
    if (slots.back().kept) engine->AddRenderTarget();
    // The base declares the clips; behind them come inputs of passes, all of them clips too.
    const std::size_t declared = info->transition ? 2 : 1;
    for (std::size_t i = declared; i < info->ownReads.size(); ++i) {
        engine->AddInputTexture(width, height, stride, true);
    }
    engine->AddUniformInt("hasPast", 0);
    engine->AddUniformFloat("elapsed", 0.0F);
    memory.Restart();
    return kFilterOk;
}

int32_t NLEOpenGLPassFilter::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    for (const auto& stage : stages) {
        if (stage->ResizeForFrame(newWidth, newHeight) != kFilterOk) return kFilterFailed;
    }
    const int32_t result = NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
    if (sizeChanged) memory.Restart();
    return result;
}

int32_t NLEOpenGLPassFilter::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                      FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    TurnPictures();
    const FrameTime time = Time();
    const Clips clips{first, second};
    for (std::size_t i = 0; i < stages.size(); ++i) {
        if (DrawPass(i, clips, time) != kFilterOk) {
            memory.Restart();
            return kFilterFailed;
        }
    }
    int32_t slot = 0;
    const bool hasPast = BindInputs(*engine, info->ownReads, clips, slot);
    BindMaterialAtTime(*engine, slot, textureFrames.get(), texDescs.get(), time.position);
    UpdateAudio(0.0F);
    UploadTime(*engine, time);
    UploadParams();
    engine->SetUniformInt("hasPast", hasPast ? 1 : 0);
    engine->SetUniformFloat("elapsed", elapsed);
    const int32_t result = RenderTo(out);
    slots.back().drawn = result == kFilterOk;
    if (result == kFilterOk) {
        memory.Drawn(position, true);
        lastPosition = position;
    } else {
        memory.Restart();
    }
    return result;
}

// A new frame: what was drawn last becomes the past. The same frame again keeps the past it had.
void NLEOpenGLPassFilter::TurnPictures() {
    const float rate = GetFrameRate();
    const bool continues = memory.Usable(position, rate) && position >= lastPosition;
    if (continues && position == lastPosition) return;
    elapsed = continues ? SecondsAt(position - lastPosition, rate) : 0.0F;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        Slot& slot = slots[i];
        slot.hasPast = slot.kept && continues && slot.drawn;
        if (!slot.hasPast) continue;
        if (i < stages.size()) {
            stages[i]->Keep();
        } else {
            engine->SetRenderTarget(0);
        }
    }
}

int32_t NLEOpenGLPassFilter::DrawPass(std::size_t index, const Clips& clips,
                                      const FrameTime& time) {
    PassStage& stage = *stages[index];
    Slot& own = slots[index];
    own.skipped = stage.Skipped();
    own.drawn = false;
    if (own.skipped) return kFilterOk;
    if (!stage.Engine()) return kFilterFailed;
    int32_t slot = 0;
    const bool hasPast = BindInputs(*stage.Engine(), info->passes[index].reads, clips, slot);
    own.drawn = stage.Draw(time, hasPast, elapsed) == kFilterOk;
    return own.drawn ? kFilterOk : kFilterFailed;
}

bool NLEOpenGLPassFilter::BindInputs(NLEOpenGLEngineEffect& target,
                                     const std::vector<PassInput>& reads, const Clips& clips,
                                     int32_t& slot) {
    bool hasPast = true;
    for (const PassInput& input : reads) {
        if (input.before) hasPast = hasPast && slots[input.pass].hasPast;
        const FrameRecord picture = PictureOf(input, clips);
        if (picture.HasCpuPixels()) {
            target.SetInputImage(slot, picture.pixels, picture.width, picture.height,
                                 picture.stride, picture.channels, false, 0);
        } else if (picture.HasTexture()) {
            target.SetInputTexture(slot, picture, picture.width, picture.height, picture.stride);
        } else {
            target.SetInputMaterial(slot, nullptr, 0, 0, 0, 4, false, 0, 0, 0);
        }
        ++slot;
    }
    return hasPast;
}

FrameRecord NLEOpenGLPassFilter::PictureOf(PassInput input, const Clips& clips) const {
    // A skipped pass stands for what it would have read, which lies in front of it: this ends.
    while (input.kind == PassInput::kPass && !input.before && slots[input.pass].skipped) {
        input = slots[input.pass].standsFor;
    }
    if (input.kind == PassInput::kClip) return clips.first;
    if (input.kind == PassInput::kSecondClip) return clips.second;
    const bool own = input.pass == stages.size();
    if (!input.before) return stages[input.pass]->GetResultFrame();
    if (!slots[input.pass].hasPast) return {};
    return own ? GetTargetFrame(0) : stages[input.pass]->Before();
}

}  // namespace kelmo
