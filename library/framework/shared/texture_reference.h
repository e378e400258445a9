// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "contract/frame_record.h"

namespace kelmo {

/// The first three words of a frame record: enough to name a texture. An owner gives one to a
/// stage, as the picture to work on instead of the clip. Owns nothing; valid while the stage that
/// drew it keeps its picture.
struct TextureReference {
    int32_t tag = 0;
    int32_t texture = 0;
    uint32_t reserved = 0;

    TextureReference() = default;
    explicit TextureReference(const FrameRecord& frame)
        : tag(frame.tag), texture(frame.texture), reserved(frame.reserved) {}

    bool InForce() const { return texture > 0; }
    /// As a frame on the GPU; `stride` in bytes.
    FrameRecord Record(int32_t width, int32_t height, int32_t stride) const {
        FrameRecord record = FrameRecord::TargetLess(width, height, stride);
        record.tag = tag;
        record.texture = texture;
        record.reserved = reserved;
        record.isCpu = 0;
        return record;
    }
};

}  // namespace kelmo
