// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "engine/effect/float_arrays.h"
#include "engine/effect/input_slots.h"
#include "engine/effect/uniform_values.h"
#include "engine/shader/shader_program.h"

namespace kelmo {

/// What an effect sets, in the places where its program finds it.
struct PassInputs {
    UniformValues uniforms;
    FloatArrays arrays;
    InputSlots slots;
};

/// A program with its uniforms and samplers matched to an effect's values: names are compared when
/// something new was declared, never in a frame.
class PassProgram {
public:
    explicit PassProgram(std::shared_ptr<ShaderProgram> program) : program(std::move(program)) {}

    ShaderProgram& Program() const { return *program; }
    /// Matches names again if anything was declared since the last time.
    void Match(GlDevice& device, const PassInputs& inputs);
    /// Appends the input textures that the program reads.
    void CollectTextures(const GlDevice& device, const PassInputs& inputs,
                         std::vector<GLuint>& textures) const;
    /// Makes the program current and gives it what changed. Uniforms that the effect never set keep
    /// the value that the shader starts them with.
    void Apply(GlDevice& device, PassInputs& inputs, int width, int height);

private:
    enum class Source { Initial, Value, Resolution, HasInput, Straight, ArrayLength };
    struct BoundUniform {
        Source source;
        int index;
    };
    enum class Reads { Nothing, Input, Array };
    struct BoundSampler {
        Reads reads;
        int index;
    };

    BoundUniform MatchUniform(GlDevice& device, const PassInputs& inputs, int index) const;
    static BoundSampler MatchSampler(const PassInputs& inputs,
                                     const ShaderProgram::Sampler& sampler);
    void BindSamplers(GlDevice& device, PassInputs& inputs);

    std::shared_ptr<ShaderProgram> program;
    std::vector<BoundUniform> uniforms;
    std::vector<BoundSampler> samplers;
    int valueRevision = -1;
    int arrayRevision = -1;
};

}  // namespace kelmo
