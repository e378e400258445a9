// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "contract/engine.h"
#include "engine/device/gl_device.h"

namespace kelmo {

/// Makes the engine's effects. Effects share its device and keep it alive.
class EffectEngine final : public NLEOpenGLEffectEngine {
public:
    explicit EffectEngine(std::shared_ptr<GlDevice> device) : device(std::move(device)) {}

    void CreateEngineEffect(int32_t width, int32_t height, int32_t stride, bool multisample,
                            const char* fragmentPath, std::shared_ptr<NLEOpenGLEngineEffect>& out,
                            int32_t encrypt, const char* vertexPath,
                            const ShaderExterns& fragmentExterns,
                            const ShaderExterns& vertexExterns) override;

    GlDevice& Device() const { return *device; }

private:
    const std::shared_ptr<GlDevice> device;
};

/// An engine with a context of its own, or null when no EGL device gives one.
std::unique_ptr<EffectEngine> MakeOwnContextEngine(EngineLogCallback log);
/// An engine that works in the context that is current on the calling thread, now and whenever an
/// operation needs GL; null when there is none now, or one below OpenGL 3.3.
std::unique_ptr<EffectEngine> MakeHostContextEngine(EngineLogCallback log);

}  // namespace kelmo
