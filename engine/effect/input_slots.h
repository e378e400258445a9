// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "contract/engine.h"
#include "engine/effect/pixel_transfer.h"
#include "engine/shader/shader_prelude.h"

namespace kelmo {

/// The pictures that an effect's shaders read.
///
/// A slot keeps its picture until another one is set, over any number of passes; a borrowed
/// texture that is gone by the time of a pass counts as not bound. Uploads reuse the storage of
/// the slot while size and layout stay the same. A slot beyond the declared ones is a clip.
class InputSlots {
public:
    /// Declares the next slot. False when there are too many.
    bool Declare(bool clip);

    /// Uploads; inside a scope. Null pixels or an empty picture clear the slot. Rows shorter than
    /// the width, or a picture larger than the device takes, are reported and leave it empty.
    void SetPixels(GlDevice& device, int slot, const PixelRows& rows, bool straight);
    void SetTexture(GlDevice& device, int slot, GLuint texture);

    /// What a pass binds; the transparent pixel when the slot is empty.
    GLuint Texture(const GlDevice& device, int slot) const;
    GLuint Sampler(const GlDevice& device, int slot) const;
    bool IsBound(int slot) const { return slots[static_cast<size_t>(slot)].bound; }
    bool IsStraight(int slot) const { return slots[static_cast<size_t>(slot)].straight; }
    /// Forgets borrowed textures that do not exist any more. Inside a scope.
    void DropDeadTextures();

private:
    struct Slot {
        GlObject own;
        int width = 0;
        int height = 0;
        PixelLayout layout = PixelLayout::Unknown;
        GLuint borrowed = 0;
        bool bound = false;
        bool straight = false;
        bool clip = true;
    };

    Slot* Find(const GlDevice& device, int slot);

    std::array<Slot, kMaxInputSlots> slots;
    int declared = 0;
};

}  // namespace kelmo
