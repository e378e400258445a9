// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect_engine.h"

#include "engine/effect/boundary.h"
#include "engine/effect/engine_effect.h"

namespace kelmo {
namespace {

std::unique_ptr<EffectEngine> MakeEngine(std::unique_ptr<GlDevices> devices) {
    const auto device = devices->Current();
    if (!device || !GlScope(*device)) return nullptr;
    return std::make_unique<EffectEngine>(std::move(devices));
}

}  // namespace

void EffectEngine::CreateEngineEffect(int32_t width, int32_t height, int32_t stride,
                                      bool multisample, const char* fragmentPath,
                                      std::shared_ptr<NLEOpenGLEngineEffect>& out, int32_t encrypt,
                                      const char* vertexPath, const ShaderExterns& fragmentExterns,
                                      const ShaderExterns& vertexExterns) {
    out.reset();
    const EngineLog& log = devices->Log();
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
        const std::shared_ptr<GlDevice> device = devices->Current();
        if (!device) return false;
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
    std::unique_ptr<GlContext> context = MakeOwnContext(log);
    return context ? MakeEngine(std::make_unique<GlDevices>(std::move(context), log)) : nullptr;
}

std::unique_ptr<EffectEngine> MakeHostContextEngine(EngineLogCallback callback) {
    return MakeEngine(std::make_unique<GlDevices>(EngineLog(callback)));
}

}  // namespace kelmo
