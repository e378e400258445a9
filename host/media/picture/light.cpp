// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/picture/light.h"

#include <algorithm>
#include <cmath>

namespace kelmo::host {

namespace {

constexpr double kReferenceWhite = 203;  // cd/m2, BT.2408
constexpr double kHlgPeak = 1000;        // cd/m2
constexpr float kHlgGamma = 1.2f;        // of the screen, at this peak
constexpr double kScreenGamma = 2.4;     // BT.1886
constexpr float kKnee = 0.6f;            // from here on the tone curve bends
constexpr int kEncodeSteps = 4096;

double PqLight(double signal) {
    constexpr double m1 = 2610.0 / 16384, m2 = 2523.0 / 32;
    constexpr double c1 = 3424.0 / 4096, c2 = 2413.0 / 128, c3 = 2392.0 / 128;
    const double power = std::pow(signal, 1 / m2);
    return 10000 * std::pow(std::max(power - c1, 0.0) / (c2 - c3 * power), 1 / m1);
}

// Light of the scene, 0..1.
double HlgLight(double signal) {
    constexpr double a = 0.17883277, b = 0.28466892, c = 0.55991073;
    return signal <= 0.5 ? signal * signal / 3 : (std::exp((signal - c) / a) + b) / 12;
}

double LinearOf(Light light, double signal) {
    switch (light) {
        case Light::kPq:
            return PqLight(signal) / kReferenceWhite;
        case Light::kHlg:
            return HlgLight(signal);
        default:
            return std::pow(signal, kScreenGamma);
    }
}

// Straight up to the knee, then towards 1, without a bend.
float ToneCurve(float light) {
    if (light <= kKnee) return light;
    return kKnee + (1 - kKnee) * (1 - std::exp((kKnee - light) / (1 - kKnee)));
}

}  // namespace

Light LightOf(const AVFrame& frame) {
    if (frame.color_trc == AVCOL_TRC_SMPTE2084) return Light::kPq;
    if (frame.color_trc == AVCOL_TRC_ARIB_STD_B67) return Light::kHlg;
    return frame.color_primaries == AVCOL_PRI_BT2020 ? Light::kBt2020 : Light::kBt709;
}

const char* LightName(Light light) {
    switch (light) {
        case Light::kPq:
            return "HDR (PQ, BT.2020)";
        case Light::kHlg:
            return "HDR (HLG, BT.2020)";
        case Light::kBt2020:
            return "BT.2020";
        case Light::kBt709:
            break;
    }
    return "";
}

LightConverter::LightConverter(Light light)
    : hlg(light == Light::kHlg),
      hdr(hlg || light == Light::kPq),
      linear(65536),
      encode(kEncodeSteps + 1) {
    for (size_t i = 0; i < linear.size(); ++i) {
        linear[i] = static_cast<float>(LinearOf(light, static_cast<double>(i) / 65535));
    }
    for (size_t i = 0; i < encode.size(); ++i) {
        const double light709 = std::pow(static_cast<double>(i) / kEncodeSteps, 2);
        encode[i] = static_cast<uint8_t>(std::lround(255 * std::pow(light709, 1 / kScreenGamma)));
    }
}

void LightConverter::ConvertRow(const uint16_t* rgb, int width, uint8_t* bgra) const {
    for (int x = 0; x < width; ++x, rgb += 3, bgra += 4) {
        const float r = linear[rgb[0]], g = linear[rgb[1]], b = linear[rgb[2]];
        const float luminance = 0.2627f * r + 0.6780f * g + 0.0593f * b;
        float scale = 1;
        if (hlg) {
            scale =
                static_cast<float>(kHlgPeak / kReferenceWhite) * std::pow(luminance, kHlgGamma - 1);
        }
        float out[3] = {-0.0182f * r - 0.1006f * g + 1.1187f * b,
                        -0.1246f * r + 1.1329f * g - 0.0083f * b,
                        1.6605f * r - 0.5876f * g - 0.0728f * b};
        const float least = std::min({out[0], out[1], out[2]});
        const float most = std::max({out[0], out[1], out[2]});
        // 1 keeps the colour, 0 is grey.
        const float keep = least < 0 ? luminance / (luminance - least) : 1;
        const float peak = scale * (luminance + keep * (most - luminance));
        if (hdr && peak > kKnee) scale *= ToneCurve(peak) / peak;
        for (int i = 0; i < 3; ++i) {
            const float light = scale * (luminance + keep * (out[i] - luminance));
            const float step = std::sqrt(std::clamp(light, 0.0f, 1.0f)) * kEncodeSteps + 0.5f;
            bgra[i] = encode[static_cast<size_t>(step)];
        }
        bgra[3] = 255;
    }
}

}  // namespace kelmo::host
