// SPDX-License-Identifier: GPL-3.0-or-later
// Cost of the AI library on a frame of 1280 x 720: whole calls of its exports beside bare runs of
// the networks below them, and what starting costs. Needs scripts/fetch-models; takes the photo of
// scripts/fetch-media when it is there (without a person the mask's gate works on each frame).
#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <algorithm>
#include <chrono>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "ai/picture/picture_pyramid.h"
#include "ai/runtime/model_store.h"
#include "contract/ai_filter.h"

namespace kelmo {
namespace {

using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

/// Frames that differ a little, so that none counts as the same again.
std::vector<cv::Mat> Frames() {
    const cv::Mat photo = cv::imread(KELMO_SOURCE_DIR "/build/media/astronaut.png");
    cv::Mat bgr(720, 1280, CV_8UC3, cv::Scalar(150, 170, 180)), bgra;
    if (!photo.empty()) {
        cv::Mat scaled;
        cv::resize(photo, scaled, {720, 720});
        scaled.copyTo(bgr(cv::Rect(280, 0, 720, 720)));
    }
    cv::cvtColor(bgr, bgra, cv::COLOR_BGR2BGRA);
    std::vector<cv::Mat> frames;
    for (int i = 0; i < 4; ++i) {
        const cv::Matx23f move(1, 0, float(2 * i), 0, 1, 0);
        frames.emplace_back();
        cv::warpAffine(bgra, frames.back(), move, bgra.size(), cv::INTER_LINEAR,
                       cv::BORDER_REPLICATE);
    }
    return frames;
}

template <typename Function>
Function Find(const char* name) {
    static void* library = dlopen(KELMO_PLUGIN_DIR "/qorAiFilterPlugin.qor", RTLD_NOW);
    return library ? reinterpret_cast<Function>(dlsym(library, name)) : nullptr;
}

/// What a program that starts waits for, on the thread that starts: the library is loaded with the
/// plug-in, and each kind of filter made for the first time. Runs first, and once.
void FirstUse(benchmark::State& state) {
    const std::pair<const char*, const char*> kinds[] = {
        {"mask_ms", "2193B116-1AD4-49F4-84A1-FFA3CB983A94"},
        {"faces_ms", "0C670CEA-AF42-4309-B86B-7A3169EAC541"},
        {"body_ms", "02E5BBF3-8C49-4392-9B0F-5B72E56FC762"}};
    for (auto _ : state) {
        auto start = Clock::now();
        const auto create =
            Find<CreateNLEAIEffectFilterFromGUIDFn>("CreateNLEAIEffectFilterFromGUID");
        const auto destroy = Find<DeleteNLEAIEffectFilterFn>("DeleteNLEAIEffectFilter");
        state.counters["load_ms"] = Milliseconds(Clock::now() - start);
        for (const auto& [name, guid] : kinds) {
            start = Clock::now();
            void* handle = create ? create(guid, KELMO_DATA_DIR) : nullptr;
            state.counters[name] = Milliseconds(Clock::now() - start);
            if (!handle) {
                state.SkipWithError("the networks are not there; scripts/fetch-models gets them");
                return;
            }
            destroy(&handle);
        }
    }
}
BENCHMARK(FirstUse)->Iterations(1)->Unit(benchmark::kMillisecond);

/// `guid`'s transform beside one run of each of `networks`, in turn.
void Compare(benchmark::State& state, const char* guid, bool isMask,
             std::initializer_list<NetworkId> networks) {
    const auto create = Find<CreateNLEAIEffectFilterFromGUIDFn>("CreateNLEAIEffectFilterFromGUID");
    const auto transform = Find<NLEEffectFilterTransformFn>("NLEEffectFilterTransform");
    const auto destroy = Find<DeleteNLEAIEffectFilterFn>("DeleteNLEAIEffectFilter");
    void* handle = create ? create(guid, KELMO_DATA_DIR) : nullptr;
    std::string error;
    const auto store = ModelStore::Open(KELMO_DATA_DIR, error);
    if (!handle || !store || !store->Prepare(networks, error)) {
        state.SkipWithError("the networks are not there; scripts/fetch-models gets them");
        return;
    }
    std::vector<NetworkLease> leases;
    for (NetworkId id : networks) leases.push_back(store->Lease(id));
    const std::vector<cv::Mat> frames = Frames();
    cv::Mat mask(720, 1280, CV_8UC4);
    size_t next = 0;
    const auto call = [&] {
        const cv::Mat& frame = frames[next++ % frames.size()];
        transform(handle, isMask ? mask.data : nullptr, 1280, 720, 5120, nullptr, 0, 0, 0,
                  frame.data, 1280, 720, 5120);
    };
    for (int i = 0; i < 20; ++i) call();
    // The networks of the comparison see the same picture, not an empty one.
    PicturePyramid picture;
    picture.Reset(frames[0]);
    for (size_t i = 0; i < leases.size(); ++i) {
        const NetworkSpec& spec = SpecOf(networks.begin()[i]);
        cv::Mat scaled;
        picture.Stretch({spec.inputWidth, spec.inputHeight}, scaled);
        PicturePyramid::ToInput(scaled, ColourRange::kZeroToOne, leases[i]->Input());
    }
    // The best of each: what else the machine does lengthens some rounds.
    double whole = 1e9, bare = 1e9;
    for (auto _ : state) {
        const auto start = Clock::now();
        call();
        const auto middle = Clock::now();
        for (NetworkLease& network : leases) network->Run();
        whole = std::min(whole, Milliseconds(middle - start));
        bare = std::min(bare, Milliseconds(Clock::now() - middle));
    }
    state.counters["call_ms"] = whole;
    state.counters["networks_ms"] = bare;
    state.counters["ratio"] = whole / bare;
    destroy(&handle);
}

BENCHMARK_CAPTURE(Compare, mask, "2193B116-1AD4-49F4-84A1-FFA3CB983A94", true,
                  {NetworkId::kPersonMask})
    ->Unit(benchmark::kMillisecond);
/// One face that is followed: the close network on each frame, the detector on each fifth.
BENCHMARK_CAPTURE(Compare, faces, "0C670CEA-AF42-4309-B86B-7A3169EAC541", false,
                  {NetworkId::kFaceMeshAttention})
    ->Unit(benchmark::kMillisecond);
/// One body that is followed: the landmark network on each frame, the detector on each tenth.
BENCHMARK_CAPTURE(Compare, body, "02E5BBF3-8C49-4392-9B0F-5B72E56FC762", false,
                  {NetworkId::kPoseLandmarks})
    ->Unit(benchmark::kMillisecond);

/// From nothing: how long a filter's creation takes, and how long until its networks are there.
void Start(benchmark::State& state, std::initializer_list<NetworkId> networks) {
    double create = 0, ready = 0;
    for (auto _ : state) {
        std::string error;
        const auto start = Clock::now();
        const std::string folder = ModelStore::FolderOf(KELMO_DATA_DIR);
        auto runtime = TensorRuntime::Load(folder + "/libtensorflowlite_c.so", error);
        if (!runtime) {
            state.SkipWithError("the networks are not there; scripts/fetch-models gets them");
            return;
        }
        const auto store = std::make_shared<ModelStore>(folder, std::move(runtime));
        store->Prepare(networks, error);
        create += Milliseconds(Clock::now() - start);
        for (NetworkId id : networks) benchmark::DoNotOptimize(store->Lease(id));
        ready += Milliseconds(Clock::now() - start);
    }
    state.counters["create_ms"] = create / static_cast<double>(state.iterations());
    state.counters["ready_ms"] = ready / static_cast<double>(state.iterations());
}

BENCHMARK_CAPTURE(Start, mask,
                  {NetworkId::kPersonMask, NetworkId::kFaceDetector, NetworkId::kPoseDetector,
                   NetworkId::kPoseLandmarks})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Start, faces,
                  {NetworkId::kFaceDetector, NetworkId::kFaceDetectorNear, NetworkId::kFaceMesh,
                   NetworkId::kFaceMeshAttention})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Start, body, {NetworkId::kPoseDetector, NetworkId::kPoseLandmarks})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelmo
