// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "contract/text_path.h"

namespace kelmo::test {

/// Text whose answers are set by the test.
class ScriptedText : public TextPath {
public:
    struct Stream {
        std::vector<uint8_t> types;
        std::vector<float> xs;
        std::vector<float> ys;

        Stream& Add(uint8_t type, float x, float y) {
            types.push_back(type);
            xs.push_back(x);
            ys.push_back(y);
            return *this;
        }
        /// A closed box with lines, clockwise on screen, or the other way round.
        Stream& Box(float left, float top, float right, float bottom, bool turned = false) {
            Add(kTextMoveTo, left, top);
            Add(kTextLineTo, turned ? left : right, turned ? bottom : top);
            Add(kTextLineTo, right, bottom);
            Add(kTextLineTo, turned ? right : left, turned ? top : bottom);
            return Add(kTextLineTo, left, top);
        }
    };

    std::vector<Stream> paths;
    float p = 0.5f;
    float q = 0.5f;
    int32_t width = 100;
    int32_t height = 100;
    float angle = 0;
    bool hasDecoration = false;
    bool hasBox = false;
    std::array<float, 8> box{};
    std::vector<std::array<float, 8>> rects;
    float origin[2] = {3, 4};

    int32_t GetPathCount() override { return static_cast<int32_t>(paths.size()); }
    int32_t GetPath(int32_t index, const uint8_t** types, const float** xs, const float** ys,
                    int32_t) override {
        const Stream& stream = paths.at(index);
        *types = stream.types.data();
        *xs = stream.xs.data();
        *ys = stream.ys.data();
        return static_cast<int32_t>(stream.types.size());
    }
    void GetAnchor(float* x, float* y) override { *x = p, *y = q; }
    void GetSize(int32_t* w, int32_t* h) override { *w = width, *h = height; }
    float GetAngle() override { return angle; }
    bool HasDecoration() override { return hasDecoration; }
    bool GetBox(float* corners, uint32_t* color) override {
        std::copy(box.begin(), box.end(), corners);
        *color = 0x11223344;
        return hasBox;
    }
    void Clone(std::shared_ptr<TextPath>* out) override {
        *out = std::make_shared<ScriptedText>(*this);
    }
    bool IsSame(TextPath* other) override { return other == this; }
    int32_t GetLayoutPath(int32_t, const uint8_t**, const float**, const float**,
                          int32_t) override {
        return 0;
    }
    void GetOrigin(float* x, float* y) override { *x = origin[0], *y = origin[1]; }
    int32_t GetRectCount() override { return static_cast<int32_t>(rects.size()); }
    uint32_t GetRectColor() override { return 0x55667788; }
    void GetRect(int32_t index, float* corners) override {
        std::copy(rects.at(index).begin(), rects.at(index).end(), corners);
    }
};

}  // namespace kelmo::test
