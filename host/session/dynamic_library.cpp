// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/dynamic_library.h"

#include <dlfcn.h>

#include <filesystem>

#include "host/session/host_error.h"

namespace kelmo::host {

void DynamicLibrary::Closer::operator()(void* handle) const {
    dlclose(handle);
}

DynamicLibrary DynamicLibrary::Load(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        throw HostError("library " + path + " does not exist");
    }
    // Local: two libraries of the same export names must not see each other's.
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        const char* reason = dlerror();
        throw HostError("library " + path + " does not load: " + (reason ? reason : "no reason"));
    }
    return DynamicLibrary(handle);
}

void* DynamicLibrary::Find(const char* name) const {
    void* opened = handle ? handle.get() : kept;
    return opened == nullptr ? nullptr : dlsym(opened, name);
}

void DynamicLibrary::KeepLoaded() {
    if (handle) kept = handle.release();
}

}  // namespace kelmo::host
