// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect/pixel_transfer.h"

#include <algorithm>
#include <cstring>

namespace kelmo {
namespace {

/// A portion that stays in the second-level cache between the copy and the transfer.
constexpr size_t kPortionBytes = 192 * 1024;

struct LayoutRow {
    int bytes;
    GLint internal;
    GLenum format;
    GLenum type;
};

/// By PixelLayout. BGR goes up as BGRA: three-byte pixels are slow everywhere.
constexpr LayoutRow kLayouts[] = {
    {1, GL_R8, GL_RED, GL_UNSIGNED_BYTE},
    {2, GL_RG8, GL_RG, GL_UNSIGNED_BYTE},
    {3, kPictureInternal, kPictureFormat, kPictureType},
    {4, kPictureInternal, kPictureFormat, kPictureType},
    {8, GL_RGBA16, GL_BGRA, GL_UNSIGNED_SHORT},
};

const LayoutRow& RowOf(PixelLayout layout) {
    return kLayouts[static_cast<size_t>(layout)];
}

/// Rows that one transfer moves: on a card everything at once, for each transfer is a round trip.
int PortionRows(const GlDevice& device, int height, size_t rowBytes) {
    if (!device.Limits().software) return height;
    return std::clamp(static_cast<int>(kPortionBytes / std::max<size_t>(rowBytes, 1)), 1, height);
}

void ExpandBgr(const uint8_t* source, uint8_t* target, int width) {
    // Four bytes at a time where a fourth byte belongs to the row.
    int x = 0;
    for (; x + 1 < width; ++x) {
        uint32_t pixel = 0;
        std::memcpy(&pixel, source + 3 * x, 4);
        pixel |= 0xFF000000u;
        std::memcpy(target + 4 * x, &pixel, 4);
    }
    for (; x < width; ++x) {
        std::memcpy(target + 4 * x, source + 3 * x, 3);
        target[4 * x + 3] = 255;
    }
}

/// Through the staging memory: turns the picture over, closes gaps, expands pixels.
void UploadStaged(GlDevice& device, const PixelRows& rows) {
    const LayoutRow& layout = RowOf(rows.layout);
    const bool expand = rows.layout == PixelLayout::Bgr;
    const size_t rowBytes = static_cast<size_t>(rows.width) * (expand ? 4u : layout.bytes);
    const int portion = PortionRows(device, rows.height, rowBytes);
    uint8_t* staging = device.Staging(rowBytes * static_cast<size_t>(portion));
    for (int y = 0; y < rows.height; y += portion) {
        const int count = std::min(portion, rows.height - y);
        for (int i = 0; i < count; ++i) {
            const int row = rows.topFirst ? rows.height - 1 - y - i : y + i;
            const uint8_t* source = rows.pixels + static_cast<size_t>(row) * rows.stride;
            uint8_t* target = staging + static_cast<size_t>(i) * rowBytes;
            if (expand) {
                ExpandBgr(source, target, rows.width);
            } else {
                std::memcpy(target, source, rowBytes);
            }
        }
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, y, rows.width, count, layout.format, layout.type,
                        staging);
    }
}

}  // namespace

PixelLayout LayoutOf(int bytes) {
    for (size_t i = 0; i < std::size(kLayouts); ++i) {
        if (kLayouts[i].bytes == bytes) return static_cast<PixelLayout>(i);
    }
    return PixelLayout::Unknown;
}

int BytesOf(PixelLayout layout) {
    return layout == PixelLayout::Unknown ? 0 : RowOf(layout).bytes;
}

void AllocatePixels(PixelLayout layout, int width, int height) {
    const LayoutRow& row = RowOf(layout);
    const bool grey = layout == PixelLayout::Grey || layout == PixelLayout::GreyAlpha;
    const GLint alpha = layout == PixelLayout::Grey ? GL_ONE : GL_GREEN;
    const GLint swizzle[] = {GL_RED, grey ? GL_RED : GL_GREEN, grey ? GL_RED : GL_BLUE,
                             grey ? alpha : GL_ALPHA};
    glTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_SWIZZLE_RGBA, swizzle);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    glTexImage2D(GL_TEXTURE_2D, 0, row.internal, width, height, 0, row.format, row.type, nullptr);
}

void UploadPixels(GlDevice& device, const PixelRows& rows) {
    const LayoutRow& layout = RowOf(rows.layout);
    const bool direct =
        !rows.topFirst && rows.layout != PixelLayout::Bgr && rows.stride % layout.bytes == 0;
    if (!direct) {
        UploadStaged(device, rows);
        return;
    }
    glPixelStorei(GL_UNPACK_ROW_LENGTH, rows.stride / layout.bytes);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, rows.width, rows.height, layout.format, layout.type,
                    rows.pixels);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
}

void ReadPixels(GlDevice& device, int width, int height, uint8_t* target, int stride) {
    const size_t rowBytes = static_cast<size_t>(width) * 4;
    const int portion = PortionRows(device, height, rowBytes);
    uint8_t* staging = device.Staging(rowBytes * static_cast<size_t>(portion));
    for (int y = 0; y < height; y += portion) {
        const int count = std::min(portion, height - y);
        glReadPixels(0, y, width, count, kPictureFormat, kPictureType, staging);
        for (int i = 0; i < count; ++i) {
            std::memcpy(target + static_cast<size_t>(height - 1 - y - i) * stride,
                        staging + static_cast<size_t>(i) * rowBytes, rowBytes);
        }
    }
}

bool ReadBackTexture(GlDevice& device, int texture, int width, int height, int stride,
                     void* target) {
    const auto id = static_cast<GLuint>(std::max(texture, 0));
    if (!target || width < 1 || height < 1 || stride / 4 < width || !glIsTexture(id)) {
        device.Log().Error(
            "engine: texture %d cannot be read into %d x %d pixels, rows of %d bytes", texture,
            width, height, stride);
        return false;
    }
    const GlObject framebuffer(device, GlKind::Framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer.Id());
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, id, 0);
    const bool complete = glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    if (complete) ReadPixels(device, width, height, static_cast<uint8_t*>(target), stride);
    const GLenum problem = glGetError();
    if (!complete || problem != GL_NO_ERROR) {
        device.Log().Error("engine: texture %d cannot be read (OpenGL error 0x%04x)", texture,
                           problem);
        return false;
    }
    return true;
}

}  // namespace kelmo
