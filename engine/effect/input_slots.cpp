// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect/input_slots.h"

namespace kelmo {

bool InputSlots::Declare(bool clip) {
    if (declared >= kMaxInputSlots) return false;
    slots[static_cast<size_t>(declared++)].clip = clip;
    return true;
}

InputSlots::Slot* InputSlots::Find(const GlDevice& device, int slot) {
    if (slot >= 0 && slot < kMaxInputSlots) return &slots[static_cast<size_t>(slot)];
    device.Log().Error("engine: there is no input slot %d, the last one is %d", slot,
                       kMaxInputSlots - 1);
    return nullptr;
}

void InputSlots::SetPixels(GlDevice& device, int slot, const PixelRows& rows, bool straight) {
    Slot* const found = Find(device, slot);
    if (!found) return;
    found->bound = false;
    found->borrowed = 0;
    found->straight = straight;
    if (!rows.pixels || rows.width <= 0 || rows.height <= 0) return;
    const int limit = device.Limits().textureSize;
    const int64_t rowBytes = static_cast<int64_t>(rows.width) * BytesOf(rows.layout);
    if (rows.layout == PixelLayout::Unknown || rows.stride < rowBytes || rows.width > limit ||
        rows.height > limit) {
        device.Log().Error("engine: input slot %d cannot take %d x %d pixels in rows of %d bytes",
                           slot, rows.width, rows.height, rows.stride);
        return;
    }
    device.UseUnit(0);
    if (!found->own) found->own = GlObject(device, GlKind::Texture);
    glBindTexture(GL_TEXTURE_2D, found->own.Id());
    if (found->width != rows.width || found->height != rows.height ||
        found->layout != rows.layout) {
        found->layout = PixelLayout::Unknown;
        AllocatePixels(rows.layout, rows.width, rows.height);
        if (glGetError() != GL_NO_ERROR) {
            device.Log().Error("engine: no memory for input slot %d of %d x %d", slot, rows.width,
                               rows.height);
            return;
        }
        found->width = rows.width;
        found->height = rows.height;
        found->layout = rows.layout;
    }
    UploadPixels(device, rows);
    found->bound = true;
}

void InputSlots::SetTexture(GlDevice& device, int slot, GLuint texture) {
    Slot* const found = Find(device, slot);
    if (!found) return;
    found->borrowed = texture;
    found->bound = texture != 0;
    found->straight = false;
}

GLuint InputSlots::Texture(const GlDevice& device, int slot) const {
    const Slot& found = slots[static_cast<size_t>(slot)];
    if (!found.bound) return device.Commons().emptyTexture.Id();
    return found.borrowed ? found.borrowed : found.own.Id();
}

GLuint InputSlots::Sampler(const GlDevice& device, int slot) const {
    const bool clip = slots[static_cast<size_t>(slot)].clip;
    return clip ? device.Commons().clipSampler.Id() : device.Commons().materialSampler.Id();
}

void InputSlots::DropDeadTextures() {
    for (Slot& slot : slots) {
        if (slot.borrowed == 0 || glIsTexture(slot.borrowed)) continue;
        slot.borrowed = 0;
        slot.bound = false;
    }
}

}  // namespace kelmo
