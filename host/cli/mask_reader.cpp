// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/mask_reader.h"

namespace kelmo::host {

namespace {

ReaderOptions SequenceAt(FrameRate rate) {
    ReaderOptions options;
    options.sequenceRate = rate;
    return options;
}

/// Decided on the file's own first picture: a fitted one has see-through bars beside it.
CoverageChannel ChannelOf(const std::string& path, const MediaInfo& info) {
    if (!info.hasAlpha) return CoverageChannel::kLuma;
    Picture picture;
    MediaReader::Open(path)->ReadFrameAt(0, picture);
    return ChooseCoverage(picture);
}

}  // namespace

MaskReader::MaskReader(const std::string& path, FrameRate rate)
    : reader(path, SequenceAt(rate)),
      channel(ChannelOf(path, reader.Info())),
      still(reader.Info().still) {}

void MaskReader::Begin(const RenderPlan& plan, const ClipPlace& place, int64_t from) {
    begun = false;
    reader.Begin(plan, place, from);
}

Picture& MaskReader::Next() {
    if (still && begun) return coverage;
    begun = true;
    coverage = reader.Next();
    TurnIntoCoverage(coverage, channel);
    return coverage;
}

}  // namespace kelmo::host
