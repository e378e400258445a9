// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace kelmo {

/// The file name that a library has on this system. Names are written once, in their Windows form
/// ("st_mobile.dll"); elsewhere the ending is exchanged ("st_mobile.so" on Linux). Other endings,
/// such as ".qor", and folders in front stay as they are.
std::string SystemLibraryName(std::string_view name);

/// The folder of the binary that this code was linked into, with its trailing separator; empty when
/// the system cannot tell.
std::string OwnLibraryFolder();

/// A library loaded at run time; released when the object goes. Movable, one owner.
///
/// Thread rule: as for any value; `Symbol` may be called from several threads at once.
class DynamicLibrary {
public:
    DynamicLibrary() = default;
    ~DynamicLibrary();
    DynamicLibrary(DynamicLibrary&& other) noexcept;
    DynamicLibrary& operator=(DynamicLibrary&& other) noexcept;
    DynamicLibrary(const DynamicLibrary&) = delete;
    DynamicLibrary& operator=(const DynamicLibrary&) = delete;

    /// Loads a library, UTF-8, after `SystemLibraryName`. A name with a folder is taken as it is. A
    /// bare name is looked for in our own folder, then in the host's plug-in folder, then wherever
    /// the system looks. What was open before is released first. On failure false, and `error` says
    /// why, each place with its reason.
    ///
    /// A file that exists but does not load ends the search: a broken neighbour is reported, not
    /// hidden by a stranger of the same name.
    bool Open(std::string_view name, std::string& error);

    void Release();
    bool IsOpen() const { return handle != nullptr; }

    /// The exported function or object, or null. T is a pointer type.
    template <typename T>
    T Symbol(const char* name) const {
        return reinterpret_cast<T>(Address(name));
    }

private:
    void* Address(const char* name) const;

    void* handle = nullptr;
};

}  // namespace kelmo
