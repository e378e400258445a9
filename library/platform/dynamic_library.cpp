// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dynamic_library.h"

#include <utility>
#include <vector>

#include "platform/file_system.h"
#include "platform/host_access.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace kelmo {
namespace {

#ifdef _WIN32

void* OpenHandle(const std::string& path, std::string& error) {
    const HMODULE module = LoadLibraryW(NativePath(path).c_str());
    if (module == nullptr) {
        error = path + ": error " + std::to_string(GetLastError());
    }
    return module;
}

void CloseHandleOf(void* handle) {
    FreeLibrary(static_cast<HMODULE>(handle));
}

void* FindSymbol(void* handle, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle), name));
}

std::string OwnLibraryPath() {
    HMODULE module = nullptr;
    wchar_t buffer[32768];
    if (!GetModuleHandleExW(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<LPCWSTR>(&OwnLibraryFolder), &module)) {
        return {};
    }
    const DWORD length = GetModuleFileNameW(module, buffer, std::size(buffer));
    return Utf8Path(std::filesystem::path(std::wstring(buffer, length)));
}

#else

void* OpenHandle(const std::string& path, std::string& error) {
    // RTLD_LOCAL: two plug-ins that carry the same helper library must not mix their symbols.
    void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        const char* const reason = dlerror();
        error = reason != nullptr ? reason : path + ": not loaded";
    }
    return handle;
}

void CloseHandleOf(void* handle) {
    dlclose(handle);
}

void* FindSymbol(void* handle, const char* name) {
    return dlsym(handle, name);
}

std::string OwnLibraryPath() {
    Dl_info info = {};
    if (dladdr(reinterpret_cast<void*>(&OwnLibraryFolder), &info) == 0 ||
        info.dli_fname == nullptr) {
        return {};
    }
    return info.dli_fname;
}

#endif

bool HasFolder(std::string_view name) {
    return name.find_first_of("/\\") != std::string_view::npos;
}

// Places in order of search; the bare name is the system's own search.
std::vector<std::string> Candidates(const std::string& name) {
    if (HasFolder(name)) {
        return {name};
    }
    std::vector<std::string> places;
    for (const std::string& folder : {OwnLibraryFolder(), HostPath(kPathPlugin)}) {
        if (!folder.empty()) {
            const bool ended = HasFolder(std::string_view(folder).substr(folder.size() - 1));
            places.push_back(folder + (ended ? "" : "/") + name);
        }
    }
    places.push_back(name);
    return places;
}

}  // namespace

std::string SystemLibraryName(std::string_view name) {
#if defined(_WIN32)
    return std::string(name);
#else
    constexpr std::string_view kWindowsEnding = ".dll";
#if defined(__APPLE__)
    constexpr std::string_view kEnding = ".dylib";
#else
    constexpr std::string_view kEnding = ".so";
#endif
    if (!name.ends_with(kWindowsEnding)) {
        return std::string(name);
    }
    name.remove_suffix(kWindowsEnding.size());
    return std::string(name).append(kEnding);
#endif
}

std::string OwnLibraryFolder() {
    return FolderOf(OwnLibraryPath());
}

DynamicLibrary::~DynamicLibrary() {
    Release();
}

DynamicLibrary::DynamicLibrary(DynamicLibrary&& other) noexcept
    : handle(std::exchange(other.handle, nullptr)) {}

DynamicLibrary& DynamicLibrary::operator=(DynamicLibrary&& other) noexcept {
    if (this != &other) {
        Release();
        handle = std::exchange(other.handle, nullptr);
    }
    return *this;
}

bool DynamicLibrary::Open(std::string_view name, std::string& error) {
    Release();
    error.clear();
    if (name.empty()) {
        // The system would answer with the program itself.
        error = "a library without a name";
        return false;
    }
    for (const std::string& place : Candidates(SystemLibraryName(name))) {
        const bool searchedBySystem = !HasFolder(place);
        if (!searchedBySystem && !FileExists(place)) {
            error += (error.empty() ? "" : "; ") + place + ": no such file";
            continue;
        }
        std::string reason;
        handle = OpenHandle(place, reason);
        if (handle != nullptr) {
            error.clear();
            return true;
        }
        error += (error.empty() ? "" : "; ") + reason;
        if (!searchedBySystem) {
            return false;
        }
    }
    return false;
}

void DynamicLibrary::Release() {
    if (handle != nullptr) {
        CloseHandleOf(std::exchange(handle, nullptr));
    }
}

void* DynamicLibrary::Address(const char* name) const {
    return handle == nullptr ? nullptr : FindSymbol(handle, name);
}

}  // namespace kelmo
