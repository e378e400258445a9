// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelmo {

/// Textures of 8-bit BGRA pictures in the context that is current at each call; for code that gives
/// pictures to others by texture id. Release them with that context current: the destructor cannot.
class GLTextures {
public:
    explicit GLTextures(std::size_t count) : textures(count) {}

    /// The id of texture `index` with this picture: `stride` in bytes, top row first, which becomes
    /// the texture's last one. Null pixels give a texture of undefined content. 0 without a usable
    /// context or for an empty size.
    int32_t Upload(std::size_t index, const void* pixels, int32_t width, int32_t height,
                   int32_t stride);
    void Release();

private:
    struct Texture {
        uint32_t id = 0;
        int32_t width = 0;
        int32_t height = 0;
    };
    std::vector<Texture> textures;
    /// The picture with its rows turned.
    std::vector<uint8_t> turned;
};

}  // namespace kelmo
