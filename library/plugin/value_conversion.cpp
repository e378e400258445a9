// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/value_conversion.h"

#include <cstring>

namespace kelmo {

namespace {

/// Empties a value. Only a text leaves more than eight bytes behind, so that numbers, which come
/// every frame, need not clear half a kilobyte each.
void Clear(NLEParamValue& value) {
    const std::size_t used = value.type == kParamText ? NLEParamValue::kDataSize : 8;
    std::memset(value.data, 0, used);
    value.text.clear();
}

template <typename T>
bool Store(NLEParamValue& value, int32_t type, T number) {
    Clear(value);
    value.type = type;
    value.Put(number);
    return true;
}

bool StoreText(NLEParamValue& value, const char* text) {
    Clear(value);
    value.type = kParamText;
    if (!text) return true;
    value.text = text;
    value.SetDataText(value.text);
    return true;
}

}  // namespace

bool ConvertHostValue(const QorValue& record, NLEParamValue& value) {
    switch (record.type) {
        case kHostInt:
            return Store(value, kParamInt, record.i);
        case kHostFloat:
            return Store(value, kParamFloat, record.f);
        case kHostDouble:
            return Store(value, kParamDouble, record.d);
        case kHostBool:
            return Store(value, kParamBool, record.b);
        case kHostText:
            return StoreText(value, record.s);
        case kHostPointer:
            return Store(value, kParamPointer, record.p);
        default:
            return false;
    }
}

}  // namespace kelmo
