// SPDX-License-Identifier: GPL-3.0-or-later
// The point stream of a host's text: any types and coordinates become outlines and faces in lists
// that stay parallel and hold finite points.
//
// The bytes: step length, angle and flags, then points of a type, x and y, paths parted by the
// type 0.
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "geometry/contours/contour_face.h"
#include "geometry/contours/contours.h"

namespace {

class ByteReader {
public:
    ByteReader(const uint8_t* bytes, std::size_t count) : data(bytes), left(count) {}

    template <typename T>
    T Take() {
        T value{};
        const std::size_t count = std::min(sizeof(T), left);
        if (count != 0) std::memcpy(&value, data, count);
        data += count;
        left -= count;
        return value;
    }
    bool IsDone() const { return left == 0; }

private:
    const uint8_t* data;
    std::size_t left;
};

struct Stream {
    std::vector<uint8_t> types;
    std::vector<float> xs;
    std::vector<float> ys;
};

class FuzzedText : public kelmo::TextPath {
public:
    std::vector<Stream> streams;
    float angle = 0;

    int32_t GetPathCount() override { return static_cast<int32_t>(streams.size()); }
    int32_t GetPath(int32_t index, const uint8_t** types, const float** xs, const float** ys,
                    int32_t) override {
        *types = streams[index].types.data();
        *xs = streams[index].xs.data();
        *ys = streams[index].ys.data();
        return static_cast<int32_t>(streams[index].types.size());
    }
    void GetAnchor(float* p, float* q) override { *p = *q = 0.5f; }
    void GetSize(int32_t* width, int32_t* height) override { *width = 101, *height = 77; }
    float GetAngle() override { return angle; }
    bool HasDecoration() override { return false; }
    bool GetBox(float*, uint32_t*) override { return false; }
    void Clone(std::shared_ptr<TextPath>*) override {}
    bool IsSame(TextPath*) override { return false; }
    int32_t GetLayoutPath(int32_t, const uint8_t**, const float**, const float**,
                          int32_t) override {
        return 0;
    }
    void GetOrigin(float* x, float* y) override { *x = *y = 0; }
    int32_t GetRectCount() override { return 0; }
    uint32_t GetRectColor() override { return 0; }
    void GetRect(int32_t, float*) override {}
};

void Check(bool condition) {
    if (!condition) std::abort();
}

// Returns the number of points.
std::size_t CheckPolylines(const kelmo::Contours& contours) {
    std::size_t count = 0;
    Check(contours.m_Points.size() == contours.m_Paths.size());
    Check(contours.m_Edges.size() == contours.m_Paths.size());
    Check(contours.m_PathLengths.size() == contours.m_Paths.size());
    for (std::size_t group = 0; group < contours.m_Points.size(); ++group) {
        Check(contours.m_Points[group].size() == contours.m_Edges[group].size());
        for (std::size_t sub = 0; sub < contours.m_Points[group].size(); ++sub) {
            const auto& points = contours.m_Points[group][sub];
            Check(contours.m_Edges[group][sub].size() == 2 * points.size());
            for (const cv::Point2f& p : points) Check(std::isfinite(p.x) && std::isfinite(p.y));
            count += points.size();
        }
    }
    return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    ByteReader reader(data, size);
    FuzzedText text;
    const float segment = reader.Take<float>();
    text.angle = reader.Take<float>();
    const auto flags = reader.Take<uint8_t>();
    text.streams.emplace_back();
    while (!reader.IsDone()) {
        const auto type = reader.Take<uint8_t>();
        if (type == 0) {
            text.streams.emplace_back();
            continue;
        }
        text.streams.back().types.push_back(type);
        text.streams.back().xs.push_back(reader.Take<float>());
        text.streams.back().ys.push_back(reader.Take<float>());
    }
    kelmo::Contours contours;
    contours.ParseTextPath(&text, 160, 90);
    contours.FlattenPaths(segment, flags & 1);
    // Filling faces takes time with the square of the points at worst.
    if (CheckPolylines(contours) > 300) return 0;
    kelmo::ContourFace().ParseContours(contours, flags & 2, 4, 5);
    if (contours.m_Triangles.empty()) return 0;  // OpenCV refused
    Check(contours.m_Triangles.size() == contours.m_Paths.size());
    Check(contours.m_GroupRects.size() == contours.m_Paths.size());
    Check(contours.m_EdgeCores.size() == contours.m_Paths.size());
    return 0;
}
