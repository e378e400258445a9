// SPDX-License-Identifier: GPL-3.0-or-later
#include "bindings/sense_time_symbols.h"

#include <cstdio>

namespace THIRD_LIBRARY_IMPORT {
namespace {

template <typename Function>
bool BindOne(Function& place, const char* symbol, const std::string& library,
             const SenseTimeSymbols::Lookup& find) {
    place = reinterpret_cast<Function>(find(symbol));
    if (!place) std::printf("load func (%s) from (%s) failed!\n", symbol, library.c_str());
    return place != nullptr;
}

}  // namespace

bool SenseTimeSymbols::LoadSymbols() {
    return Bind([this](const char* symbol) { return module.Symbol<void*>(symbol); });
}

bool SenseTimeSymbols::Bind(const Lookup& find) {
#define KELMO_FACE_SDK_BIND(NAME) \
    if (!BindOne(NAME, #NAME, name, find)) return false;
    KELMO_FACE_SDK_FUNCTIONS(KELMO_FACE_SDK_BIND)
#undef KELMO_FACE_SDK_BIND
    return true;
}

}  // namespace THIRD_LIBRARY_IMPORT
