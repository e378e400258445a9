// SPDX-License-Identifier: GPL-3.0-or-later
#include <dlfcn.h>
#include <epoxy/egl.h>

#include "engine/device/gl_context.h"

namespace kelmo {
namespace {

/// GLX is asked by symbol: only a host that uses it has it loaded.
void* CurrentGlxContext() {
    using GetCurrentFn = void* (*)();
    static const auto getCurrent =
        reinterpret_cast<GetCurrentFn>(dlsym(RTLD_DEFAULT, "glXGetCurrentContext"));
    return getCurrent ? getCurrent() : nullptr;
}

class HostContext final : public GlContext {
public:
    bool Enter(const char*& reason) override {
        handle = eglGetCurrentContext();
        if (!handle) handle = CurrentGlxContext();
        if (!handle) reason = "no OpenGL context is current on the calling thread";
        return handle != nullptr;
    }
    void Leave() override {}
    void* Handle() const override { return handle; }
    bool IsShared() const override { return true; }

private:
    void* handle = nullptr;
};

}  // namespace

std::unique_ptr<GlContext> MakeHostContext() {
    return std::make_unique<HostContext>();
}

}  // namespace kelmo
