// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "contract/ai_filter.h"
#include "contract/face_sdk.h"

namespace kelmo::beauty {

/// Faces and their landmarks, from the AI library beside us. The same picture again costs nothing.
/// Without that library or its networks there are no faces, which is told once.
class FaceFinder {
public:
    FaceFinder();
    ~FaceFinder();
    FaceFinder(const FaceFinder&) = delete;
    FaceFinder& operator=(const FaceFinder&) = delete;

    /// `pixels` BGRA, top row first, `stride` in bytes. The result is valid until the next call.
    FaceSdkResult Find(const void* pixels, int32_t width, int32_t height, int32_t stride);
    /// How many pictures were really searched.
    int32_t SearchCount() const { return searches; }

private:
    void Search(const void* pixels, int32_t width, int32_t height, int32_t stride);

    void* handle = nullptr;
    uint64_t lastPicture = 0;
    int32_t lastWidth = 0;
    int32_t lastHeight = 0;
    int32_t searches = 0;
    std::vector<FaceSdkFace> faces;
};

}  // namespace kelmo::beauty
