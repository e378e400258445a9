// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/gl_device.h"

#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include <cstring>
#include <vector>

#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

struct Candidate {
    EGLDisplay display = EGL_NO_DISPLAY;
    std::string platform;
};

bool IsSoftware(EGLDeviceEXT device) {
    if (!epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_device_query")) return false;
    const char* extensions = eglQueryDeviceStringEXT(device, EGL_EXTENSIONS);
    return extensions != nullptr && std::strstr(extensions, "EGL_MESA_device_software") != nullptr;
}

/// Graphics cards first, then displays that need none.
std::vector<Candidate> Candidates() {
    std::vector<Candidate> found;
    if (epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_device_enumeration") &&
        epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_platform_device")) {
        EGLDeviceEXT devices[16];
        EGLint count = 0;
        if (eglQueryDevicesEXT(16, devices, &count)) {
            for (EGLint i = 0; i < count; ++i) {
                if (IsSoftware(devices[i])) continue;
                found.push_back(
                    {eglGetPlatformDisplayEXT(EGL_PLATFORM_DEVICE_EXT, devices[i], nullptr),
                     "device " + std::to_string(i)});
            }
        }
    }
    if (epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless")) {
        found.push_back(
            {eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr),
             "surfaceless"});
    }
    found.push_back({eglGetDisplay(EGL_DEFAULT_DISPLAY), "default display"});
    return found;
}

EGLContext CreateContext(EGLDisplay display) {
    if (!eglBindAPI(EGL_OPENGL_API)) return EGL_NO_CONTEXT;
    const EGLint wish[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                           EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!epoxy_has_egl_extension(display, "EGL_KHR_no_config_context") &&
        (!eglChooseConfig(display, wish, &config, 1, &count) || count == 0)) {
        return EGL_NO_CONTEXT;
    }
    const EGLint attributes[] = {EGL_CONTEXT_MAJOR_VERSION,
                                 3,
                                 EGL_CONTEXT_MINOR_VERSION,
                                 3,
                                 EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                 EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                 EGL_NONE};
    return eglCreateContext(display, config, EGL_NO_CONTEXT, attributes);
}

std::string GlText(GLenum name) {
    const GLubyte* text = glGetString(name);
    return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

}  // namespace

bool GlDevice::Open(void* eglDisplay, const std::string& platform) {
    if (eglDisplay == EGL_NO_DISPLAY || !eglInitialize(eglDisplay, nullptr, nullptr)) return false;
    const EGLContext made = CreateContext(eglDisplay);
    if (made == EGL_NO_CONTEXT ||
        !eglMakeCurrent(eglDisplay, EGL_NO_SURFACE, EGL_NO_SURFACE, made)) {
        if (made != EGL_NO_CONTEXT) eglDestroyContext(eglDisplay, made);
        return false;
    }
    display = eglDisplay;
    context = made;
    info = {GlText(GL_RENDERER), GlText(GL_VENDOR), GlText(GL_VERSION), platform};
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largestSide);
    return true;
}

std::unique_ptr<GlDevice> GlDevice::Create() {
    std::unique_ptr<GlDevice> device(new GlDevice);
    for (const Candidate& candidate : Candidates()) {
        if (device->Open(candidate.display, candidate.platform)) return device;
    }
    throw HostError(
        "no OpenGL 3.3 context without a window: install a graphics driver with EGL (Debian: "
        "libegl-mesa0, libgl1-mesa-dri) or leave out --gpu");
}

// The display stays initialised: it is one of the process, and an engine may have it open too.
GlDevice::~GlDevice() {
    if (context == nullptr) return;
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display, context);
}

}  // namespace kelmo::host
