// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "host/media/picture/picture.h"
#include "host/session/host_services.h"

namespace kelmo::host {

/// A picture that lives in a texture of the current context, bottom row first as GL has it; it is
/// turned on its way up and down. RGBA, 8 bits, premultiplied alpha.
///
/// Thread rule: the thread of the GlDevice, which must outlive this object.
class GpuPicture {
public:
    GpuPicture(int width, int height);
    ~GpuPicture();
    GpuPicture(const GpuPicture&) = delete;
    GpuPicture& operator=(const GpuPicture&) = delete;

    /// `picture` has this object's size.
    void Upload(const Picture& picture);
    void Download(Picture& picture);

    GpuSurface* Surface() { return &surface; }

private:
    int width;
    int height;
    GpuSurface surface;
    unsigned int framebuffer = 0;
    std::vector<uint8_t> turned;  // the rows of a picture on its way, bottom row first
};

}  // namespace kelmo::host
