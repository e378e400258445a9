// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "contract/engine.h"

namespace kelmo::test {

class RecordingEngine;

/// Everything that reached the engine side of one filter; lives as long as the engine, so that a
/// test can look after the filter has gone.
///
/// A call stands as one line, "SetUniformFloat(global_time, 0.4)": the operation, then what a
/// reader wants to know. Pictures are told by their number: textures that the engine owns have
/// numbers from 1000 upwards.
class EffectRecord {
public:
    /// What `AddVertexAttribute` handed over, copied at the next `Render`.
    struct Attribute {
        int32_t components = 0;
        bool keep = false;
        bool indexList = false;
        /// As it arrived: borrowed, and valid until the `Render` that follows.
        const void* data = nullptr;
        /// vertex count x components words, copied by `Render`; indices arrive as numbers too.
        std::vector<float> values;
    };
    /// What stands at an input slot.
    struct Input {
        enum Kind { kNone, kImage, kMaterial, kTexture };
        Kind kind = kNone;
        const void* pixels = nullptr;
        int32_t texture = 0;
        int32_t width = 0;
        int32_t height = 0;
        int32_t stride = 0;
        /// `format` of an image; `channels` of material.
        int32_t channels = 0;
    };

    // --- how it was made ---
    std::string fragmentPath;
    std::string vertexPath;
    ShaderExterns fragmentExterns;
    ShaderExterns vertexExterns;
    bool multisample = false;
    int32_t encrypt = 0;
    /// False once the filter has let go of it.
    bool alive = true;

    // --- what it holds now ---
    int32_t width = 0;
    int32_t height = 0;
    int32_t stride = 0;
    int32_t vertexCount = 0;
    int32_t instanceCount = 0;
    int32_t drawType = 0;
    int32_t blendMode = 0;
    bool depthTest = false;
    bool depthWrite = false;
    bool cullFace = false;
    std::vector<float> clearColor;
    std::vector<int32_t> variants;
    std::map<std::string, Attribute, std::less<>> attributes;
    std::map<int32_t, Input> inputs;
    std::vector<float> audioBuffer;
    int32_t renderCount = 0;
    FrameRecord lastTarget;

    /// All lines, or those that begin with `prefix`.
    std::vector<std::string> Calls(std::string_view prefix = "") const;
    int Count(std::string_view prefix) const;
    bool Has(std::string_view line) const;
    void ClearCalls() { calls.clear(); }

    /// The last value of a uniform, in its components; empty when it was never declared or set.
    std::vector<float> Uniform(std::string_view name) const;
    float UniformFloat(std::string_view name) const;
    int32_t UniformInt(std::string_view name) const;
    /// The elements of a uniform or instance array, one after the other.
    std::vector<float> Array(std::string_view name) const { return Uniform(name); }
    std::vector<float> AttributeValues(std::string_view name) const;
    Input InputAt(int32_t slot) const;

private:
    friend class RecordingEngineEffect;
    friend class RecordingEngine;

    std::vector<std::string> calls;
    std::map<std::string, std::vector<float>, std::less<>> uniforms;
};

/// A double of the engine: draws nothing, records what arrives, fails on demand.
///
/// With `recording` off nothing is written down and nothing allocated: what a test of allocations
/// and a benchmark need. For one thread at a time.
class RecordingEngine : public NLEOpenGLEffectEngine {
public:
    // --- switches ---
    bool recording = true;
    bool failCreateEffect = false;
    bool failProgram = false;
    bool failResize = false;
    bool failRender = false;
    bool failReadTexture = false;
    /// Runs at each successful `Render`, before the counters change: a place to look at borrowed
    /// data, or to paint a CPU target.
    std::function<void(EffectRecord&, FrameRecord& target)> onRender;
    /// Fills the memory that `ReadTexture` gives back; without it, zeros.
    std::function<void(int32_t texture, int32_t width, int32_t height, int32_t stride, void*)>
        onRead;

    /// One record for each effect made, in order.
    const std::vector<std::shared_ptr<EffectRecord>>& Effects() const { return effects; }
    /// By order; a test that asks for one that was never made fails with an exception.
    EffectRecord& Effect(std::size_t index) const { return *effects.at(index); }
    /// The first one whose fragment path contains `text`, or null.
    EffectRecord* FindEffect(std::string_view text) const;
    /// Lines of all effects in their true order, each with the number of its effect in front:
    /// "0: CreateProgram()".
    std::vector<std::string> Calls(std::string_view prefix = "") const;
    void ClearCalls();

    /// Which `Render` (counted from 1 over all effects) drew the picture that a texture of ours
    /// holds; 0 for a picture never drawn.
    int32_t DrawnBy(int32_t texture) const;
    int32_t RenderCount() const { return renders; }

    void CreateEngineEffect(int32_t width, int32_t height, int32_t stride, bool multisample,
                            const char* fragmentPath, std::shared_ptr<NLEOpenGLEngineEffect>& out,
                            int32_t encrypt, const char* vertexPath,
                            const ShaderExterns& fragmentExterns,
                            const ShaderExterns& vertexExterns) override;

private:
    friend class RecordingEngineEffect;

    static constexpr int32_t kFirstTexture = 1000;

    int32_t NewTexture();

    std::vector<std::shared_ptr<EffectRecord>> effects;
    std::vector<std::string> calls;
    /// By texture number minus kFirstTexture.
    std::vector<int32_t> drawnBy;
    int32_t renders = 0;
};

}  // namespace kelmo::test
