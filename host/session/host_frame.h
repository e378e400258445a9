// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "contract/qor_host.h"
#include "host/media/picture/picture.h"
#include "host/session/host_services.h"

namespace kelmo::host {

/// The text of a clip, for effects that draw text. Borrowed.
struct ClipText {
    TextPath* path = nullptr;
    bool changed = false;  ///< since the frame before
    /// Seven floats ("TransformParam"), or null.
    const float* transform = nullptr;
};

/// A picture as the plug-in sees it. Borrows everything; set anew for each frame.
class HostFrame final : public QorFrame {
public:
    /// `pixels` may be null for a picture that lives on the GPU alone, `surface` for one in memory.
    void Set(int frameWidth, int frameHeight, void* framePixels, GpuSurface* frameSurface) {
        width = frameWidth;
        height = frameHeight;
        pixels = framePixels;
        surface = frameSurface;
    }
    void SetText(const ClipText& text);

    int32_t GetWidth() override { return width; }
    int32_t GetHeight() override { return height; }
    int32_t GetStride() override { return width * 4; }
    void* GetPixels() override { return pixels; }
    void* GetSurface() override { return surface; }
    /// Takes any property ("SkipGroupTransform") and does nothing with it: there are no groups.
    int32_t SetProperty(const char*, const QorValue*) override { return kQorOk; }
    int32_t GetProperty(const char* name, QorValue* value) override;

private:
    int width = 0;
    int height = 0;
    void* pixels = nullptr;
    GpuSurface* surface = nullptr;
    bool hasText = false;
    TextUserData textData;
    const float* transform = nullptr;
};

/// Samples of one frame: interleaved stereo of 16 bits. Borrowed.
class HostAudio final : public QorAudio {
public:
    /// Codes above 10 are not read by effects; signed 16-bit interleaved has the code 7.
    static constexpr int32_t kFormatS16 = 7;

    void Set(int16_t* values, int32_t samplesPerChannel) {
        data = values;
        samples = samplesPerChannel;
    }
    int32_t GetChannels() override { return 2; }
    int32_t GetSamples() override { return samples; }
    int32_t GetFormat() override { return kFormatS16; }
    int32_t GetBytes() override { return samples * 2 * static_cast<int32_t>(sizeof(int16_t)); }
    void* GetData() override { return data; }

private:
    int16_t* data = nullptr;
    int32_t samples = 0;
};

}  // namespace kelmo::host
