// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/host_frame.h"

#include <cstring>

namespace kelmo::host {

void HostFrame::SetText(const ClipText& text) {
    hasText = text.path != nullptr;
    textData.textPath = text.path;
    textData.textIsUpdate = text.changed ? 1 : 0;
    transform = text.transform;
}

int32_t HostFrame::GetProperty(const char* name, QorValue* value) {
    if (name == nullptr || value == nullptr) return kQorRefused;
    if (hasText && std::strcmp(name, "TextUserData") == 0) {
        value->type = kHostPointer;
        value->p = &textData;
        return kQorOk;
    }
    if (transform != nullptr && std::strcmp(name, "TransformParam") == 0) {
        value->type = kHostPointer;
        value->p = const_cast<float*>(transform);
        return kQorOk;
    }
    return kQorRefused;
}

}  // namespace kelmo::host
