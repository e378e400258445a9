// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <epoxy/egl.h>

namespace kelmo::test {

/// An OpenGL 3.3 core context (or one of OpenGL ES 3) without window, current on the constructing
/// thread until it is destroyed or released: what a host with a device has. Construct and destroy
/// on one thread.
class EglTestContext {
public:
    enum class Api { kDesktop, kEs };
    explicit EglTestContext(Api api = Api::kDesktop);
    ~EglTestContext();
    EglTestContext(const EglTestContext&) = delete;

    /// False when this machine gives no context: tests then skip, saying so.
    bool IsValid() const { return context != EGL_NO_CONTEXT; }
    void MakeCurrent() const;
    /// The thread has no context afterwards.
    void Release() const;
    bool IsCurrent() const { return eglGetCurrentContext() == context; }

private:
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
};

}  // namespace kelmo::test
