// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/mesh/mesh_builder_decoration.h"

#include <algorithm>
#include <array>

namespace kelmo {
namespace {

constexpr float kDecorationKind = 1000;
constexpr size_t kFloatsPerRect = 8;

using Corners = std::array<cv::Point2f, 4>;

// Byte 0 is the lowest.
float ByteOf(uint32_t color, int byte) {
    return static_cast<float>(color >> (8 * byte) & 0xFF) / 255;
}

void WriteQuad(VectorMeshWriter& writer, int64_t triangle, const Corners& corners, uint32_t color,
               const cv::Vec4f& center) {
    static constexpr int kOrder[6] = {0, 1, 3, 1, 2, 3};
    static const cv::Vec3f kTexcoords[4] = {{0, 0, kDecorationKind},
                                            {1, 0, kDecorationKind},
                                            {1, 1, kDecorationKind},
                                            {0, 1, kDecorationKind}};
    const cv::Vec3f tangent(ByteOf(color, 0), ByteOf(color, 1), ByteOf(color, 2));
    for (int i = 0; i < 6; ++i) {
        const int corner = kOrder[i];
        const cv::Vec4f position(corners[corner].x, corners[corner].y, 0, 0);
        writer.Put(triangle + i / 3, i % 3, {position, kTexcoords[corner], {0, 0, 1}, tangent},
                   center);
    }
}

// A rect that the list does not hold (the host's count went wrong) has no area.
Corners CornersOfRect(const Contours& contours, size_t rect) {
    Corners corners{};
    if (contours.m_Rects.size() < (rect + 1) * kFloatsPerRect) return corners;
    const float* values = contours.m_Rects.data() + rect * kFloatsPerRect;
    for (size_t i = 0; i < corners.size(); ++i) corners[i] = {values[2 * i], values[2 * i + 1]};
    return corners;
}

}  // namespace

int64_t CountDecoration(const Contours& contours) {
    return contours.m_BoxValid ? 2 * int64_t{std::max(contours.m_RectCount, 0)} + 2 : 0;
}

void WriteDecoration(VectorMeshWriter& writer, const Contours& contours, int64_t triangleCount) {
    if (!contours.m_BoxValid) return;
    const int64_t rectCount = std::max(contours.m_RectCount, 0);
    const cv::Vec4f rectCenter(0, 0, 0, 1 - ByteOf(contours.m_RectColor, 3));
    for (int64_t rect = 0; rect < rectCount; ++rect) {
        WriteQuad(writer, triangleCount - 2 + 2 * (rect - rectCount),
                  CornersOfRect(contours, static_cast<size_t>(rect)), contours.m_RectColor,
                  rectCenter);
    }
    WriteQuad(writer, triangleCount - 2, contours.m_BoxCorners, contours.m_BoxColor, {});
}

}  // namespace kelmo
