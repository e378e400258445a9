// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/render/clip_reader.h"

namespace kelmo::host {

ReaderOptions SequenceAt(std::optional<FrameRate> rate) {
    ReaderOptions options;
    if (rate) options.sequenceRate = *rate;
    return options;
}

ClipReader::ClipReader(const std::string& file, const ReaderOptions& options)
    : path(file), reader(MediaReader::Open(file, options)) {}

ClipReader::~ClipReader() = default;

ClipFacts ClipReader::Facts() const {
    const MediaInfo& info = reader->Info();
    return {path, info.width, info.height, info.frameRate, info.duration, info.still};
}

Picture ClipReader::First() {
    Picture picture;
    reader->ReadFrameAt(0, picture);
    return picture;
}

void ClipReader::Begin(const RenderPlan& plan, const ClipPlace& place, int64_t from) {
    ahead.reset();
    reader->SetOutput(plan.width, plan.height, FitMode::kLetterbox);
    if (reader->Info().still) {
        reader->ReadFrameAt(0, current);
        return;
    }
    const int64_t skipped = std::max<int64_t>(0, from - place.firstFrame);
    const auto produce = [source = reader.get(), rate = plan.rate, start = place.start, skipped](
                             int64_t index, Picture& picture) {
        // A frame that cannot be converted is transparent, and a warning; the next ones may be
        // well.
        source->ReadFrameAt(start + rate.TimeOf(skipped + index), picture);
        return true;
    };
    ahead = std::make_unique<FramePrefetcher>(produce, place.frames - skipped);
    current.Resize(plan.width, plan.height);
    std::fill(current.pixels.begin(), current.pixels.end(), uint8_t{0});
}

Picture& ClipReader::Next() {
    if (ahead) ahead->Next(current);
    return current;
}

void ClipReader::ReportWarnings(Console& console) {
    ahead.reset();
    for (const std::string& warning : reader->Warnings()) console.Warning(warning);
}

}  // namespace kelmo::host
