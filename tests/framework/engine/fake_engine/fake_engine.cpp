// SPDX-License-Identifier: GPL-3.0-or-later
// An engine library that does nothing but tell the log when it is asked for an engine and when it
// gets one back.
#include <cstdlib>
#include <cstring>

#include "contract/engine.h"

#ifndef KELMO_FAKE_RESULT
#define KELMO_FAKE_RESULT 0
#endif
#define KELMO_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

kelmo::EngineLogCallback logCallback = nullptr;

void Tell(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    logCallback(2, format, arguments);
    va_end(arguments);
}

class FakeEngine : public kelmo::NLEOpenGLEffectEngine {
public:
    void CreateEngineEffect(int32_t, int32_t, int32_t, bool, const char*,
                            std::shared_ptr<kelmo::NLEOpenGLEngineEffect>&, int32_t, const char*,
                            const kelmo::ShaderExterns&, const kelmo::ShaderExterns&) override {}
};

/// Also one that once gave engines may refuse later: the variable names it.
bool Refuses() {
    const char* const name = std::getenv("KELMO_FAKE_REFUSING");
    return KELMO_FAKE_RESULT != 0 || (name && std::strcmp(name, KELMO_FAKE_NAME) == 0);
}

}  // namespace

KELMO_EXPORT int32_t CreateNLEOpenGLEffectEngineInstance(kelmo::NLEOpenGLEffectEngine** engine,
                                                         kelmo::EngineLogCallback log,
                                                         uint8_t noDevice, int32_t) {
    logCallback = log;
    Tell("%s asked, no device: %d", KELMO_FAKE_NAME, static_cast<int>(noDevice));
    *engine = Refuses() ? nullptr : new FakeEngine;
    return *engine ? 0 : 1;
}

#ifndef KELMO_FAKE_NO_DESTROY
KELMO_EXPORT void DestroyNLEOpenGLEffectEngineInstance(kelmo::NLEOpenGLEffectEngine* engine) {
    Tell("%s destroyed", KELMO_FAKE_NAME);
    delete engine;
}
#endif
