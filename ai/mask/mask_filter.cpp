// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/mask/mask_filter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <opencv2/imgproc.hpp>

#include "ai/mask/mask_edge.h"
#include "ai/mask/person_mask.h"

namespace kelmo {

namespace {

/// Longest side of the picture on which an edge is redrawn: finer shows no difference, since the
/// network's own picture has 256 pixels.
constexpr int kEdgeSide = 640;

/// The four channels of a pixel for a byte of the scaled mask.
using CoverageTable = std::array<uint32_t, 256>;

/// Probabilities below and above which a pixel is surely outside and inside. The network's edge is
/// some pixels of its 256 wide; scaled to a frame it would show as a halo.
constexpr float kOutside = 0.2f;
constexpr float kInside = 0.8f;

template <typename Curve>
CoverageTable MakeTable(Curve curve) {
    CoverageTable table;
    for (size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<uint32_t>(std::lround(255 * curve(i / 255.0f))) * 0x01010101u;
    return table;
}

const CoverageTable& IdentityTable() {
    static const CoverageTable table = MakeTable([](float p) { return p; });
    return table;
}

/// The network's mask with a firm edge that stays where it was.
const CoverageTable& FirmTable() {
    static const CoverageTable table = MakeTable([](float p) {
        const float t = std::clamp((p - kOutside) / (kInside - kOutside), 0.0f, 1.0f);
        return t * t * (3 - 2 * t);
    });
    return table;
}

class MaskFilter : public AiFilter {
public:
    MaskFilter(std::shared_ptr<ModelStore> store, bool hasEdge) : person(store), hasEdge(hasEdge) {}

    bool Transform(const cv::Mat& input, cv::Mat& output) override {
        if (output.empty()) return false;
        frame.Reset(input);
        if (!person.Next(frame)) return false;
        person.Mask().convertTo(bytes, CV_8U, 255.0);
        if (hasEdge && !edge.IsNeutral()) {
            DrawEdge(input.size());
            Write(drawn, IdentityTable(), output);
        } else {
            Write(bytes, FirmTable(), output);
        }
        return true;
    }

    bool SetParameter(const std::string& name, int32_t type, const NLEParamValue& value) override {
        float number = 0.0f;
        if (!hasEdge || !ReadNumber(type, value, number)) return false;
        MaskEdge wanted = edge;
        if (name == "Edge Thickness")
            wanted.thickness = number;
        else if (name == "Edge Feather")
            wanted.feather = number;
        else
            return false;
        edge = wanted.Clamped();
        return true;
    }

private:
    static bool ReadNumber(int32_t type, const NLEParamValue& value, float& number) {
        switch (type) {
            case kParamFloat:
                number = value.AsFloat();
                return true;
            case kParamDouble:
                number = static_cast<float>(value.AsDouble());
                return true;
            case kParamInt:
                number = static_cast<float>(value.AsInt());
                return true;
            default:
                return false;
        }
    }

    void DrawEdge(cv::Size frameSize) {
        const double scale =
            std::min(1.0, double(kEdgeSide) / std::max(frameSize.width, frameSize.height));
        const cv::Size size(std::max(1, cvRound(frameSize.width * scale)),
                            std::max(1, cvRound(frameSize.height * scale)));
        cv::resize(bytes, drawn, size, 0, 0, cv::INTER_LINEAR);
        ApplyMaskEdge(edge, frameSize, drawn);
    }

    /// Scales to the output's size and writes four channels for each byte.
    void Write(const cv::Mat& mask, const CoverageTable& table, cv::Mat& output) {
        cv::resize(mask, scaled, output.size(), 0, 0, cv::INTER_LINEAR);
        for (int y = 0; y < output.rows; ++y) {
            const uint8_t* source = scaled.ptr(y);
            uint8_t* target = output.ptr(y);
            for (int x = 0; x < output.cols; ++x) {
                std::memcpy(target + 4 * x, &table[source[x]], sizeof(uint32_t));
            }
        }
    }

    PersonMask person;
    const bool hasEdge;
    MaskEdge edge;
    PicturePyramid frame;
    cv::Mat bytes, drawn, scaled;
};

}  // namespace

std::unique_ptr<AiFilter> CreateMaskFilter(std::shared_ptr<ModelStore> store, bool hasEdge,
                                           std::string& error) {
    if (!store->Prepare({NetworkId::kPersonMask, NetworkId::kFaceDetector, NetworkId::kPoseDetector,
                         NetworkId::kPoseLandmarks},
                        error))
        return nullptr;
    return std::make_unique<MaskFilter>(std::move(store), hasEdge);
}

}  // namespace kelmo
