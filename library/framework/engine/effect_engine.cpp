// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/engine/effect_engine.h"

#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/dynamic_library.h"
#include "platform/host_access.h"

namespace kelmo {

namespace {

std::atomic<bool> openGLDevice{false};
std::atomic<uint8_t> noOpenGLDevice{1};

/// The engine and the library that it came from. The lock serialises loading, so that two effects
/// prepared on two threads at once share one engine.
struct EngineState {
    std::mutex lock;
    std::string testFolder;
    /// All that ever gave an engine.
    std::vector<DynamicLibrary> libraries;
    CreateNLEOpenGLEffectEngineInstanceFn create = nullptr;
    DestroyNLEOpenGLEffectEngineInstanceFn destroy = nullptr;
    NLEOpenGLEffectEngine* engine = nullptr;
    /// Of the library that `create` belongs to.
    EngineKind kind = EngineKind::kNone;
    bool engineOfTest = false;
    bool loadedForDevice = false;
};

/// Never destroyed: the engine library has to stay loaded until the process ends, whatever the
/// order in which static objects go.
EngineState& State() {
    static EngineState& state = *new EngineState;
    return state;
}

NLEOpenGLEffectEngine* MakeEngine(CreateNLEOpenGLEffectEngineInstanceFn create) {
    NLEOpenGLEffectEngine* engine = nullptr;
    const int32_t result = create(&engine, ForwardLibraryLog, noOpenGLDevice, 0);
    return result == 0 ? engine : nullptr;
}

/// Loads one library and asks it for an engine. The state changes on success only.
bool LoadEngine(EngineState& state, const std::string& name, EngineKind kind) {
    DynamicLibrary library;
    std::string error;
    const std::string path = state.testFolder.empty() ? name : state.testFolder + "/" + name;
    if (!library.Open(path, error)) {
        LogWarning("kelmo:engine library: %s", error.c_str());
        return false;
    }
    const auto create = library.Symbol<CreateNLEOpenGLEffectEngineInstanceFn>(kCreateEngine);
    const auto destroy = library.Symbol<DestroyNLEOpenGLEffectEngineInstanceFn>(kDestroyEngine);
    if (!create || !destroy) {
        LogWarning("kelmo:engine library: %s lacks the export %s", path.c_str(),
                   create ? kDestroyEngine : kCreateEngine);
        return false;
    }
    NLEOpenGLEffectEngine* const engine = MakeEngine(create);
    if (!engine) return false;
    state.libraries.push_back(std::move(library));
    state.create = create;
    state.destroy = destroy;
    state.engine = engine;
    state.kind = kind;
    state.loadedForDevice = HasOpenGLDevice();
    return true;
}

bool LoadAnyEngine(EngineState& state) {
    if (HasOpenGLDevice()) {
        if (LoadEngine(state, "TZOpenGLEffectMgr.dll", EngineKind::kHost)) return true;
        LogError("load TZOpenGLEffectMgr.dll failed !");
        return false;
    }
    if (LoadEngine(state, "TZOpenGLEffectMgr-mesa.dll", EngineKind::kMesa)) return true;
    LogError("load TZOpenGLEffectMgr-mesa.dll failed !,try TZOpenGLEffectMgr-dx.dll");
    if (LoadEngine(state, "TZOpenGLEffectMgr-dx.dll", EngineKind::kDx)) return true;
    LogError("load TZOpenGLEffectMgr-dx.dll failed !,no opengl can use!l");
    return false;
}

void DestroyEngine(EngineState& state) {
    NLEOpenGLEffectEngine* const engine = std::exchange(state.engine, nullptr);
    if (engine && !state.engineOfTest) state.destroy(engine);
    state.engineOfTest = false;
}

void ForgetLibrary(EngineState& state) {
    state.create = nullptr;
    state.destroy = nullptr;
}

}  // namespace

bool HasOpenGLDevice() {
    return openGLDevice;
}

uint8_t NoOpenGLDevice() {
    return noOpenGLDevice;
}

void SetOpenGLDevice(bool found) {
    openGLDevice = found;
    noOpenGLDevice = found ? 0 : 1;
}

NLEOpenGLEffectEngine* AcquireEffectEngine() {
    EngineState& state = State();
    const std::lock_guard guard(state.lock);
    if (state.engine) return state.engine;
    // A host that starts again with another device needs the other library.
    if (state.create && state.loadedForDevice != HasOpenGLDevice()) ForgetLibrary(state);
    if (state.create) {
        state.engine = MakeEngine(state.create);
        if (!state.engine) ForgetLibrary(state);
    }
    if (!state.create) LoadAnyEngine(state);
    return state.engine;
}

NLEOpenGLEffectEngine* PresentEffectEngine() {
    EngineState& state = State();
    const std::lock_guard guard(state.lock);
    return state.engine;
}

EngineKind LoadedEngineKind() {
    EngineState& state = State();
    const std::lock_guard guard(state.lock);
    return state.engine ? state.kind : EngineKind::kNone;
}

void ShutdownEffectEngine() {
    EngineState& state = State();
    const std::lock_guard guard(state.lock);
    DestroyEngine(state);
}

void SetEngineForTesting(NLEOpenGLEffectEngine* engine, EngineKind kind) {
    EngineState& state = State();
    const std::lock_guard guard(state.lock);
    DestroyEngine(state);
    state.engine = engine;
    state.kind = engine ? kind : EngineKind::kNone;
    state.engineOfTest = engine != nullptr;
}

void SetEngineFolderForTesting(const std::string& folder) {
    EngineState& state = State();
    const std::lock_guard guard(state.lock);
    DestroyEngine(state);
    ForgetLibrary(state);
    state.testFolder = folder;
}

}  // namespace kelmo
