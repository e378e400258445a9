// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kelmo {

/// Makes the GL functions of the context that is current on this thread callable, and checks that
/// there is one: false without a current context, or with one below OpenGL 3.3 (ES 3.0), which the
/// log tells. Entry points are looked up one by one on their first use, so this costs next to
/// nothing when it is called again. Call it on the render thread.
bool LoadGLEntryPoints();

}  // namespace kelmo
