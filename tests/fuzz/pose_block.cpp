// SPDX-License-Identifier: GPL-3.0-or-later
// The pose block of a host: any bytes are read without leaving them, and what comes out is no
// larger than what went in.
#include "bindings/pose_block.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    // Reused, as an effect reuses it from frame to frame.
    static AIDATA::HumanPoseDatas poses;
    const int32_t result = kelmo::ParsePoseBlock(data, size, poses);
    if ((size < kelmo::kMinPoseBlockSize) != (result == 1)) std::abort();
    std::size_t words = 1;
    for (const AIDATA::HumanPose& person : poses.persons) words += 2 + 2 * person.points.size();
    if (result == 0 && words * 4 > size) std::abort();
    if (result == 1 && !poses.persons.empty()) std::abort();
    return 0;
}
