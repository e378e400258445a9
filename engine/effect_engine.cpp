// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect_engine.h"

#include "engine/effect/boundary.h"
#include "engine/effect/engine_effect.h"

namespace kelmo {
namespace {

std::unique_ptr<EffectEngine> MakeEngine(std::unique_ptr<GlContext> context, const EngineLog& log) {
    if (!context) return nullptr;
    auto device = std::make_shared<GlDevice>(std::move(context), log);
    const GlScope scope(*device);
    return scope ? std::make_unique<EffectEngine>(device) : nullptr;
}

}  // namespace

void EffectEngine::CreateEngineEffect(int32_t width, int32_t height, int32_t stride,
                                      bool multisample, const char* fragmentPath,
                                      std::shared_ptr<NLEOpenGLEngineEffect>& out, int32_t encrypt,
                                      const char* vertexPath, const ShaderExterns& fragmentExterns,
                                      const ShaderExterns& vertexExterns) {
    out.reset();
    const EngineLog& log = device->Log();
    AtBoundary(log, "CreateEngineEffect", false, [&] {
        if (!fragmentPath || !*fragmentPath) {
            log.Error("engine: an effect needs a fragment shader");
            return false;
        }
        if (encrypt != 0) {
            log.Error("engine: %s: encrypted shaders (ENCRYPT %d) are not supported", fragmentPath,
                      encrypt);
            return false;
        }
        // The scope comes before the effect: a new context is taken while no effect lives.
        const GlScope scope(*device);
        if (!scope) return false;
        ShaderFiles files{fragmentPath, vertexPath ? vertexPath : "", fragmentExterns,
                          vertexExterns};
        auto effect = std::make_shared<EngineEffect>(device, std::move(files), multisample);
        if (effect->Resize(width, height, stride, effect) != 0) return false;
        out = std::move(effect);
        return true;
    });
}

std::unique_ptr<EffectEngine> MakeOwnContextEngine(EngineLogCallback callback) {
    const EngineLog log(callback);
    return MakeEngine(MakeOwnContext(log), log);
}

std::unique_ptr<EffectEngine> MakeHostContextEngine(EngineLogCallback callback) {
    return MakeEngine(MakeHostContext(), EngineLog(callback));
}

}  // namespace kelmo
