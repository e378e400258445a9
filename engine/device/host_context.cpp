// SPDX-License-Identifier: GPL-3.0-or-later
#include <dlfcn.h>

#include <atomic>

#include "engine/device/gl_context.h"

namespace kelmo {
namespace {

/// A library that contexts come from. It is asked only when the process has it loaded, which
/// whoever made a context has, wherever the host loaded it to; it then stays loaded.
class WindowSystem {
public:
    constexpr WindowSystem(const char* library, const char* function)
        : library(library), function(function) {}

    bool IsKnown() const { return getCurrent.load(std::memory_order_acquire) != nullptr; }

    void Find() {
        void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
        if (handle) getCurrent = reinterpret_cast<GetCurrentFn>(dlsym(handle, function));
    }

    void* Current() const {
        const GetCurrentFn get = getCurrent.load(std::memory_order_acquire);
        return get ? get() : nullptr;
    }

private:
    using GetCurrentFn = void* (*)();

    const char* const library;
    const char* const function;
    std::atomic<GetCurrentFn> getCurrent{nullptr};
};

WindowSystem windowSystems[] = {{"libEGL.so.1", "eglGetCurrentContext"},
                                {"libGLX.so.0", "glXGetCurrentContext"},
                                {"libGL.so.1", "glXGetCurrentContext"}};

void* CurrentContext() {
    for (const WindowSystem& system : windowSystems) {
        if (void* const context = system.Current()) return context;
    }
    for (WindowSystem& system : windowSystems) {
        if (system.IsKnown()) continue;
        system.Find();
        if (void* const context = system.Current()) return context;
    }
    return nullptr;
}

class HostContext final : public GlContext {
public:
    bool Enter(const char*& reason) override {
        handle = CurrentContext();
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
