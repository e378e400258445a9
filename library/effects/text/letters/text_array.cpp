// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/text/letters/text_array.h"

#include <algorithm>
#include <array>
#include <opencv2/imgproc.hpp>
#include <utility>
#include <vector>

#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGLTextArray", MakeEffect<NLEOpenGLTextArray>,
                                        {"2A03BBFE-64C1-484E-917C-35A6C6D47C88"});

constexpr double kDark = 3.0;
constexpr double kCovered = 85.0;  // mean of a block that counts
constexpr float kMostPixelSize = 1e4F;

/// Numbers of blocks in four bytes.
class BlockCode {
public:
    cv::Scalar Next() {
        ++counters[0];
        if (counters[0] > 255) ++counters[1];
        if (counters[1] >= 255) ++counters[2];
        if (counters[2] >= 255) ++counters[3];
        cv::Scalar code;
        for (int k = 0; k < 4; ++k) code[k] = std::min(counters[static_cast<std::size_t>(k)], 255);
        return code;
    }

private:
    std::array<int, 4> counters{};
};

}  // namespace

void BlockLattice::Find(const cv::Mat& picture, float pixelSize) {
    cv::cvtColor(picture, gray, cv::COLOR_BGR2GRAY);
    cv::threshold(gray, gray, kDark, 255.0, cv::THRESH_BINARY);
    for (cv::Mat* const part : {&blocks, &codes}) {
        part->create(gray.size(), CV_8UC4);
        part->setTo(cv::Scalar::all(0));
    }
    mask.create(gray.size(), CV_8UC1);
    mask.setTo(0);
    count = 0;
    block = std::max(
        static_cast<int32_t>(std::clamp(pixelSize, 0.0F, kMostPixelSize) * 0.01F * 20.0F), 1);
    gap = block < 5 ? 1 : 2;
    block += block % 2;
    BlockCode code;
    for (int x = 0; x < gray.cols; x += Step()) {
        for (int y = 0; y < gray.rows; y += Step()) {
            cv::Rect at(x, y, block, block);
            if (x + block >= gray.cols) at.width = gray.cols - x - 1;
            if (y + block >= gray.rows) at.height = gray.rows - y - 1;
            if (at.empty() || cv::mean(gray(at))[0] <= kCovered) continue;
            blocks(at).setTo(cv::Scalar::all(255));
            mask(at).setTo(255);
            codes(at).setTo(code.Next());
            ++count;
        }
    }
    bound = {};
    std::vector<std::vector<cv::Point>> contours;
    cv::findContours(mask, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
    for (const auto& contour : contours) bound |= cv::boundingRect(contour);
}

NLEOpenGLTextArray::NLEOpenGLTextArray(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLTextArray::InitParams() {
    engine->AddUniformFloat("roiX", 0.0F);
    engine->AddUniformFloat("roiY", 0.0F);
    engine->AddUniformFloat("roiWidth", 1.0F);
    engine->AddUniformFloat("roiHeight", 1.0F);
    engine->AddUniformInt("blockTotalNum", 100);
    engine->AddUniformFloat("blockSizeX", 0.002F);
    engine->AddUniformFloat("blockSizeY", 0.007F);
    return kFilterOk;
}

void NLEOpenGLTextArray::SendLattice(const WorkingSize& size) {
    const auto w = static_cast<float>(size.width);
    const auto h = static_cast<float>(size.height);
    const auto wide = static_cast<float>(lattice.bound.width + lattice.gap);
    const auto high = static_cast<float>(lattice.bound.height + lattice.gap);
    const auto step = static_cast<float>(lattice.Step());
    engine->SetUniformFloat("roiX", static_cast<float>(lattice.bound.x) / w);
    engine->SetUniformFloat("roiY", static_cast<float>(lattice.bound.y) / h);
    engine->SetUniformFloat("roiWidth", wide / w);
    engine->SetUniformFloat("roiHeight", high / h);
    engine->SetUniformInt("blockTotalNum", lattice.count);
    engine->SetUniformFloat("blockSizeX", step / wide);
    engine->SetUniformFloat("blockSizeY", step / high);
}

int32_t NLEOpenGLTextArray::DoEffect(const FrameRecord&, const FrameRecord& first, FrameRecord& out,
                                     int32_t frameWidth, int32_t frameHeight, int32_t) {
    if (!engine || frameWidth < 1 || frameHeight < 1) return kFilterFailed;
    cv::Mat picture;
    GetMat(picture, first);
    if (picture.empty()) return kFilterFailed;
    const WorkingSize size = WorkingSize::For(frameWidth, frameHeight);
    cv::resize(picture, small, {size.width, size.height}, 0.0, 0.0, cv::INTER_LINEAR);
    lattice.Find(small, FloatOr("pixelSize", 30.0F));
    const cv::Size frame(frameWidth, frameHeight);
    cv::resize(lattice.blocks, blocks, frame, 0.0, 0.0, cv::INTER_CUBIC);
    cv::resize(lattice.codes, codes, frame, 0.0, 0.0, cv::INTER_NEAREST);
    if (lattice.bound.width < 2 || lattice.bound.height < 2) return kFilterFailed;
    int32_t slot = 0;
    SetInputFrame(slot, first);
    BindImageFrame(*engine, slot, blocks);
    BindImageFrame(*engine, slot + 1, codes);
    SendLattice(size);
    UploadTimeAndLength(*engine, Time());
    UploadParams();
    return RenderTo(out);
}

}  // namespace kelmo
