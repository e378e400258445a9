// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

namespace kelmo {

/// Parameter type codes used between the plug-in, its effects and the AI library.
enum ParamType : int32_t {
    kParamNone = 0,
    kParamBool = 1,
    kParamDouble = 2,
    kParamFloat = 3,
    kParamInt = 5,
    kParamText = 6,
    kParamPointer = 7,
};

/// The host's own numbering of the same types (`QorValue::type`).
enum HostType : int32_t {
    kHostInt = 3,
    kHostFloat = 5,
    kHostDouble = 6,
    kHostBool = 7,
    kHostText = 8,
    kHostPointer = 9,
};

/// Host code of a parameter type, 0 when there is none.
constexpr int32_t HostTypeOf(int32_t paramType) {
    switch (paramType) {
        case kParamBool:
            return kHostBool;
        case kParamDouble:
            return kHostDouble;
        case kParamFloat:
            return kHostFloat;
        case kParamInt:
            return kHostInt;
        case kParamText:
            return kHostText;
        case kParamPointer:
            return kHostPointer;
        default:
            return 0;
    }
}

/// One typed value. Everything of `data` is zero, `text` empty and `type` 0 in an empty value.
/// A text longer than 511 bytes is cut in `data` and kept whole in `text`.
struct NLEParamValue {
    static constexpr std::size_t kDataSize = 512;

    alignas(8) unsigned char data[kDataSize] = {};
    std::string text;
    int32_t type = kParamNone;

    static NLEParamValue Bool(bool v) { return Of(static_cast<uint8_t>(v), kParamBool); }
    static NLEParamValue Double(double v) { return Of(v, kParamDouble); }
    static NLEParamValue Float(float v) { return Of(v, kParamFloat); }
    static NLEParamValue Int(int32_t v) { return Of(v, kParamInt); }
    static NLEParamValue Pointer(void* v) { return Of(v, kParamPointer); }
    static NLEParamValue Text(std::string_view v) {
        NLEParamValue value;
        value.type = kParamText;
        value.SetDataText(v);
        value.text = v;
        return value;
    }

    bool AsBool() const { return Get<uint8_t>() != 0; }
    double AsDouble() const { return Get<double>(); }
    float AsFloat() const { return Get<float>(); }
    int32_t AsInt() const { return Get<int32_t>(); }
    void* AsPointer() const { return Get<void*>(); }
    /// The NUL-terminated text in `data`.
    const char* AsText() const { return reinterpret_cast<const char*>(data); }

    /// The first bytes of `data` as a T.
    template <typename T>
    T Get() const {
        static_assert(std::is_trivially_copyable_v<T> && sizeof(T) <= kDataSize);
        T v;
        std::memcpy(&v, data, sizeof v);
        return v;
    }
    /// Overwrites the first bytes of `data`.
    template <typename T>
    void Put(const T& v) {
        static_assert(std::is_trivially_copyable_v<T> && sizeof(T) <= kDataSize);
        std::memcpy(data, &v, sizeof v);
    }
    /// Copies at most 511 bytes into `data` and terminates them; `text` and `type` stay.
    void SetDataText(std::string_view v) {
        const std::size_t n = std::min(v.size(), kDataSize - 1);
        std::memcpy(data, v.data(), n);
        data[n] = 0;
    }

private:
    template <typename T>
    static NLEParamValue Of(T v, int32_t type) {
        NLEParamValue value;
        value.Put(v);
        value.type = type;
        return value;
    }
};

}  // namespace kelmo
