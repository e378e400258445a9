// SPDX-License-Identifier: GPL-3.0-or-later
#include "bindings/ai_effect_lib.h"

#include <utility>
#include <vector>

#include "platform/dynamic_library.h"
#include "platform/host_access.h"

namespace kelmo {

namespace {

/// The exports as they were found, null where missing.
struct Exports {
    SetNLEAIEffectFilterLogCallbackFn setLog = nullptr;
    CreateNLEAIEffectFilterFromGUIDFn create = nullptr;
    DeleteNLEAIEffectFilterFn destroy = nullptr;
    NLEEffectFilterTransformFn transform = nullptr;
    NLEEffectFilterSetParameterFn setParameter = nullptr;
    NLEEffectFilterGetAIResDataFn getResult = nullptr;

    bool Usable() const { return create && transform && setParameter && getResult; }
};

struct Binding {
    /// Every library that was ever usable: handles of effects may live in each of them.
    std::vector<DynamicLibrary> libraries;
    Exports exports;
    NLEAIEffectLib table = NLEAIEffectLib::Stubs();
};

/// Never destroyed: handles of effects may outlive static objects, and so must the library.
Binding& State() {
    static Binding& binding = *new Binding;
    return binding;
}

Exports FindExports(const DynamicLibrary& library) {
    Exports found;
    found.setLog =
        library.Symbol<SetNLEAIEffectFilterLogCallbackFn>("SetNLEAIEffectFilterLogCallback");
    found.create =
        library.Symbol<CreateNLEAIEffectFilterFromGUIDFn>("CreateNLEAIEffectFilterFromGUID");
    found.destroy = library.Symbol<DeleteNLEAIEffectFilterFn>("DeleteNLEAIEffectFilter");
    found.transform = library.Symbol<NLEEffectFilterTransformFn>("NLEEffectFilterTransform");
    found.setParameter =
        library.Symbol<NLEEffectFilterSetParameterFn>("NLEEffectFilterSetParameter");
    found.getResult = library.Symbol<NLEEffectFilterGetAIResDataFn>("NLEEffectFilterGetAIResData");
    return found;
}

/// The real functions, each behind a guard for an export that is missing.
NLEAIEffectLib BoundTable(const Exports& exports) {
    NLEAIEffectLib table;
    table.createFilter = [create = exports.create](const char* guid) -> void* {
        return create ? create(guid, HostPath(kPathResources).c_str()) : nullptr;
    };
    table.deleteFilter = [destroy = exports.destroy](void** handle) {
        if (destroy) destroy(handle);
    };
    table.transform = [transform = exports.transform](void* handle, const AIImage& out,
                                                      const AIImage& middle,
                                                      const AIImage& in) -> int32_t {
        if (!transform) return 1;
        return transform(handle, out.pixels, out.width, out.height, out.stride, middle.pixels,
                         middle.width, middle.height, middle.stride, in.pixels, in.width, in.height,
                         in.stride);
    };
    table.setParameter = [set = exports.setParameter](void* handle, const char* name, int32_t type,
                                                      NLEParamValue value) -> int32_t {
        return set ? set(handle, name, type, std::move(value)) : 1;
    };
    table.getResult = [get = exports.getResult](
                          void* handle, std::shared_ptr<AIDATA::BaseAIDATA>& data) -> int32_t {
        return get ? get(handle, &data) : 1;
    };
    return table;
}

}  // namespace

NLEAIEffectLib NLEAIEffectLib::Stubs() {
    NLEAIEffectLib table;
    table.createFilter = [](const char*) -> void* { return nullptr; };
    table.deleteFilter = [](void**) {};
    table.transform = [](void*, const AIImage&, const AIImage&, const AIImage&) { return 0; };
    table.setParameter = [](void*, const char*, int32_t, NLEParamValue) { return 0; };
    table.getResult = [](void*, std::shared_ptr<AIDATA::BaseAIDATA>&) { return 0; };
    return table;
}

const NLEAIEffectLib& AIEffectLib() {
    return State().table;
}

bool InitLoadNLEAIEffectFilterLib(const std::string& folder, LibraryLogCallback logCallback) {
    Binding& state = State();
    // Without the delete export a repeated call looks again: a newer file may have it.
    if (state.exports.Usable() && state.exports.destroy) return true;
    DynamicLibrary library;
    std::string error;
    Exports found;
    if (library.Open(folder + "/qorAiFilterPlugin.qor", error)) found = FindExports(library);
    if (!found.Usable()) return false;
    if (found.setLog) found.setLog(logCallback);
    state.libraries.push_back(std::move(library));
    state.exports = found;
    return true;
}

bool InstallAIEffectLib() {
    const bool usable = InitLoadNLEAIEffectFilterLib(HostPath(kPathPlugin), ForwardLibraryLog);
    if (!usable) LogError("NLEAIEffectLib::InitLoadNLEAIEffectFilterLib failed");
    State().table = usable ? BoundTable(State().exports) : NLEAIEffectLib::Stubs();
    return usable;
}

void SetAIEffectLibForTesting(NLEAIEffectLib table) {
    State().table = std::move(table);
}

void ForgetAIEffectLibForTesting() {
    State() = Binding();
}

}  // namespace kelmo
