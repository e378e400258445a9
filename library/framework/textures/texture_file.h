// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <string>

/// Single picture files. Paths are UTF-8. Callable from any thread.
namespace kelmo {

/// Reads a picture for the effects: bottom row first, BGRA, the sample depth of the file. Grey and
/// BGR become four channels, pictures of two channels keep them. A path that contains ".astc" (and
/// has at least 5 characters) is read as a compressed texture, and `astcFlag` is set to 1.
/// False after logging what is wrong with the file; may throw cv::Exception for a layout that the
/// colour conversion does not know.
bool LoadTextureFile(const std::string& path, cv::Mat& out, int32_t* astcFlag = nullptr);

/// Reads a picture as it stands in its file: any channels and depth, top row first. Empty when that
/// fails.
cv::Mat ReadImageFile(const std::string& path);

/// Brings a picture into a form that `SetInputMaterial` can tell from step / cols: rows without
/// padding; one to four channels of 8 bits or four of 16 bits stay as they are. Everything else has
/// no such form (a float picture of two channels has the bytes per pixel of a 16-bit BGRA one) and
/// is converted to 8 bits: floats from 0..1, integers from their full range. Of more than four
/// channels the first three are taken as BGR.
cv::Mat ToMaterialLayout(const cv::Mat& picture);

/// A picture as `SetInputMaterial` takes it. Borrows the pixels.
struct MaterialView {
    const void* pixels = nullptr;
    int32_t cols = 0;
    int32_t rows = 0;
    /// Bytes from one row to the next.
    int32_t step = 0;

    /// `picture` is one that a `TextureFrames` holds, or empty: 0 by 0 without data.
    static MaterialView Of(const cv::Mat& picture);
};

}  // namespace kelmo
