// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "contract/frame_record.h"
#include "engine/device/gl_device.h"
#include "engine/effect/input_slots.h"

namespace kelmo {

/// The result and the intermediates of an effect: textures of its size.
///
/// Storage is made when a picture is first asked for, and made anew, transparent, after a change
/// of size; texture names stay. All calls but the accessors need a scope.
class PictureSet {
public:
    /// Size in pixels. The pictures become transparent. False, with nothing changed, when the
    /// device has no pictures of this size.
    bool Resize(GlDevice& device, int width, int height);
    int Width() const { return width; }
    int Height() const { return height; }

    /// Declares one more intermediate and returns its index.
    int Add();
    /// Exchanges the result with intermediate `index`. False for an unknown index.
    bool Exchange(int index);

    /// Texture of the result or of an intermediate; 0 for an unknown index or without memory.
    GLuint Result(GlDevice& device);
    GLuint Intermediate(GlDevice& device, int index);
    /// The same without a context: 0 also while the picture is not made yet.
    GLuint ReadyResult() const { return result.ready ? result.texture.Id() : 0; }
    GLuint ReadyIntermediate(int index) const;

    /// Binds the framebuffer that the next pass draws into and sets the viewport. A result that the
    /// pass also reads is exchanged for a spare picture first. `depth` asks for a depth buffer,
    /// `samples` above 0 for multisampling. False when the driver refuses.
    bool BeginPass(GlDevice& device, const std::vector<GLuint>& read, bool depth, int samples);
    /// Resolves a multisampled pass into the result.
    void EndPass();

    /// Reads the result into BGRA rows, top row first, scaled (linear) when the size differs.
    bool ReadResult(GlDevice& device, uint8_t* target, int targetWidth, int targetHeight,
                    int stride);
    /// Draws the result into a texture, scaled (linear) when the size differs.
    bool CopyResult(GlDevice& device, GLuint texture, int targetWidth, int targetHeight);

private:
    struct Picture {
        GlObject texture;
        GlObject framebuffer;
        bool hasDepth = false;
        bool ready = false;  ///< has storage of the present size
    };
    /// A picture of another size than the effect's, for scaled transfers.
    struct Scaled {
        Picture picture;
        int width = 0;
        int height = 0;
    };

    bool Prepare(GlDevice& device, Picture& picture, int pictureWidth, int pictureHeight);
    bool PrepareDepth(GlDevice& device);
    bool PrepareSamples(GlDevice& device, int samples, bool depth);

    int width = 0;
    int height = 0;
    Picture result;
    Picture spare;
    Scaled scaled;
    std::vector<Picture> intermediates;
    GlObject depthBuffer;
    bool depthReady = false;
    GlObject sampleFramebuffer, sampleColor, sampleDepth;
    bool samplesReady = false, sampleDepthReady = false;
    bool multisampled = false;  ///< the pass between BeginPass and EndPass
    GlObject copyFramebuffer;
};

}  // namespace kelmo
