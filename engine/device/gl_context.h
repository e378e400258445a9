// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "engine/engine_log.h"

namespace kelmo {

/// How the engine comes by a current OpenGL context. Calls are serialised by the device.
class GlContext {
public:
    virtual ~GlContext() = default;
    /// Makes the context current on this thread. False when there is none; `reason` then says why.
    virtual bool Enter(const char*& reason) = 0;
    /// Ends `Enter`: the thread has again what it had before.
    virtual void Leave() = 0;
    /// Tells contexts apart: the handle of the one that is current between Enter and Leave.
    virtual void* Handle() const = 0;
    /// True when the context belongs to somebody else, whose state must be kept.
    virtual bool IsShared() const = 0;
};

/// The context that the host has made current on the calling thread (EGL or GLX).
std::unique_ptr<GlContext> MakeHostContext();

/// A context of our own without window. Devices are tried in this order: hardware through EGL's
/// device platform, the surfaceless platform, software devices, the default display with a 1x1
/// pbuffer. With LIBGL_ALWAYS_SOFTWARE in the environment hardware devices are left out. Null, and
/// a log line, when none gives OpenGL 3.3. The display stays initialised for the life of the
/// process: others may use the same one, and EGL does not count its users.
std::unique_ptr<GlContext> MakeOwnContext(const EngineLog& log);

}  // namespace kelmo
