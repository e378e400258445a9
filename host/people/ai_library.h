// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "contract/ai_filter.h"
#include "host/media/picture/picture.h"
#include "host/session/dynamic_library.h"
#include "host/session/host_services.h"

namespace kelmo::host {

/// Filters of the AI library.
inline constexpr const char* kAiMaskFilter = "974A1C95-921E-4D28-89D5-23B7B249589A";
inline constexpr const char* kAiFaceFilter = "0C670CEA-AF42-4309-B86B-7A3169EAC541";
inline constexpr const char* kAiBodyFilter = "02E5BBF3-8C49-4392-9B0F-5B72E56FC762";

/// The AI library, used by the host itself. It stays in the process, since threads of it may run.
///
/// Thread rule: filters are independent of each other; one filter, one thread. The library outlives
/// its filters.
class AiLibrary {
public:
    /// One filter with its memory of the frames that it has seen.
    class Filter {
    public:
        ~Filter();
        Filter(const Filter&) = delete;
        Filter& operator=(const Filter&) = delete;

        /// Coverage of the people in every channel of `mask`, which gets the picture's size. False
        /// when the library failed; the mask is empty (all 0) then.
        bool Mask(const Picture& picture, Picture& mask);
        /// What the filter found, of the class that is expected; null when it failed. Valid as long
        /// as the result is held.
        template <typename Record>
        std::shared_ptr<Record> Analyse(const Picture& picture) {
            return std::dynamic_pointer_cast<Record>(Result(picture));
        }

    private:
        friend class AiLibrary;
        Filter(const AiLibrary& library, void* created) : owner(library), handle(created) {}
        std::shared_ptr<AIDATA::BaseAIDATA> Result(const Picture& picture);

        const AiLibrary& owner;
        void* handle;
    };

    /// `folder` holds the library, `resources` is the resource folder that its filters are told.
    /// Lines of the library go to `log` when it is given, from any thread and one at a time, and
    /// nowhere from this object's end on: there is one receiver in a process, and a started plug-in
    /// is it. Throws HostError that says what is missing.
    AiLibrary(const std::string& folder, std::string resources, LogSink log = {});
    ~AiLibrary();
    AiLibrary(const AiLibrary&) = delete;
    AiLibrary& operator=(const AiLibrary&) = delete;

    /// Throws HostError when the library does not make it, with the advice of `kelmo doctor`.
    std::unique_ptr<Filter> Make(const char* guid) const;

private:
    DynamicLibrary library;
    std::string resources;
    CreateNLEAIEffectFilterFromGUIDFn create = nullptr;
    DeleteNLEAIEffectFilterFn destroy = nullptr;
    NLEEffectFilterTransformFn transform = nullptr;
    NLEEffectFilterGetAIResDataFn result = nullptr;
    SetNLEAIEffectFilterLogCallbackFn setLog = nullptr;  // null: lines are another's
};

}  // namespace kelmo::host
