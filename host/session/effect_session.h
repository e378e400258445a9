// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "contract/ai_transfer.h"
#include "contract/qor_host.h"
#include "host/media/common/frame_rate.h"
#include "host/session/effect_description.h"
#include "host/session/host_frame.h"
#include "host/session/host_services.h"
#include "host/session/parameter_track.h"
#include "host/session/plugin_library.h"

namespace kelmo::host {

/// Pictures and time of an effect.
struct SessionFormat {
    int width = 0;
    int height = 0;
    FrameRate rate{25, 1};
    int64_t frames = 0;  ///< length of the effect
};

/// What one frame is made from; everything is borrowed for the call.
struct FrameInputs {
    QorFrame* first = nullptr;
    QorFrame* second = nullptr;  ///< of a transition
    QorFrame* output = nullptr;
    QorAudio* audio = nullptr;
    ObjectAiDataTransfer* ai = nullptr;
};

/// One instance of an effect, from creation to release.
///
/// Values reach the effect as follows: parameters that were given, at their value of the frame;
/// numbers that were not given, at the default of their description; texts that were not given are
/// left to the plug-in.
///
/// Thread rule: construction, Render and destruction on one thread; with an OpenGL device that of
/// the context. The library, the services and the description outlive the session. Failures are
/// HostError with the effect's name and its last logged error.
class EffectSession {
public:
    /// Creates and prepares the effect. Throws UsageError for tracks that cannot be resolved.
    EffectSession(PluginLibrary& library, HostServices& services,
                  const EffectDescription& description, std::vector<ParameterTrack> tracks,
                  const SessionFormat& format);
    ~EffectSession();
    EffectSession(const EffectSession&) = delete;
    EffectSession& operator=(const EffectSession&) = delete;

    /// Draws frame `position` (0 .. frames - 1) of the effect into the output. False, and the
    /// output is to be taken for undefined, when the effect has nothing to draw on this frame (no
    /// highlights, say, or nobody there): the clip goes on as it is.
    [[nodiscard]] bool Render(int64_t position, const FrameInputs& inputs);

    /// Whether the effect reads pixels, so that its frames must carry them even on the GPU.
    bool NeedsPixels() const { return context.needsPixels; }
    const EffectDescription& Description() const { return description; }
    const SessionFormat& Format() const { return format; }

private:
    class Context final : public QorRenderContext {
    public:
        explicit Context(const EffectSession& parent) : owner(parent) {}
        int32_t GetPosition() override { return position; }
        int32_t GetDuration() override;
        void GetFrameRate(int64_t* numerator, int64_t* denominator) override;
        /// Room around the frame is not given: the picture ends at the frame's edge.
        void SetExpansion(QorPoint, QorPoint) override {}
        QorFrame* GetInputFrame(int32_t index) override;
        QorFrame* GetOutputFrame() override { return inputs.output; }
        QorAudio* GetAudio(int32_t index) override { return index == 0 ? inputs.audio : nullptr; }
        int32_t GetCustomData(const char* name, int32_t hostType, void* out, int32_t size) override;
        int32_t GetParamValue(const char* name, int32_t position, QorValue* value) override;
        void SetNeedCpuFrame(bool need) override { needsPixels = need; }

        int32_t position = 0;
        FrameInputs inputs;
        bool needsPixels = false;

    private:
        const EffectSession& owner;
    };

    /// A parameter with its track, or without one.
    struct Value {
        const ParameterDescription* parameter = nullptr;
        const ParameterTrack* track = nullptr;
    };

    [[noreturn]] void Fail(const std::string& what) const;

    HostServices& services;
    const EffectDescription& description;
    std::vector<ParameterTrack> tracks;
    SessionFormat format;
    std::vector<Value> values;  // by name, for binary search
    Context context{*this};
    PluginLibrary::EffectPointer effect;
};

}  // namespace kelmo::host
