// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai_session.h"

#include <dlfcn.h>

#include <cstdio>
#include <filesystem>
#include <mutex>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

namespace kelmo::test {

namespace {

std::mutex logMutex;
std::vector<std::string> logLines;

void Collect(int32_t, const char* format, va_list arguments) {
    char line[2048];
    std::vsnprintf(line, sizeof line, format, arguments);
    const std::lock_guard<std::mutex> lock(logMutex);
    logLines.emplace_back(line);
}

template <typename Function>
void Find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    EXPECT_NE(function, nullptr) << name;
}

}  // namespace

std::string Resources() {
    return KELMO_DATA_DIR;
}
std::string ModelFolder() {
    return KELMO_DATA_DIR "/qor_effect/models";
}
bool HaveModels() {
    return std::filesystem::exists(KELMO_DATA_DIR "/qor_effect/models/SOURCES.txt");
}

AiLibrary& AiLibrary::Get() {
    static AiLibrary library;
    return library;
}

AiLibrary::AiLibrary() {
    void* library = dlopen(KELMO_PLUGIN_DIR "/qorAiFilterPlugin.qor", RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        ADD_FAILURE() << dlerror();
        return;
    }
    SetNLEAIEffectFilterLogCallbackFn setLog = nullptr;
    Find(library, "SetNLEAIEffectFilterLogCallback", setLog);
    Find(library, "CreateNLEAIEffectFilterFromGUID", create);
    Find(library, "DeleteNLEAIEffectFilter", destroy);
    Find(library, "NLEEffectFilterTransform", transform);
    Find(library, "NLEEffectFilterSetParameter", setParameter);
    Find(library, "NLEEffectFilterGetAIResData", getResult);
    setLog(Collect);
}

std::vector<std::string> AiLibrary::TakeLog() {
    const std::lock_guard<std::mutex> lock(logMutex);
    return std::exchange(logLines, {});
}

AiSession::AiSession(const char* guid, const std::string& resources)
    : handle(AiLibrary::Get().create(guid, resources.c_str())) {}

AiSession::~AiSession() {
    AiLibrary::Get().destroy(&handle);
}

int32_t AiSession::Set(const char* name, float value) {
    return AiLibrary::Get().setParameter(handle, name, kParamFloat, NLEParamValue::Float(value));
}

cv::Mat AiSession::Mask(const cv::Mat& bgra, cv::Size size) {
    if (size.empty()) size = bgra.size();
    cv::Mat mask(size, CV_8UC4, cv::Scalar::all(77));
    EXPECT_EQ(AiLibrary::Get().transform(handle, mask.data, mask.cols, mask.rows,
                                         int32_t(mask.step), nullptr, 0, 0, 0, bgra.data, bgra.cols,
                                         bgra.rows, int32_t(bgra.step)),
              0);
    std::vector<cv::Mat> channels;
    cv::split(mask, channels);
    for (int i = 1; i < 4; ++i)
        EXPECT_EQ(cv::norm(channels[0], channels[size_t(i)], cv::NORM_INF), 0);
    return channels[0];
}

std::shared_ptr<AIDATA::BaseAIDATA> AiSession::Analyse(const cv::Mat& bgra) {
    std::shared_ptr<AIDATA::BaseAIDATA> data;
    EXPECT_EQ(AiLibrary::Get().transform(handle, nullptr, bgra.cols, bgra.rows, int32_t(bgra.step),
                                         nullptr, 0, 0, 0, bgra.data, bgra.cols, bgra.rows,
                                         int32_t(bgra.step)),
              0);
    EXPECT_EQ(AiLibrary::Get().getResult(handle, &data), 0);
    return data;
}

std::shared_ptr<AIDATA::HumanFaceInfoMultiDatas> AiSession::Faces(const cv::Mat& bgra) {
    return std::dynamic_pointer_cast<AIDATA::HumanFaceInfoMultiDatas>(Analyse(bgra));
}

std::shared_ptr<AIDATA::HumanPoseDatas> AiSession::Bodies(const cv::Mat& bgra) {
    return std::dynamic_pointer_cast<AIDATA::HumanPoseDatas>(Analyse(bgra));
}

cv::Mat Photo(const std::string& name) {
    const cv::Mat bgr = cv::imread(KELMO_SOURCE_DIR "/build/media/" + name);
    cv::Mat bgra;
    if (!bgr.empty()) cv::cvtColor(bgr, bgra, cv::COLOR_BGR2BGRA);
    return bgra;
}

cv::Mat Moved(const cv::Mat& bgra, float x, float y) {
    cv::Mat moved;
    const cv::Matx23f matrix(1, 0, x, 0, 1, y);
    cv::warpAffine(bgra, moved, matrix, bgra.size(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    return moved;
}

cv::Mat Noisy(const cv::Mat& bgra, double deviation, uint64_t seed) {
    cv::Mat noise(bgra.size(), CV_16SC4), noisy;
    cv::RNG(seed + 1).fill(noise, cv::RNG::NORMAL, 0, deviation);
    cv::add(bgra, noise, noisy, cv::noArray(), CV_8U);
    return noisy;
}

cv::Mat Mirrored(const cv::Mat& bgra) {
    cv::Mat mirrored;
    cv::flip(bgra, mirrored, 1);
    return mirrored;
}

void PhotoTest::SetUp() {
    KELMO_NEED_MODELS();
    if (astronaut.empty()) GTEST_SKIP() << "the photo is not there; scripts/fetch-media gets it";
}

}  // namespace kelmo::test
