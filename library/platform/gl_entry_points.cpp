// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gl_entry_points.h"

#include <epoxy/gl.h>

#include "platform/host_access.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace kelmo {
namespace {

#ifdef _WIN32

bool HasCurrentContext() {
    return wglGetCurrentContext() != nullptr;
}

#else

// Asks a window-system library only when the process has loaded it, which whoever made a context
// has: nothing is pulled in here, and a machine without GLX or EGL is no error.
bool HasCurrentContext(const char* library, const char* getCurrentContext) {
    void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
    if (handle == nullptr) {
        return false;
    }
    using GetCurrentContextFn = void* (*)();
    const auto get = reinterpret_cast<GetCurrentContextFn>(dlsym(handle, getCurrentContext));
    const bool current = get != nullptr && get() != nullptr;
    dlclose(handle);
    return current;
}

// The GL loader ends the process when a GL function is used without a context, so the
// window-system side is asked first.
bool HasCurrentContext() {
    return HasCurrentContext("libEGL.so.1", "eglGetCurrentContext") ||
           HasCurrentContext("libGLX.so.0", "glXGetCurrentContext") ||
           HasCurrentContext("libGL.so.1", "glXGetCurrentContext");
}

#endif

}  // namespace

bool LoadGLEntryPoints() {
    if (!HasCurrentContext()) {
        return false;
    }
    // 33 = OpenGL 3.3, 30 = OpenGL ES 3.0.
    const int version = epoxy_gl_version();
    if (version < (epoxy_is_desktop_gl() ? 33 : 30)) {
        LogError("kelmo: OpenGL %d.%d is too old, 3.3 is needed", version / 10, version % 10);
        return false;
    }
    return true;
}

}  // namespace kelmo
