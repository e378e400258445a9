// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/mask/mask_filter.h"

#include <algorithm>
#include <cstring>
#include <opencv2/imgproc.hpp>

#include "ai/mask/mask_edge.h"
#include "ai/mask/person_mask.h"

namespace kelmo {

namespace {

/// Longest side of the picture on which an edge is redrawn: finer shows no difference, since the
/// network's own picture has 256 pixels.
constexpr int kEdgeSide = 640;

class MaskFilter : public AiFilter {
public:
    MaskFilter(std::shared_ptr<ModelStore> store, bool hasEdge) : person(store), hasEdge(hasEdge) {}

    bool Transform(const cv::Mat& input, cv::Mat& output) override {
        if (output.empty()) return false;
        frame.Reset(input);
        if (!person.Next(frame)) return false;
        person.Mask().convertTo(bytes, CV_8U, 255.0);
        const cv::Mat* mask = &bytes;
        if (hasEdge && !edge.IsNeutral()) {
            DrawEdge(input.size());
            mask = &drawn;
        }
        Write(*mask, output);
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

    /// Scales to the output's size and repeats the byte in all four channels.
    void Write(const cv::Mat& mask, cv::Mat& output) {
        cv::resize(mask, scaled, output.size(), 0, 0, cv::INTER_LINEAR);
        for (int y = 0; y < output.rows; ++y) {
            const uint8_t* source = scaled.ptr(y);
            uint8_t* target = output.ptr(y);
            for (int x = 0; x < output.cols; ++x) {
                const uint32_t four = source[x] * 0x01010101u;
                std::memcpy(target + 4 * x, &four, sizeof four);
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
