// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/egl_test_context.h"

namespace kelmo::test {

EglTestContext::EglTestContext(Api api) {
    display = eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr)) return;
    const bool es = api == Api::kEs;
    eglBindAPI(es ? EGL_OPENGL_ES_API : EGL_OPENGL_API);
    const EGLint attributes[] = {EGL_CONTEXT_MAJOR_VERSION,
                                 3,
                                 EGL_CONTEXT_MINOR_VERSION,
                                 es ? 0 : 3,
                                 es ? EGL_NONE : EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                 EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                 EGL_NONE};
    context = eglCreateContext(display, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, attributes);
    if (IsValid()) MakeCurrent();
    eglBindAPI(EGL_OPENGL_API);
}

EglTestContext::~EglTestContext() {
    if (!IsValid()) return;
    if (IsCurrent()) Release();
    eglDestroyContext(display, context);
}

void EglTestContext::MakeCurrent() const {
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context);
}

void EglTestContext::Release() const {
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

}  // namespace kelmo::test
