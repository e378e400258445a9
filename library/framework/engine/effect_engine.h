// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "contract/engine.h"

/// The engine that runs all shaders: one per process, from the first effect to the shutdown.
///
/// All functions may be called from any thread; who asks while another thread loads waits for it.
/// The host is asked for its folder, and gets log lines, under that lock: contract/qor_host.h tells
/// hosts what they must not hold meanwhile.
/// The engine stays this file's. An engine library stays loaded until the process ends, because
/// effects may outlive the engine.
namespace kelmo {

/// Whether the host has an OpenGL device. False until start-up has seen one.
bool HasOpenGLDevice();
/// The byte that the engine library gets: 1 when it must bring its own context. Starts as 1.
uint8_t NoOpenGLDevice();
/// Called at start-up; holds until the library is unloaded.
void SetOpenGLDevice(bool found);

/// The engine, made on the first call, or null when no library gives one. With a device that is
/// TZOpenGLEffectMgr; without, TZOpenGLEffectMgr-mesa and then TZOpenGLEffectMgr-dx. They are
/// looked for beside this library, in the host's plug-in folder, and where the system looks. A
/// library that lacks an export, or that refuses, is released again. A failed search is logged and
/// repeated by the next call, so that an effect can be prepared again once the library is there.
NLEOpenGLEffectEngine* AcquireEffectEngine();
/// The engine if there is one; nothing is looked for.
NLEOpenGLEffectEngine* PresentEffectEngine();

/// Which library the engine comes from.
enum class EngineKind { kNone, kHost, kMesa, kDx };
EngineKind LoadedEngineKind();

/// Destroys the engine, if there is one. The library stays loaded; a later `AcquireEffectEngine`
/// asks it for a new engine, and looks for another library when it refuses.
void ShutdownEffectEngine();

/// Puts an engine of a test in the place of a loaded one; null takes it away again. It stays the
/// test's, and `ShutdownEffectEngine` merely forgets it.
void SetEngineForTesting(NLEOpenGLEffectEngine* engine, EngineKind kind = EngineKind::kHost);
/// Looks for engine libraries in this folder alone; empty restores the usual places. Forgets a
/// library that was loaded before.
void SetEngineFolderForTesting(const std::string& folder);

}  // namespace kelmo
