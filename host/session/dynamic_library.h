// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

namespace kelmo::host {

/// A library loaded at run time, held open as long as this object lives.
class DynamicLibrary {
public:
    /// Throws HostError that names the file and the system's reason.
    static DynamicLibrary Load(const std::string& path);

    /// Null when the library does not export the name.
    void* Find(const char* name) const;
    template <typename Function>
    Function FindFunction(const char* name) const {
        return reinterpret_cast<Function>(Find(name));
    }

    /// Leaves the library in the process for good: code of it may still run (threads, destructors
    /// of thread-local objects) when this object goes.
    void KeepLoaded();

private:
    struct Closer {
        void operator()(void* handle) const;
    };
    explicit DynamicLibrary(void* opened) : handle(opened) {}
    std::unique_ptr<void, Closer> handle;
    void* kept = nullptr;
};

}  // namespace kelmo::host
