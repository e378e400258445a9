// SPDX-License-Identifier: GPL-3.0-or-later
#include "bindings/libary_symbols.h"

#include <cstdio>
#include <utility>

namespace THIRD_LIBRARY_IMPORT {

LibarySymbols::LibarySymbols(std::string libraryName) : name(std::move(libraryName)) {}

LibarySymbols::~LibarySymbols() = default;

bool LibarySymbols::Load() {
    if (module.IsOpen()) return true;
    std::string error;
    if (module.Open(name, error) && LoadSymbols()) return true;
    std::printf("load lib: %s error\n", name.c_str());
    return false;
}

}  // namespace THIRD_LIBRARY_IMPORT
