// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/material/shader_compiler.h"

#include <cstdarg>
#include <cstdio>

#include "catalogue/nle_filter_info.h"
#include "contract/qor_host.h"

namespace kelmo::material {
namespace {

std::vector<std::string>& LogLines() {
    static std::vector<std::string> lines;
    return lines;
}

void KeepErrors(int32_t level, const char* format, va_list args) {
    if (level < kLogWarning) return;
    char text[4096];
    std::vsnprintf(text, sizeof text, format, args);
    LogLines().emplace_back(text);
}

constexpr int32_t kWidth = 64;
constexpr int32_t kHeight = 36;
constexpr int32_t kStride = kWidth * 4;

void DeclareAsTheFilterDoes(NLEOpenGLEngineEffect& effect, const NLEFilterInfo& info) {
    const int32_t clips = info.transition != 0 ? 2 : 1;
    for (int32_t i = 0; i < clips + info.textureCount; ++i) {
        effect.AddInputTexture(kWidth, kHeight, kStride, i < clips);
    }
    if (info.hasAudio != 0) {
        effect.AddAudioBuffer();
        effect.AddUniformFloat("audio_intensity", 0.0f);
    }
    for (int32_t i = 0; i < info.paramCount; ++i) {
        const auto param = info.GetParam(i);
        if (!param) continue;
        if (param->type == kParamFloat) effect.AddUniformFloat(param->name.c_str(), 0.0f);
        if (param->type == kParamInt) effect.AddUniformInt(param->name.c_str(), 0);
    }
}

}  // namespace

ShaderCompiler::~ShaderCompiler() {
    if (engine != nullptr && destroy != nullptr) destroy(engine);
}

std::string ShaderCompiler::Open(const std::string& enginePath) {
    std::string error;
    if (!library.Open(enginePath, error)) return error;
    const auto create = library.Symbol<CreateNLEOpenGLEffectEngineInstanceFn>(kCreateEngine);
    destroy = library.Symbol<DestroyNLEOpenGLEffectEngineInstanceFn>(kDestroyEngine);
    if (create == nullptr || destroy == nullptr) return enginePath + ": not an engine library";
    if (create(&engine, KeepErrors, 1, 0) != 0 || engine == nullptr) {
        return enginePath + ": the engine does not start" +
               (LogLines().empty() ? std::string() : ": " + LogLines().back());
    }
    return {};
}

std::vector<std::string> ShaderCompiler::Compile(const NLEFilterInfo& info) {
    std::vector<std::string> errors;
    for (const FilterPass& pass : info.passes) {
        for (std::string& line : Build(info, pass.fragmentPath, "")) {
            errors.push_back("pass " + pass.name + ": " + std::move(line));
        }
    }
    for (std::string& line : Build(info, info.openglPath, info.vertexPath)) {
        errors.push_back(std::move(line));
    }
    return errors;
}

std::vector<std::string> ShaderCompiler::Build(const NLEFilterInfo& info,
                                               const std::string& fragmentPath,
                                               const std::string& vertexPath) {
    LogLines().clear();
    std::shared_ptr<NLEOpenGLEngineEffect> effect;
    engine->CreateEngineEffect(kWidth, kHeight, kStride, false, fragmentPath.c_str(), effect,
                               info.encrypt, vertexPath.c_str(), info.fragmentExterns,
                               info.vertexExterns);
    bool built = false;
    if (effect) {
        DeclareAsTheFilterDoes(*effect, info);
        built = effect->CreateProgram(effect) == 0;
    }
    if (!built && LogLines().empty()) LogLines().emplace_back("the program does not build");
    return built ? std::vector<std::string>() : LogLines();
}

}  // namespace kelmo::material
