// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "contract/engine.h"
#include "engine/device/gl_devices.h"

namespace kelmo {

/// Makes the engine's effects. Effects share a device and keep it alive.
class EffectEngine final : public NLEOpenGLEffectEngine {
public:
    explicit EffectEngine(std::unique_ptr<GlDevices> devices) : devices(std::move(devices)) {}

    void CreateEngineEffect(int32_t width, int32_t height, int32_t stride, bool multisample,
                            const char* fragmentPath, std::shared_ptr<NLEOpenGLEngineEffect>& out,
                            int32_t encrypt, const char* vertexPath,
                            const ShaderExterns& fragmentExterns,
                            const ShaderExterns& vertexExterns) override;

    /// The device of the context that is current on this thread; null without one.
    std::shared_ptr<GlDevice> Device() const { return devices->Current(); }

private:
    const std::unique_ptr<GlDevices> devices;
};

/// An engine with a context of its own, or null when no EGL device gives one.
std::unique_ptr<EffectEngine> MakeOwnContextEngine(EngineLogCallback log);
/// An engine that works in the context that is current on the calling thread, now and whenever an
/// operation needs GL; null when there is none now, or one below OpenGL 3.3. Effects belong to the
/// context that they were made in; several contexts may have some.
std::unique_ptr<EffectEngine> MakeHostContextEngine(EngineLogCallback log);

}  // namespace kelmo
