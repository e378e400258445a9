// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/encode/gif_palette.h"

#include <algorithm>
#include <climits>

namespace kelmo::host {

namespace {

constexpr int kCells = 1 << 15;

int CellOf(int red, int green, int blue) {
    return (red >> 3) << 10 | (green >> 3) << 5 | (blue >> 3);
}

int ChannelOf(int cell, int channel) {
    return (cell >> (10 - 5 * channel)) & 31;
}

// Bayer's 8x8 threshold matrix, 0..63, by interleaving the bits of x ^ y and y.
int Threshold(int x, int y) {
    const int mixed = x ^ y;
    int value = 0;
    for (int bit = 0; bit < 3; ++bit) {
        value = value << 2 | ((mixed >> bit & 1) << 1) | (y >> bit & 1);
    }
    return value;
}

}  // namespace

void GifPalette::CountColors(const uint8_t* bgra, int stride, int width, int height,
                             bool transparency) {
    histogram.assign(kCells, Cell());
    for (int y = 0; y < height; ++y) {
        const uint8_t* pixel = bgra + static_cast<int64_t>(y) * stride;
        for (int x = 0; x < width; ++x, pixel += 4) {
            if (transparency && pixel[3] < 128) continue;
            Cell& cell = histogram[CellOf(pixel[2], pixel[1], pixel[0])];
            ++cell.pixels;
            for (int channel = 0; channel < 3; ++channel) cell.sum[channel] += pixel[2 - channel];
        }
    }
    cells.clear();
    for (int cell = 0; cell < kCells; ++cell) {
        if (histogram[cell].pixels) cells.push_back(static_cast<uint16_t>(cell));
    }
}

void GifPalette::Measure(Box& box) const {
    int lowest[3] = {31, 31, 31}, highest[3] = {0, 0, 0};
    int64_t pixels = 0;
    for (int i = box.begin; i < box.end; ++i) {
        for (int channel = 0; channel < 3; ++channel) {
            const int value = ChannelOf(cells[i], channel);
            lowest[channel] = std::min(lowest[channel], value);
            highest[channel] = std::max(highest[channel], value);
        }
        pixels += histogram[cells[i]].pixels;
    }
    int extent = -1;
    for (int channel = 0; channel < 3; ++channel) {
        if (highest[channel] - lowest[channel] > extent) {
            extent = highest[channel] - lowest[channel];
            box.longest = channel;
        }
    }
    box.weight = std::max(extent, 0) * pixels;
}

void GifPalette::CutBoxes(int count) {
    boxes.clear();
    if (cells.empty()) return;
    boxes.push_back({0, static_cast<int>(cells.size())});
    Measure(boxes[0]);
    while (static_cast<int>(boxes.size()) < count) {
        const auto heaviest =
            std::max_element(boxes.begin(), boxes.end(),
                             [](const Box& a, const Box& b) { return a.weight < b.weight; });
        if (heaviest->weight == 0) break;  // every box is one cell
        Box& box = *heaviest;
        const int channel = box.longest;
        std::sort(cells.begin() + box.begin, cells.begin() + box.end,
                  [channel](uint16_t a, uint16_t b) {
                      return ChannelOf(a, channel) < ChannelOf(b, channel);
                  });
        int64_t half = 0;
        for (int i = box.begin; i < box.end; ++i) half += histogram[cells[i]].pixels;
        half /= 2;
        int cut = box.begin;
        for (int64_t passed = 0;
             cut < box.end - 1 && passed + histogram[cells[cut]].pixels <= half;) {
            passed += histogram[cells[cut++]].pixels;
        }
        cut = std::max(cut, box.begin + 1);
        Box upper{cut, box.end};
        box.end = cut;
        Measure(box);
        Measure(upper);
        boxes.push_back(upper);
    }
}

int GifPalette::Nearest(int red, int green, int blue) {
    int16_t& known = nearest[CellOf(red, green, blue)];
    if (known >= 0) return known;
    int best = INT_MAX;
    known = 0;
    for (size_t i = 0; i < colors.size(); ++i) {
        const int r = colors[i][0] - red, g = colors[i][1] - green, b = colors[i][2] - blue;
        const int distance = 2 * r * r + 4 * g * g + b * b;  // the eye sees green best
        if (distance < best) {
            best = distance;
            known = static_cast<int16_t>(i);
        }
    }
    return known;
}

void GifPalette::Quantize(const uint8_t* bgra, int stride, int width, int height, bool transparency,
                          uint8_t* indices, int indexStride, uint32_t* palette) {
    CountColors(bgra, stride, width, height, transparency);
    CutBoxes(transparency ? 255 : 256);
    colors.clear();
    for (const Box& box : boxes) {
        uint64_t sum[3] = {0, 0, 0}, pixels = 0;
        for (int i = box.begin; i < box.end; ++i) {
            const Cell& cell = histogram[cells[i]];
            pixels += cell.pixels;
            for (int channel = 0; channel < 3; ++channel) sum[channel] += cell.sum[channel];
        }
        const auto mean = [pixels](uint64_t total) {
            return static_cast<int>((total + pixels / 2) / pixels);
        };
        colors.push_back({mean(sum[0]), mean(sum[1]), mean(sum[2])});
    }
    nearest.assign(kCells, -1);
    std::fill(palette, palette + 256, 0xff000000u);
    for (size_t i = 0; i < colors.size(); ++i) {
        palette[i] = 0xff000000u | static_cast<uint32_t>(colors[i][0]) << 16 |
                     static_cast<uint32_t>(colors[i][1]) << 8 | static_cast<uint32_t>(colors[i][2]);
    }
    if (transparency) palette[kTransparentIndex] = 0;

    // A picture of few colours needs no pattern: each of its cells has an entry of its own.
    const bool dither = cells.size() > colors.size();
    for (int y = 0; y < height; ++y) {
        const uint8_t* pixel = bgra + static_cast<int64_t>(y) * stride;
        uint8_t* out = indices + static_cast<int64_t>(y) * indexStride;
        for (int x = 0; x < width; ++x, pixel += 4) {
            if (transparency && pixel[3] < 128) {
                out[x] = kTransparentIndex;
                continue;
            }
            const int offset = dither ? Threshold(x & 7, y & 7) / 4 - 8 : 0;
            const auto moved = [offset](int value) { return std::clamp(value + offset, 0, 255); };
            out[x] =
                static_cast<uint8_t>(Nearest(moved(pixel[2]), moved(pixel[1]), moved(pixel[0])));
        }
    }
}

}  // namespace kelmo::host
