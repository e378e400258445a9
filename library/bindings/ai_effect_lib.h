// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "contract/ai_filter.h"

namespace kelmo {

/// A picture of 8-bit samples at the AI library's door: `stride` in bytes. Null pixels and zeros
/// say that there is none.
struct AIImage {
    void* pixels = nullptr;
    int32_t width = 0;
    int32_t height = 0;
    int32_t stride = 0;
};

/// The library's AI filters behind one table that works whether the sibling library
/// `qorAiFilterPlugin.qor` is there or not: person masks, faces, poses.
///
/// Filled once at start-up, before any effect exists, and only read afterwards. Effects call it on
/// their render thread, most of them through an `AIFilterHandle`. The stubs that it starts with:
/// `createFilter` gives null, `deleteFilter` does nothing, the others give 0 and touch nothing.
struct NLEAIEffectLib {
    /// A filter by its GUID (36 characters with dashes), or null.
    std::function<void*(const char* guid)> createFilter;
    /// Ends a filter and clears the caller's variable.
    std::function<void(void** handle)> deleteFilter;
    /// Mask filters write a mask, 4 channels, at the size of `output`; others get null output
    /// pixels with the size of the effect. `middle` is a second input, mostly none.
    std::function<int32_t(void* handle, const AIImage& output, const AIImage& middle,
                          const AIImage& input)>
        transform;
    std::function<int32_t(void* handle, const char* name, int32_t type, NLEParamValue value)>
        setParameter;
    /// 0 and the record of the last transform; the pointer may stay empty.
    std::function<int32_t(void* handle, std::shared_ptr<AIDATA::BaseAIDATA>& data)> getResult;

    /// A table of stubs.
    static NLEAIEffectLib Stubs();
};

/// The table in use.
const NLEAIEffectLib& AIEffectLib();

/// Loads `qorAiFilterPlugin.qor` from a folder and checks its exports; the delete export may be
/// missing, the log export too. True when the library is usable; it is then loaded until the
/// process ends, and further calls find it known. False: nothing of it stays loaded.
bool InitLoadNLEAIEffectFilterLib(const std::string& folder, LibraryLogCallback logCallback);

/// The step of start-up: loads the library from the host's plug-in folder and fills the table; with
/// stubs, and a line in the log, when that fails. Returns whether the library is there.
bool InstallAIEffectLib();

/// Puts a table of a test in place; every entry must be callable.
void SetAIEffectLibForTesting(NLEAIEffectLib table);
/// Releases the library and restores the stubs, so that a test can load another one.
void ForgetAIEffectLibForTesting();

}  // namespace kelmo
