// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/render/mask_reader.h"

namespace kelmo::host {

MaskReader::MaskReader(const std::string& path, FrameRate rate)
    : reader(path, SequenceAt(rate)),
      // Decided on the file's own first picture: a fitted one has see-through bars beside it.
      channel(reader.Info().hasAlpha ? ChooseCoverage(reader.First()) : CoverageChannel::kLuma),
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
