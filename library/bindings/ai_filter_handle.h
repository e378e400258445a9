// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "bindings/ai_effect_lib.h"

namespace kelmo {

/// The AI library's own identifiers of its filters.
inline constexpr const char* kAIMaskFilter = "2193B116-1AD4-49F4-84A1-FFA3CB983A94";
/// A mask with "Edge Thickness" and "Edge Feather".
inline constexpr const char* kAIEdgeMaskFilter = "974A1C95-921E-4D28-89D5-23B7B249589A";
inline constexpr const char* kAIFaceFilter = "0C670CEA-AF42-4309-B86B-7A3169EAC541";
inline constexpr const char* kAIFaceShockFilter = "AD36FDCA-6B5E-4399-8625-DE97EBF12E41";
inline constexpr const char* kAIPoseFilter = "02E5BBF3-8C49-4392-9B0F-5B72E56FC762";

/// One filter of the AI library, owned: made with its effect, ended with it. Null without the
/// library. Used on the effect's render thread.
class AIFilterHandle {
public:
    explicit AIFilterHandle(const char* guid) : handle(AIEffectLib().createFilter(guid)) {}
    ~AIFilterHandle() {
        if (handle) AIEffectLib().deleteFilter(&handle);
    }
    AIFilterHandle(const AIFilterHandle&) = delete;
    AIFilterHandle& operator=(const AIFilterHandle&) = delete;

    void* Get() const { return handle; }
    explicit operator bool() const { return handle != nullptr; }

    void SetFloat(const char* name, float value) const {
        AIEffectLib().setParameter(handle, name, kParamFloat, NLEParamValue::Float(value));
    }

    /// Runs a face or pose filter on a picture and gives its record, kept by the caller for this
    /// frame; null when the library has nothing, or a record of another class. `effectSize` carries
    /// width, height and stride of the effect, its pixels are null.
    template <typename Record>
    std::shared_ptr<Record> Analyse(const AIImage& effectSize, const AIImage& input) const {
        if (!handle) return nullptr;
        AIEffectLib().transform(handle, effectSize, AIImage(), input);
        std::shared_ptr<AIDATA::BaseAIDATA> data;
        if (AIEffectLib().getResult(handle, data) != 0) return nullptr;
        return std::dynamic_pointer_cast<Record>(data);
    }

private:
    void* handle;
};

}  // namespace kelmo
