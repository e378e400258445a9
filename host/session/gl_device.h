// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

namespace kelmo::host {

/// What the driver says about itself.
struct GlInfo {
    std::string renderer;
    std::string vendor;
    std::string version;
    std::string platform;  ///< how it was reached: "device 0", "surfaceless", "default display"
};

/// An OpenGL 3.3 core context without a window, on the first graphics card that gives one, else in
/// Mesa's software.
///
/// Thread rule: current on the thread that made it until it is destroyed there; everything that
/// uses GL runs on that thread.
class GlDevice {
public:
    /// Throws HostError with the reason and an advice.
    static std::unique_ptr<GlDevice> Create();
    ~GlDevice();
    GlDevice(const GlDevice&) = delete;
    GlDevice& operator=(const GlDevice&) = delete;

    const GlInfo& Info() const { return info; }
    /// Longest side of a texture.
    int LargestSide() const { return largestSide; }

private:
    GlDevice() = default;
    bool Open(void* eglDisplay, const std::string& platform);

    void* display = nullptr;
    void* context = nullptr;
    GlInfo info;
    int largestSide = 0;
};

}  // namespace kelmo::host
