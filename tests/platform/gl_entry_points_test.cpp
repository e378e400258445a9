// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gl_entry_points.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <gtest/gtest.h>

namespace kelmo {
namespace {

TEST(GLEntryPoints, AreRefusedWithoutAContext) {
    EXPECT_FALSE(LoadGLEntryPoints());
}

TEST(GLEntryPoints, LoadWithAContext) {
    const auto getDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        eglGetProcAddress("eglGetPlatformDisplayEXT"));
    ASSERT_NE(getDisplay, nullptr);
    const EGLDisplay display =
        getDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr)) {
        GTEST_SKIP() << "no EGL display without a window on this machine";
    }
    eglBindAPI(EGL_OPENGL_API);
    const EGLint attributes[] = {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 3,
                                 EGL_NONE};
    const EGLContext context =
        eglCreateContext(display, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, attributes);
    ASSERT_NE(context, EGL_NO_CONTEXT);
    ASSERT_TRUE(eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context));
    EXPECT_TRUE(LoadGLEntryPoints());
    EXPECT_TRUE(LoadGLEntryPoints());
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    EXPECT_FALSE(LoadGLEntryPoints());
    eglDestroyContext(display, context);
    eglTerminate(display);
}

}  // namespace
}  // namespace kelmo
