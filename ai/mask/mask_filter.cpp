// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/mask/mask_filter.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "ai/mask/coverage_writer.h"
#include "ai/mask/mask_edge.h"
#include "ai/mask/person_mask.h"

namespace kelmo {

namespace {

/// Longest side of the picture on which an edge is redrawn: finer shows no difference, since the
/// network's own picture has 256 pixels.
constexpr int kEdgeSide = 640;

/// Probabilities below and above which a pixel is surely outside and inside. The network's edge is
/// some pixels of its 256 wide; scaled to a frame it would show as a halo.
constexpr float kOutside = 0.2f;
constexpr float kInside = 0.8f;

const CoverageCurve& AsItIs() {
    static const CoverageCurve curve([](float p) { return p; });
    return curve;
}

/// The network's mask with a firm edge that stays where it was.
const CoverageCurve& Firm() {
    static const CoverageCurve curve([](float p) {
        const float t = std::clamp((p - kOutside) / (kInside - kOutside), 0.0f, 1.0f);
        return t * t * (3 - 2 * t);
    });
    return curve;
}

class MaskFilter : public AiFilter {
public:
    MaskFilter(std::shared_ptr<ModelStore> store, bool hasEdge) : person(store), hasEdge(hasEdge) {}

    bool Transform(const cv::Mat& input, cv::Mat& output) override {
        if (output.empty()) return false;
        frame.Reset(input);
        if (!person.Next(frame)) return false;
        person.Mask().convertTo(bytes, CV_8U, 255.0);
        // Where the network is sure on both sides its edge is a staircase of its own pixels.
        cv::GaussianBlur(bytes, bytes, {3, 3}, 0);
        if (hasEdge && !edge.IsNeutral()) {
            DrawEdge(input.size());
            writer.Write(drawn, AsItIs(), output);
        } else {
            writer.Write(bytes, Firm(), output);
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

    PersonMask person;
    const bool hasEdge;
    MaskEdge edge;
    PicturePyramid frame;
    CoverageWriter writer;
    cv::Mat bytes, drawn;
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
