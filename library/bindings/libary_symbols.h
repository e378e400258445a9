// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/dynamic_library.h"

namespace THIRD_LIBRARY_IMPORT {

/// Functions of a library that is loaded at run time. Owns the library: it is released with this
/// object, and the functions must not be called afterwards.
class LibarySymbols {
public:
    /// `libraryName` as on Windows, found where the system and our own folder have it.
    explicit LibarySymbols(std::string libraryName);
    virtual ~LibarySymbols();
    LibarySymbols(const LibarySymbols&) = delete;
    LibarySymbols& operator=(const LibarySymbols&) = delete;

    /// Finds the functions of the loaded library; false when one is missing.
    virtual bool LoadSymbols() = 0;

    /// Loads the library unless it is loaded already. False, with a line on the standard output,
    /// when it or one of its functions is missing.
    bool Load();
    bool IsLoaded() const { return module.IsOpen(); }

protected:
    std::string name;
    kelmo::DynamicLibrary module;
};

}  // namespace THIRD_LIBRARY_IMPORT
