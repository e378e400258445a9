// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "engine/device/gl_device.h"

namespace kelmo {

/// How the samples of a pixel lie in memory.
enum class PixelLayout { Grey, GreyAlpha, Bgr, Bgra, Bgra16, Unknown };

/// The layout that has `bytes` bytes a pixel.
PixelLayout LayoutOf(int bytes);
int BytesOf(PixelLayout layout);

/// A picture in memory. `stride` bytes from one row to the next, at least width x pixel size.
struct PixelRows {
    const uint8_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0;
    PixelLayout layout = PixelLayout::Bgra;
    bool topFirst = true;
};

/// All 8-bit colour textures of the engine are stored as the pixels of frames lie in memory (blue
/// first); with this pair of words a driver copies rows instead of shuffling bytes. The unsized
/// internal format is what lets it choose that order.
inline constexpr GLenum kPictureFormat = GL_BGRA;
inline constexpr GLenum kPictureType = GL_UNSIGNED_INT_8_8_8_8_REV;
inline constexpr GLint kPictureInternal = GL_RGBA;

/// Gives the bound 2D texture storage for a picture of this layout, contents undefined. Grey is
/// read as (g, g, g, 1), grey with alpha as (g, g, g, a).
void AllocatePixels(PixelLayout layout, int width, int height);
/// Fills the bound 2D texture, whose storage fits, with the bottom row at v = 0. Reads each row's
/// pixels and nothing else.
void UploadPixels(GlDevice& device, const PixelRows& rows);
/// Reads the bound read framebuffer into BGRA rows, top row first.
void ReadPixels(GlDevice& device, int width, int height, uint8_t* target, int stride);

/// Reads a texture of the given size the same way. False, after a log line, when there is no such
/// texture or the target's rows are too short. Inside a scope, as all of this file.
bool ReadBackTexture(GlDevice& device, int texture, int width, int height, int stride,
                     void* target);

}  // namespace kelmo
