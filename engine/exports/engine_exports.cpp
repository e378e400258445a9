// SPDX-License-Identifier: GPL-3.0-or-later
// The two exports. KELMO_ENGINE_OWN_CONTEXT tells the libraries apart: 1 brings its own context, 0
// works in the host's.
#include "engine/effect/boundary.h"
#include "engine/effect_engine.h"

#define KELMO_EXPORT extern "C" __attribute__((visibility("default")))

KELMO_EXPORT int32_t CreateNLEOpenGLEffectEngineInstance(kelmo::NLEOpenGLEffectEngine** engine,
                                                         kelmo::EngineLogCallback callback,
                                                         uint8_t noDevice, int32_t) {
    constexpr int32_t kFailed = 1;
    const kelmo::EngineLog log(callback);
    if (!engine) return kFailed;
    *engine = nullptr;
    return kelmo::AtBoundary(log, kelmo::kCreateEngine, kFailed, [&] {
#if KELMO_ENGINE_OWN_CONTEXT
        static_cast<void>(noDevice);
        *engine = kelmo::MakeOwnContextEngine(callback).release();
#else
        if (noDevice != 0) {
            log.Error("engine: TZOpenGLEffectMgr works in the host's OpenGL context, and the host "
                      "has none; TZOpenGLEffectMgr-mesa brings its own");
            return kFailed;
        }
        *engine = kelmo::MakeHostContextEngine(callback).release();
#endif
        return *engine ? 0 : kFailed;
    });
}

KELMO_EXPORT void DestroyNLEOpenGLEffectEngineInstance(kelmo::NLEOpenGLEffectEngine* engine) {
    delete engine;
}
