// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/effect_chain.h"

#include <algorithm>

#include "host/session/host_error.h"

namespace kelmo::host {

EffectChain::EffectChain(PluginLibrary& library, HostServices& services,
                         std::vector<ChainLink> links, int chainWidth, int chainHeight,
                         FrameRate rate, bool useGpu)
    : width(chainWidth), height(chainHeight), onGpu(useGpu) {
    for (ChainLink& link : links) {
        if (!stages.empty() && link.effect->Type() == EffectType::kTransition) {
            throw UsageError("transition \"" + link.effect->name +
                             "\" must be the first --effect: only there are two clips");
        }
        const SessionFormat format{width, height, rate, link.frames};
        stages.push_back({link.firstFrame, link.frames,
                          std::make_unique<EffectSession>(library, services, *link.effect,
                                                          std::move(link.tracks), format)});
    }
    active.reserve(stages.size());
    if (!onGpu) return;
    firstTexture = std::make_unique<GpuPicture>(width, height);
    secondTexture = std::make_unique<GpuPicture>(width, height);
    resultTexture = std::make_unique<GpuPicture>(width, height);
}

EffectChain::~EffectChain() = default;

void EffectChain::Render(int64_t frame, Picture& first, Picture* second, const FrameExtras& extras,
                         Picture& output) {
    active.clear();
    for (Stage& stage : stages) {
        const int64_t position = frame - stage.firstFrame;
        if (position >= 0 && position < stage.frames) active.push_back(&stage);
    }
    if (active.empty()) {
        output = first;
        return;
    }
    audio.Set(extras.samples.data(), static_cast<int32_t>(extras.samples.size() / 2));
    inputs.first = &firstFrame;
    inputs.second = second != nullptr ? &secondFrame : nullptr;
    inputs.output = &outputFrame;
    inputs.audio = extras.samples.empty() ? nullptr : &audio;
    inputs.ai = extras.ai;
    firstFrame.SetText(extras.text);
    if (onGpu) {
        RenderOnGpu(frame, first, second, output);
    } else {
        RenderInMemory(frame, first, second, output);
    }
}

bool EffectChain::Run(Stage& stage, int64_t frame) {
    const bool drawn = stage.session->Render(frame - stage.firstFrame, inputs);
    inputs.second = nullptr;  // the pictures of both clips are one now
    return drawn;
}

void EffectChain::RenderInMemory(int64_t frame, Picture& first, Picture* second, Picture& output) {
    if (second != nullptr) secondFrame.Set(width, height, second->pixels.data(), nullptr);
    Picture* source = &first;
    for (size_t i = 0; i < active.size(); ++i) {
        Picture& target = i + 1 == active.size() ? output : between[i % 2];
        target.Resize(width, height);
        firstFrame.Set(width, height, source->pixels.data(), nullptr);
        outputFrame.Set(width, height, target.pixels.data(), nullptr);
        if (!Run(*active[i], frame))
            std::copy_n(source->pixels.data(), target.pixels.size(), target.pixels.data());
        source = &target;
    }
}

void EffectChain::RenderOnGpu(int64_t frame, Picture& first, Picture* second, Picture& output) {
    firstTexture->Upload(first);
    if (second != nullptr) {
        secondTexture->Upload(*second);
        secondFrame.Set(width, height, second->pixels.data(), secondTexture->Surface());
    }
    Picture* pixels = &first;  // the same picture in memory, as long as there is one
    for (size_t i = 0; i < active.size(); ++i) {
        if (pixels == nullptr && active[i]->session->NeedsPixels()) {
            pixels = &between[0];
            firstTexture->Download(*pixels);
        }
        firstFrame.Set(width, height, pixels == nullptr ? nullptr : pixels->pixels.data(),
                       firstTexture->Surface());
        outputFrame.Set(width, height, nullptr, resultTexture->Surface());
        if (!Run(*active[i], frame)) continue;
        std::swap(firstTexture, resultTexture);
        pixels = nullptr;
    }
    firstTexture->Download(output);
}

}  // namespace kelmo::host
