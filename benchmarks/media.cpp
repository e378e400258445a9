// SPDX-License-Identifier: GPL-3.0-or-later
// What reading and writing of a clip cost without any effect between: the floor of a render. The
// conversions of our own are measured beside swscale, which does the same work.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "host/media/decode/frame_importer.h"
#include "host/media/decode/frame_prefetcher.h"
#include "host/media/decode/media_reader.h"
#include "host/media/encode/frame_drain.h"
#include "host/media/encode/frame_exporter.h"
#include "host/media/encode/media_writer.h"

namespace kelmo::host {
namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 720;
constexpr int kFrames = 60;

std::string Temporary(const char* name) {
    return (std::filesystem::temp_directory_path() / name).string();
}

WriterOptions Options() {
    WriterOptions options;
    options.width = kWidth;
    options.height = kHeight;
    options.preset = "veryfast";
    return options;
}

// Moving stripes with the noise of a decent camera: something to predict and something to code.
void Draw(Picture& picture, int frame) {
    picture.Resize(kWidth, kHeight);
    unsigned state = static_cast<unsigned>(frame) + 1;
    for (int y = 0; y < kHeight; ++y) {
        uint8_t* pixel = picture.Row(y);
        for (int x = 0; x < kWidth; ++x, pixel += 4) {
            state = state * 1664525u + 1013904223u;
            const int noise = static_cast<int>(state >> 30);
            pixel[0] = static_cast<uint8_t>((x + 3 * frame) / 8 + noise);
            pixel[1] = static_cast<uint8_t>((x + y + 5 * frame) / 8 + noise);
            pixel[2] = static_cast<uint8_t>((y + 2 * frame) / 4 + noise);
            pixel[3] = 255;
        }
    }
}

const std::string& Clip() {
    static const std::string path = [] {
        const std::string name = Temporary("kelmo_benchmark_media.mp4");
        auto writer = MediaWriter::Open(name, Options());
        Picture picture;
        for (int i = 0; i < kFrames; ++i) {
            Draw(picture, i);
            writer->WriteFrame(picture);
        }
        writer->Finish();
        return name;
    }();
    return path;
}

void CountFrames(benchmark::State& state, int frames) {
    state.counters["frames"] =
        benchmark::Counter(static_cast<double>(frames) * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate);
}

void Decode(benchmark::State& state) {
    Clip();  // made outside of the measured time
    for (auto _ : state) {
        auto reader = MediaReader::Open(Clip());
        Picture picture;
        for (int i = 0; i < kFrames; ++i) reader->ReadFrameAt(i / 25.0, picture);
    }
    CountFrames(state, kFrames);
}
BENCHMARK(Decode)->Unit(benchmark::kMillisecond)->UseRealTime();

void DecodeThenEncode(benchmark::State& state) {
    Clip();  // made outside of the measured time
    for (auto _ : state) {
        auto reader = MediaReader::Open(Clip());
        auto writer = MediaWriter::Open(Temporary("kelmo_benchmark_out.mp4"), Options());
        Picture picture;
        for (int i = 0; i < kFrames; ++i) {
            reader->ReadFrameAt(i / 25.0, picture);
            writer->WriteFrame(picture);
        }
        writer->Finish();
    }
    CountFrames(state, kFrames);
}
BENCHMARK(DecodeThenEncode)->Unit(benchmark::kMillisecond)->UseRealTime();

void DecodeBesideEncode(benchmark::State& state) {
    Clip();  // made outside of the measured time
    for (auto _ : state) {
        auto reader = MediaReader::Open(Clip());
        auto writer = MediaWriter::Open(Temporary("kelmo_benchmark_out.mp4"), Options());
        {
            FramePrefetcher input(
                [&](int64_t index, Picture& picture) {
                    return reader->ReadFrameAt(static_cast<double>(index) / 25, picture);
                },
                kFrames);
            FrameDrain output([&](const Picture& picture) { writer->WriteFrame(picture); });
            Picture picture;
            while (input.Next(picture)) output.Put(picture);
            output.Finish();
        }
        writer->Finish();
    }
    CountFrames(state, kFrames);
}
BENCHMARK(DecodeBesideEncode)->Unit(benchmark::kMillisecond)->UseRealTime();

ColorDescription Bt709() {
    return ColorOf(AVCOL_SPC_BT709, false);
}

LibavPtr<AVFrame> YuvFrame() {
    Picture picture;
    Draw(picture, 0);
    FrameExporter exporter(kWidth, kHeight, kWidth, kHeight, AV_PIX_FMT_YUV420P, Bt709(), false, 1);
    int error = 0;
    LibavPtr<AVFrame> frame(av_frame_clone(exporter.Export(picture, error)));
    frame->colorspace = AVCOL_SPC_BT709;
    return frame;
}

void YuvToBgraOurs(benchmark::State& state) {
    const LibavPtr<AVFrame> frame = YuvFrame();
    FrameImporter importer(1);
    importer.Configure(kWidth, kHeight, FitMode::kStretch, {}, kWidth, kHeight);
    Picture picture;
    for (auto _ : state) importer.Import(*frame, AV_CODEC_ID_H264, picture);
    CountFrames(state, 1);
}
BENCHMARK(YuvToBgraOurs)->Unit(benchmark::kMillisecond);

void YuvToBgraSwscale(benchmark::State& state) {
    const LibavPtr<AVFrame> frame = YuvFrame();
    LibavPtr<AVFrame> target = AllocateFrame(kWidth, kHeight, AV_PIX_FMT_BGRA);
    Scaler scaler(1);
    for (auto _ : state) scaler.Run(*frame, *target, Bt709());
    CountFrames(state, 1);
}
BENCHMARK(YuvToBgraSwscale)->Unit(benchmark::kMillisecond);

void BgraToYuvOurs(benchmark::State& state) {
    Picture picture;
    Draw(picture, 0);
    FrameExporter exporter(kWidth, kHeight, kWidth, kHeight, AV_PIX_FMT_YUV420P, Bt709(), false, 1);
    int error = 0;
    for (auto _ : state) benchmark::DoNotOptimize(exporter.Export(picture, error));
    CountFrames(state, 1);
}
BENCHMARK(BgraToYuvOurs)->Unit(benchmark::kMillisecond);

void BgraToYuvSwscale(benchmark::State& state) {
    Picture picture;
    Draw(picture, 0);
    LibavPtr<AVFrame> source = BorrowBgra(picture.pixels.data(), kWidth, kHeight, picture.stride);
    LibavPtr<AVFrame> target = AllocateFrame(kWidth, kHeight, AV_PIX_FMT_YUV420P);
    Scaler scaler(1);
    for (auto _ : state) scaler.Run(*source, *target, Bt709());
    CountFrames(state, 1);
}
BENCHMARK(BgraToYuvSwscale)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelmo::host
