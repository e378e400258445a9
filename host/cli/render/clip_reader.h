// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/cli/console.h"
#include "host/cli/render/render_plan.h"
#include "host/media/decode/frame_prefetcher.h"
#include "host/media/decode/media_reader.h"

namespace kelmo::host {

/// Numbered pictures, which know no rate, at this one; 25 a second when there is none.
ReaderOptions SequenceAt(std::optional<FrameRate> rate);

/// The pictures of one input along the timeline, read ahead on a thread of their own.
///
/// Thread rule: one object, one thread. Throws MediaError.
class ClipReader {
public:
    explicit ClipReader(const std::string& path, const ReaderOptions& options = {});
    ~ClipReader();

    const MediaInfo& Info() const { return reader->Info(); }
    ClipFacts Facts() const;

    /// The first picture in its own size; before Begin.
    Picture First();
    /// Prepares the frames of `place` at the plan's size and rate, from timeline frame `from` on.
    void Begin(const RenderPlan& plan, const ClipPlace& place, int64_t from);
    /// The next frame of the place; valid until the call after. Past the end the last one stays.
    Picture& Next();

    /// Shows what went wrong while reading; ends the reading ahead.
    void ReportWarnings(Console& console);

private:
    std::string path;
    std::unique_ptr<MediaReader> reader;
    std::unique_ptr<FramePrefetcher> ahead;  // absent for a still, which is read once
    Picture current;
};

}  // namespace kelmo::host
