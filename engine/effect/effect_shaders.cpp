// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect/effect_shaders.h"

#include <algorithm>

namespace kelmo {

std::shared_ptr<ShaderProgram> BuildShaders(GlDevice& device, const ShaderFiles& files,
                                            const std::vector<int32_t>& variants, int audioBuffers,
                                            std::string& error) {
    ShaderSource fragment;
    ShaderSource vertex;
    vertex.text = kDefaultVertexShader;
    const std::string common = CommonFolderOf(files.fragment);
    if (!AssembleShader(files.fragment, common, {&files.fragmentGroups, &variants}, fragment,
                        error)) {
        return nullptr;
    }
    if (!files.vertex.empty()) {
        const std::string vertexCommon = CommonFolderOf(files.vertex);
        if (!AssembleShader(files.vertex, vertexCommon.empty() ? common : vertexCommon,
                            {&files.vertexGroups, &variants}, vertex, error)) {
            return nullptr;
        }
    }
    auto program = ShaderProgram::Obtain(device, fragment, vertex, audioBuffers, error);
    // What is wrong with the whole pair has no line; it still names the author's file.
    if (!program && error.find(files.fragment) == std::string::npos &&
        (files.vertex.empty() || error.find(files.vertex) == std::string::npos)) {
        error = files.fragment + ": " + error;
    }
    return program;
}

void EffectShaders::SetVariants(const std::vector<int32_t>& indices) {
    if (indices == chosen) return;
    chosen = indices;
    current = kNone;
}

PassProgram* EffectShaders::Rebuild(GlDevice& device) {
    std::erase_if(variants, [this](const Variant& each) { return each.indices == chosen; });
    current = kNone;
    return Current(device);
}

PassProgram* EffectShaders::Current(GlDevice& device) {
    if (current == kNone) {
        const auto known = std::find_if(variants.begin(), variants.end(), [this](const auto& each) {
            return each.indices == chosen;
        });
        current = static_cast<size_t>(known - variants.begin());
        if (known == variants.end()) {
            std::string error;
            auto program = BuildShaders(device, files, chosen, audioBuffers, error);
            if (!program) device.Log().Error("engine: %s", error.c_str());
            variants.push_back(
                {chosen, program ? std::make_unique<PassProgram>(program) : nullptr});
        }
    }
    return variants[current].program.get();
}

}  // namespace kelmo
