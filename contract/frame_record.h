// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kelmo {

/// How a frame travels between the effect object, the filters and the engine.
///
/// Copied by value; owns nothing. Pixels and texture belong to whoever made the record and stay
/// valid for the call that the record is passed to. Pictures are 8-bit B, G, R, A with
/// premultiplied alpha unless `channels` says otherwise; CPU pixels have the top row of the picture
/// first.
struct FrameRecord {
    /// -1 on a frame that holds a GL texture, else 0.
    int32_t tag = 0;
    /// GL texture id; above 0 on a GPU frame.
    int32_t texture = 0;
    uint32_t reserved = 0;
    /// 1 when `pixels` is the way to the data. Set with null `pixels`, the record carries no
    /// picture: as an input it is skipped, as a target the picture stays in the engine.
    uint8_t isCpu = 1;
    /// First row, or null.
    void* pixels = nullptr;
    /// Size in pixels.
    int32_t width = 0;
    int32_t height = 0;
    /// Bytes from one row to the next.
    int32_t stride = 0;
    /// For an input slot: 1 when the slot is material, 0 when it is a clip.
    uint8_t renderable = 1;
    /// Samples per pixel; 1 on a grey mask.
    int32_t channels = 4;

    /// A record without picture of the given size; `stride` in bytes.
    static FrameRecord TargetLess(int32_t width, int32_t height, int32_t stride) {
        FrameRecord record;
        record.width = width;
        record.height = height;
        record.stride = stride;
        return record;
    }

    bool HasCpuPixels() const { return isCpu != 0 && pixels != nullptr; }
    bool HasTexture() const { return isCpu == 0 && texture > 0; }
};

}  // namespace kelmo
