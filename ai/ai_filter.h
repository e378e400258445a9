// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <opencv2/core.hpp>
#include <string>

#include "contract/ai_filter.h"

namespace kelmo {

/// One filter of the library: what stands behind a handle. One thread at a time. A filter remembers
/// the frames that it was given: results are steady from frame to frame, and the same row of frames
/// gives the same row of results.
class AiFilter {
public:
    virtual ~AiFilter() = default;
    /// Analyses `input` (4 channels of 8 bits, top row first, not empty). Mask filters write the
    /// mask to `output`, the others leave it, which may be empty. False: it could not; a mask is
    /// then empty, a record old.
    virtual bool Transform(const cv::Mat& input, cv::Mat& output) = 0;
    /// False when the filter has no such parameter or the value is of no use.
    virtual bool SetParameter(const std::string&, int32_t, const NLEParamValue&) { return false; }
    /// The record of the last transform; null before it and for masks.
    virtual std::shared_ptr<AIDATA::BaseAIDATA> Result() { return nullptr; }
};

/// Makes a filter by its GUID (36 characters, letters of either case). Null, with a line in the
/// log, when there is none, or when its networks are not installed below `resources`. Returns at
/// once: networks are loaded in the background, and the first transform waits for them.
std::unique_ptr<AiFilter> CreateAiFilter(const std::string& guid, const std::string& resources);

/// The record that a filter hands out next: the last one again when nobody kept it.
template <typename Record>
Record& FreshRecord(std::shared_ptr<Record>& record) {
    if (!record || record.use_count() > 1) record = std::make_shared<Record>();
    return *record;
}

}  // namespace kelmo
