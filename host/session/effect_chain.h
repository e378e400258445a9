// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "host/media/picture/picture.h"
#include "host/session/effect_session.h"
#include "host/session/gpu_picture.h"

namespace kelmo::host {

/// One effect of a chain and where it stands in the time of the whole.
struct ChainLink {
    const EffectDescription* effect = nullptr;
    std::vector<ParameterTrack> tracks;
    int64_t firstFrame = 0;
    int64_t frames = 0;
};

/// What belongs to a frame of the whole beside its pictures.
struct FrameExtras {
    std::span<int16_t> samples;  ///< interleaved stereo; empty: no sound
    ClipText text;
    ObjectAiDataTransfer* ai = nullptr;
};

/// Effects one after the other, each working on the picture of the one before. Only the first may
/// be a transition. Frames outside of a link's time pass it unchanged. On the GPU the picture goes
/// up once and comes down once, unless an effect in between reads pixels.
///
/// Thread rule and errors: as EffectSession.
class EffectChain {
public:
    /// `onGpu`: pictures travel as textures; the services were made with a device, whose context is
    /// current.
    EffectChain(PluginLibrary& library, HostServices& services, std::vector<ChainLink> links,
                int width, int height, FrameRate rate, bool onGpu);
    ~EffectChain();

    /// `first` has the chain's size; so has `second`, null where no transition runs. `output` is
    /// resized.
    void Render(int64_t frame, Picture& first, Picture* second, const FrameExtras& extras,
                Picture& output);

private:
    struct Stage {
        int64_t firstFrame = 0;
        int64_t frames = 0;
        std::unique_ptr<EffectSession> session;
    };

    void RenderInMemory(int64_t frame, Picture& first, Picture* second, Picture& output);
    void RenderOnGpu(int64_t frame, Picture& first, Picture* second, Picture& output);
    /// Whether the effect drew; the picture before it goes on otherwise.
    bool Run(Stage& stage, int64_t frame);

    int width;
    int height;
    bool onGpu;
    std::vector<Stage> stages;
    std::vector<Stage*> active;  // those that work on the frame at hand
    Picture between[2];
    std::unique_ptr<GpuPicture> firstTexture;
    std::unique_ptr<GpuPicture> secondTexture;
    std::unique_ptr<GpuPicture> resultTexture;
    HostFrame firstFrame;
    HostFrame secondFrame;
    HostFrame outputFrame;
    HostAudio audio;
    FrameInputs inputs;
};

}  // namespace kelmo::host
