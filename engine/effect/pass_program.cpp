// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect/pass_program.h"

namespace kelmo {

void PassProgram::Match(GlDevice& device, const PassInputs& inputs) {
    if (valueRevision == inputs.uniforms.Revision() && arrayRevision == inputs.arrays.Revision()) {
        return;
    }
    valueRevision = inputs.uniforms.Revision();
    arrayRevision = inputs.arrays.Revision();
    uniforms.clear();
    for (int i = 0; i < static_cast<int>(program->Uniforms().size()); ++i) {
        uniforms.push_back(MatchUniform(device, inputs, i));
    }
    samplers.clear();
    for (const ShaderProgram::Sampler& sampler : program->Samplers()) {
        samplers.push_back(MatchSampler(inputs, sampler));
    }
}

PassProgram::BoundUniform PassProgram::MatchUniform(GlDevice& device, const PassInputs& inputs,
                                                    int index) const {
    const std::string& name = program->Uniforms()[static_cast<size_t>(index)].name;
    if (name == "uResolution") return {Source::Resolution, 0};
    const int bound = SlotOfName(name.c_str(), "uHasInput", "");
    if (bound >= 0) return {Source::HasInput, bound};
    const int straight = SlotOfName(name.c_str(), "uInput", "Straight");
    if (straight >= 0) return {Source::Straight, straight};
    const int value = inputs.uniforms.Find(name.c_str());
    if (value >= 0) {
        if (program->Accepts(index, inputs.uniforms.Value(value).kind)) {
            return {Source::Value, value};
        }
        device.Log().Error("engine: uniform '%s' has another type in the shader than it is given",
                           name.c_str());
    }
    const int array = inputs.arrays.FindByCountName(name.c_str());
    if (array >= 0) return {Source::ArrayLength, array};
    return {Source::Initial, 0};
}

PassProgram::BoundSampler PassProgram::MatchSampler(const PassInputs& inputs,
                                                    const ShaderProgram::Sampler& sampler) {
    if (sampler.type == GL_SAMPLER_2D) {
        const int slot = SlotOfName(sampler.name.c_str(), "uInput", "");
        return slot >= 0 ? BoundSampler{Reads::Input, slot} : BoundSampler{Reads::Nothing, 0};
    }
    const int array = inputs.arrays.Find(sampler.name.c_str());
    return array >= 0 ? BoundSampler{Reads::Array, array} : BoundSampler{Reads::Nothing, 0};
}

void PassProgram::CollectTextures(const GlDevice& device, const PassInputs& inputs,
                                  std::vector<GLuint>& textures) const {
    for (const BoundSampler& sampler : samplers) {
        if (sampler.reads == Reads::Input) {
            textures.push_back(inputs.slots.Texture(device, sampler.index));
        }
    }
}

void PassProgram::Apply(GlDevice& device, PassInputs& inputs, int width, int height) {
    BindSamplers(device, inputs);
    glUseProgram(program->Id());
    const float resolution[] = {static_cast<float>(width), static_cast<float>(height)};
    for (int i = 0; i < static_cast<int>(uniforms.size()); ++i) {
        const BoundUniform& bound = uniforms[static_cast<size_t>(i)];
        switch (bound.source) {
            case Source::Initial:
                program->Reset(i);
                break;
            case Source::Value:
                program->Upload(i, inputs.uniforms.Value(bound.index));
                break;
            case Source::Resolution:
                program->UploadFloats(i, resolution, 2);
                break;
            case Source::HasInput:
                program->UploadInt(i, inputs.slots.IsBound(bound.index));
                break;
            case Source::Straight:
                program->UploadInt(i, inputs.slots.IsStraight(bound.index));
                break;
            case Source::ArrayLength:
                program->UploadInt(i, inputs.arrays.Length(bound.index));
                break;
        }
    }
}

void PassProgram::BindSamplers(GlDevice& device, PassInputs& inputs) {
    // Arrays first: bringing one up to date binds it on unit 0.
    for (const BoundSampler& sampler : samplers) {
        if (sampler.reads == Reads::Array) inputs.arrays.Texture(device, sampler.index);
    }
    for (size_t i = 0; i < samplers.size(); ++i) {
        const ShaderProgram::Sampler& wanted = program->Samplers()[i];
        const BoundSampler& sampler = samplers[i];
        const auto unit = static_cast<GLuint>(wanted.unit);
        device.UseUnit(wanted.unit);
        if (wanted.type == GL_SAMPLER_BUFFER) {
            const bool known = sampler.reads == Reads::Array;
            glBindTexture(GL_TEXTURE_BUFFER, known ? inputs.arrays.Texture(device, sampler.index)
                                                   : device.Commons().emptyArray.Id());
        } else if (sampler.reads == Reads::Input) {
            glBindTexture(GL_TEXTURE_2D, inputs.slots.Texture(device, sampler.index));
            glBindSampler(unit, inputs.slots.Sampler(device, sampler.index));
        } else {
            glBindTexture(GL_TEXTURE_2D, device.Commons().emptyTexture.Id());
            glBindSampler(unit, device.Commons().clipSampler.Id());
        }
    }
}

}  // namespace kelmo
