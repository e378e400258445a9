// SPDX-License-Identifier: GPL-3.0-or-later
#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include <cstdlib>
#include <vector>

#include "engine/device/gl_context.h"

namespace kelmo {
namespace {

/// A display to try, and what to call it in the log.
struct Candidate {
    EGLDisplay display = EGL_NO_DISPLAY;
    const char* name = "";
};

bool WantsSoftware() {
    const char* value = std::getenv("LIBGL_ALWAYS_SOFTWARE");
    return value && *value && *value != '0';
}

std::vector<EGLDeviceEXT> Devices(bool software) {
    std::vector<EGLDeviceEXT> chosen;
    if (!epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_device_enumeration") &&
        !epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_device_base")) {
        return chosen;
    }
    EGLDeviceEXT devices[16] = {};
    EGLint count = 0;
    if (!eglQueryDevicesEXT(16, devices, &count)) return chosen;
    for (EGLint i = 0; i < count; ++i) {
        const char* extensions = eglQueryDeviceStringEXT(devices[i], EGL_EXTENSIONS);
        const bool isSoftware =
            extensions && epoxy_extension_in_string(extensions, "EGL_MESA_device_software");
        if (isSoftware == software) chosen.push_back(devices[i]);
    }
    return chosen;
}

void AddDevices(std::vector<Candidate>& candidates, bool software) {
    if (!epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_platform_device")) return;
    for (EGLDeviceEXT device : Devices(software)) {
        candidates.push_back({eglGetPlatformDisplayEXT(EGL_PLATFORM_DEVICE_EXT, device, nullptr),
                              software ? "software device" : "hardware device"});
    }
}

std::vector<Candidate> Candidates() {
    std::vector<Candidate> candidates;
    if (!WantsSoftware()) AddDevices(candidates, false);
    if (epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless")) {
        candidates.push_back(
            {eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr),
             "surfaceless platform"});
    }
    AddDevices(candidates, true);
    candidates.push_back({eglGetDisplay(EGL_DEFAULT_DISPLAY), "default display"});
    return candidates;
}

/// What a thread had current, so that `Leave` can give it back.
struct Previous {
    EGLenum api = EGL_OPENGL_API;
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLSurface draw = EGL_NO_SURFACE;
    EGLSurface read = EGL_NO_SURFACE;
    EGLContext context = EGL_NO_CONTEXT;
};

Previous SaveCurrent() {
    Previous previous;
    previous.api = eglQueryAPI();
    previous.context = eglGetCurrentContext();
    if (previous.context != EGL_NO_CONTEXT) {
        previous.display = eglGetCurrentDisplay();
        previous.draw = eglGetCurrentSurface(EGL_DRAW);
        previous.read = eglGetCurrentSurface(EGL_READ);
    }
    return previous;
}

void Restore(const Previous& previous, EGLDisplay ours) {
    if (previous.context == EGL_NO_CONTEXT) {
        eglMakeCurrent(ours, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    } else {
        eglMakeCurrent(previous.display, previous.draw, previous.read, previous.context);
    }
    if (previous.api != EGL_OPENGL_API) eglBindAPI(previous.api);
}

class OwnContext final : public GlContext {
public:
    ~OwnContext() override {
        if (surface != EGL_NO_SURFACE) eglDestroySurface(display, surface);
        if (context != EGL_NO_CONTEXT) eglDestroyContext(display, context);
    }

    bool Open(EGLDisplay candidate) {
        display = candidate;
        if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr)) return false;
        return ChooseConfig() && CreateContext();
    }

    bool Enter(const char*& reason) override {
        previous = SaveCurrent();
        if (previous.api != EGL_OPENGL_API) eglBindAPI(EGL_OPENGL_API);
        if (eglMakeCurrent(display, surface, surface, context)) return true;
        reason = "the engine's own OpenGL context cannot be made current";
        Restore(previous, display);
        return false;
    }
    void Leave() override { Restore(previous, display); }
    void* Handle() const override { return context; }
    bool IsShared() const override { return false; }

private:
    bool ChooseConfig() {
        const bool surfaceless = epoxy_has_egl_extension(display, "EGL_KHR_surfaceless_context");
        if (surfaceless && epoxy_has_egl_extension(display, "EGL_KHR_no_config_context")) {
            return true;
        }
        const EGLint wanted[] = {EGL_SURFACE_TYPE,
                                 EGL_PBUFFER_BIT,
                                 EGL_RENDERABLE_TYPE,
                                 EGL_OPENGL_BIT,
                                 EGL_RED_SIZE,
                                 8,
                                 EGL_GREEN_SIZE,
                                 8,
                                 EGL_BLUE_SIZE,
                                 8,
                                 EGL_ALPHA_SIZE,
                                 8,
                                 EGL_NONE};
        EGLint count = 0;
        if (!eglChooseConfig(display, wanted, &config, 1, &count) || count < 1) return false;
        if (surfaceless) return true;
        const EGLint size[] = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
        surface = eglCreatePbufferSurface(display, config, size);
        return surface != EGL_NO_SURFACE;
    }

    bool CreateContext() {
        const EGLenum api = eglQueryAPI();
        if (!eglBindAPI(EGL_OPENGL_API)) return false;
        const EGLint attributes[] = {EGL_CONTEXT_MAJOR_VERSION,
                                     3,
                                     EGL_CONTEXT_MINOR_VERSION,
                                     3,
                                     EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                     EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                     EGL_NONE};
        context = eglCreateContext(display, config, EGL_NO_CONTEXT, attributes);
        eglBindAPI(api);
        return context != EGL_NO_CONTEXT;
    }

    EGLDisplay display = EGL_NO_DISPLAY;
    EGLConfig config = EGL_NO_CONFIG_KHR;
    EGLContext context = EGL_NO_CONTEXT;
    EGLSurface surface = EGL_NO_SURFACE;
    Previous previous;
};

}  // namespace

std::unique_ptr<GlContext> MakeOwnContext(const EngineLog& log) {
    for (const Candidate& candidate : Candidates()) {
        auto context = std::make_unique<OwnContext>();
        const char* reason = nullptr;
        if (!context->Open(candidate.display) || !context->Enter(reason)) continue;
        log.Info("engine: OpenGL %s on %s (%s)",
                 reinterpret_cast<const char*>(glGetString(GL_VERSION)),
                 reinterpret_cast<const char*>(glGetString(GL_RENDERER)), candidate.name);
        context->Leave();
        return context;
    }
    log.Error("engine: no EGL device gives an OpenGL 3.3 context");
    return nullptr;
}

}  // namespace kelmo
