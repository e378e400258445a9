// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/astc/astc_paint.h"

#include <cstring>
#include <opencv2/core/hal/intrin.hpp>

namespace astc_codec {

namespace {

// Two texels of four channels fill a vector of eight 16-bit lanes.
using Lanes = cv::v_int16x8;

// In 16 bits, with s = first * 64 + (second - first) * weight (0..16320), the defined blend is
// (s + 32) >> 6, but for the exact halves from here on, which it rounds down:
// (s + 31) >> 6. A test compares all endpoints and weights with `BlendChannel`.
constexpr int16_t kFirstHalfDown = 8160;

/// Endpoints in the form of that sum, both halves of the vector alike.
struct Ramp {
    alignas(16) int16_t base[8];
    alignas(16) int16_t span[8];

    void Set(const Endpoints& ends) {
        for (std::size_t i = 0; i < 4; ++i) {
            base[i] = base[i + 4] = static_cast<int16_t>(ends.first[i] * 64);
            span[i] = span[i + 4] = static_cast<int16_t>(ends.second[i] - ends.first[i]);
        }
    }
};

Lanes Blend(const Lanes& base, const Lanes& span, const Lanes& weight) {
    const Lanes sum = cv::v_add_wrap(base, cv::v_mul_wrap(span, weight));
    const Lanes down = sum > cv::v_setall_s16(kFirstHalfDown - 1);
    // A true comparison is -1.
    return cv::v_add_wrap(cv::v_add_wrap(sum, cv::v_setall_s16(32)), down) >> 6;
}

/// Four weights, each on the four lanes of its texel: two vectors of two texels.
void SpreadWeights(const uint8_t* weights, Lanes& front, Lanes& back) {
    uint32_t four = 0;
    std::memcpy(&four, weights, 4);
    const cv::v_uint8x16 packed = cv::v_reinterpret_as_u8(cv::v_setall_u32(four));
    cv::v_uint8x16 twice;
    cv::v_uint8x16 spread;
    cv::v_uint8x16 unused;
    cv::v_zip(packed, packed, twice, unused);
    cv::v_zip(twice, twice, spread, unused);
    cv::v_uint16x8 low;
    cv::v_uint16x8 high;
    cv::v_expand(spread, low, high);
    front = cv::v_reinterpret_as_s16(low);
    back = cv::v_reinterpret_as_s16(high);
}

template <bool dualPlane>
void LoadWeights(const PaintJob& job, const Lanes& mask, int texel, Lanes& front, Lanes& back) {
    SpreadWeights(job.weights->data() + texel, front, back);
    if constexpr (dualPlane) {
        Lanes secondFront;
        Lanes secondBack;
        SpreadWeights(job.secondWeights->data() + texel, secondFront, secondBack);
        front = cv::v_select(mask, secondFront, front);
        back = cv::v_select(mask, secondBack, back);
    }
}

Lanes ChannelMask(int channel) {
    alignas(16) int16_t lanes[8] = {};
    lanes[channel] = lanes[channel + 4] = -1;
    return cv::v_load_aligned(lanes);
}

template <bool dualPlane>
void PaintSingle(const PaintJob& job, uint8_t* pixels) {
    Ramp ramp;
    ramp.Set(job.endpoints[0]);
    const Lanes base = cv::v_load_aligned(ramp.base);
    const Lanes span = cv::v_load_aligned(ramp.span);
    const Lanes mask = ChannelMask(job.secondPlaneChannel);
    for (int i = 0; i < job.texels; i += 4) {
        Lanes front;
        Lanes back;
        LoadWeights<dualPlane>(job, mask, i, front, back);
        cv::v_store_aligned(pixels + i * 4,
                            cv::v_pack_u(Blend(base, span, front), Blend(base, span, back)));
    }
}

template <bool dualPlane>
void PaintPartitions(const PaintJob& job, uint8_t* pixels) {
    std::array<Ramp, kMaxPartitions> ramps;
    for (std::size_t i = 0; i < static_cast<std::size_t>(job.partitions); ++i) {
        ramps[i].Set(job.endpoints[i]);
    }
    // Room for a last four that is not full.
    std::array<uint8_t, kMaxBlockTexels + kTexelPadding> map;
    std::memcpy(map.data(), job.partitionMap, static_cast<std::size_t>(job.texels));
    std::memset(map.data() + job.texels, 0, kTexelPadding);
    const Lanes mask = ChannelMask(job.secondPlaneChannel);
    const auto pair = [&ramps, &map](std::size_t texel, const Lanes& weight) {
        const Ramp& left = ramps[map[texel]];
        const Ramp& right = ramps[map[texel + 1]];
        return Blend(cv::v_load_halves(left.base, right.base),
                     cv::v_load_halves(left.span, right.span), weight);
    };
    for (int i = 0; i < job.texels; i += 4) {
        Lanes front;
        Lanes back;
        LoadWeights<dualPlane>(job, mask, i, front, back);
        const auto texel = static_cast<std::size_t>(i);
        cv::v_store_aligned(pixels + i * 4,
                            cv::v_pack_u(pair(texel, front), pair(texel + 2, back)));
    }
}

}  // namespace

void Paint(const PaintJob& job, uint8_t* pixels) {
    const bool dualPlane = job.secondWeights != nullptr;
    if (job.partitionMap == nullptr) {
        dualPlane ? PaintSingle<true>(job, pixels) : PaintSingle<false>(job, pixels);
    } else {
        dualPlane ? PaintPartitions<true>(job, pixels) : PaintPartitions<false>(job, pixels);
    }
}

}  // namespace astc_codec
