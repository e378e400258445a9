// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "host/media/common/libav.h"

namespace kelmo::host {

// Private to this folder: what the numbers of a picture mean as light, where that is not BT.709.
enum class Light {
    kBt709,   // or taken for it
    kBt2020,  // wide primaries, ordinary range
    kPq,      // SMPTE ST 2084, absolute
    kHlg,     // ARIB STD-B67, taken for a screen of 1000 cd/m2
};

// By the tags of the frame.
Light LightOf(const AVFrame& frame);

// "HDR (PQ, BT.2020)"; empty for kBt709.
const char* LightName(Light light);

// Brings rows of RGB to BT.709. White of 203 cd/m2 is the reference; what is brighter is rolled off
// above 60 % of it, by the brightest channel, so that hues stay. Colours that BT.709 has not are
// drawn towards grey of the same luminance.
class LightConverter {
public:
    explicit LightConverter(Light light);

    // Three 16-bit samples a pixel to opaque BGRA.
    void ConvertRow(const uint16_t* rgb, int width, uint8_t* bgra) const;

private:
    bool hlg;
    bool hdr;
    std::vector<float> linear;    // of each 16-bit sample; 1 is the reference white
    std::vector<uint8_t> encode;  // by the square root of the light
};

}  // namespace kelmo::host
