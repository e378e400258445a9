// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kelmo {

/// Name under which the host hands over an `ObjectAiDataTransfer`.
inline constexpr const char* kAiTransferParam = "ObjectAiDataTransferPtr";

/// Where a body point stands when the clip has no better answer. The caller presets the values.
struct PosePointReference {
    int32_t reserved = -1;
    double x = 0.5;
    double y = 0.5;
};

/// AI results that the host computed once for a clip: asked by an effect while it draws a frame.
/// Everything handed out stays the object's and is valid during that frame.
class ObjectAiDataTransfer {
public:
    virtual ~ObjectAiDataTransfer() = default;
    /// A person mask for the current frame: 4 channels of 8 bits, coverage in the first, top row
    /// first; `stride` in bytes. False when there is none.
    virtual bool GetMaskImage(void** pixels, int32_t* width, int32_t* height, int32_t* stride) = 0;
    /// Body points of the current frame, little-endian words without padding: i32 persons; for each
    /// person i32 points, (f32 x, f32 y) for each point, 32-bit tag. Fractions of the frame, y
    /// down; a negative coordinate says that the point was not found. `length` in bytes.
    virtual bool GetPoseBlock(void** bytes, int32_t* length) = 0;
    /// A reference position of body point `index`; leaves the record alone when it knows none.
    virtual void GetPosePoint(int32_t index, PosePointReference* reference) = 0;
};

}  // namespace kelmo
