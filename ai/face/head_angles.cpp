// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/face/head_angles.h"

#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <numbers>

namespace kelmo {

namespace {

using Bytes = std::span<const uint8_t>;

/// Reads the fields of a protocol buffer one by one. Ends at the first byte that makes no sense.
class FieldReader {
public:
    explicit FieldReader(Bytes bytes) : bytes(bytes) {}

    uint32_t number = 0;
    uint64_t word = 0;  ///< of a whole number, or the bits of a 4-byte value
    Bytes block;        ///< of a nested message, a text, packed values

    bool Next() {
        uint64_t tag = 0;
        if (bytes.empty() || !Varint(tag)) return false;
        number = static_cast<uint32_t>(tag >> 3);
        word = 0;
        block = {};
        switch (tag & 7) {
            case 0:
                return Varint(word);
            case 1:
                return Fixed(8);
            case 2: {
                uint64_t length = 0;
                if (!Varint(length) || length > bytes.size()) return false;
                block = bytes.first(length);
                bytes = bytes.subspan(length);
                return true;
            }
            case 5:
                return Fixed(4);
            default:
                return false;
        }
    }

private:
    bool Varint(uint64_t& value) {
        value = 0;
        for (int shift = 0; shift < 64 && !bytes.empty(); shift += 7) {
            const uint8_t byte = bytes[0];
            bytes = bytes.subspan(1);
            value |= uint64_t{byte & 0x7fu} << shift;
            if (!(byte & 0x80)) return true;
        }
        return false;
    }

    bool Fixed(size_t size) {
        if (bytes.size() < size) return false;
        std::memcpy(&word, bytes.data(), size);
        bytes = bytes.subspan(size);
        return true;
    }

    Bytes bytes;
};

float FloatOf(const uint8_t* bytes) {
    float value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

/// The vertices of the mesh message: field 3, five floats each (x, y, z and a texture position),
/// packed or one by one.
std::vector<float> ReadVertices(Bytes mesh) {
    std::vector<float> values;
    for (FieldReader field(mesh); field.Next();) {
        if (field.number != 3) continue;
        if (field.block.empty())
            values.push_back(FloatOf(reinterpret_cast<const uint8_t*>(&field.word)));
        for (size_t i = 0; i + 4 <= field.block.size(); i += 4)
            values.push_back(FloatOf(field.block.data() + i));
    }
    return values;
}

constexpr double kDegrees = 180.0 / std::numbers::pi;
constexpr size_t kFloatsPerVertex = 5;
constexpr size_t kMinPoints = 4;

}  // namespace

std::optional<HeadModel> HeadModel::Parse(Bytes bytes) {
    std::vector<float> vertices;
    std::vector<Point> points;
    for (FieldReader field(bytes); field.Next();) {
        if (field.number == 1) vertices = ReadVertices(field.block);
        if (field.number != 2) continue;
        Point point{0, 0.0, {}};
        for (FieldReader part(field.block); part.Next();) {
            if (part.number == 1) point.index = part.word;
            if (part.number == 2)
                point.weight = FloatOf(reinterpret_cast<const uint8_t*>(&part.word));
        }
        points.push_back(point);
    }
    if (vertices.size() != kFaceSurfaceCount * kFloatsPerVertex || points.size() < kMinPoints)
        return std::nullopt;
    for (Point& point : points) {
        if (point.index >= kFaceSurfaceCount || !(point.weight > 0) || !(point.weight < 1e6))
            return std::nullopt;
        // The file's y points up, its z to the viewer.
        const float* v = &vertices[point.index * kFloatsPerVertex];
        if (!std::isfinite(v[0]) || !std::isfinite(v[1]) || !std::isfinite(v[2]))
            return std::nullopt;
        point.position = {v[0], -v[1], -v[2]};
    }
    return HeadModel(std::move(points));
}

std::optional<HeadModel> HeadModel::Load(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    return Parse({reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()});
}

HeadAngles HeadModel::Fit(const FaceShape& shape) const {
    cv::Point3d modelMean, faceMean;
    double total = 0.0;
    for (const Point& point : points) {
        modelMean += point.weight * point.position;
        faceMean += point.weight * cv::Point3d(shape.points[point.index]);
        total += point.weight;
    }
    modelMean *= 1.0 / total;
    faceMean *= 1.0 / total;
    cv::Matx33d covariance = cv::Matx33d::zeros();
    for (const Point& point : points) {
        const cv::Vec3d m(point.position - modelMean);
        const cv::Vec3d f(cv::Point3d(shape.points[point.index]) - faceMean);
        covariance += point.weight * (f * m.t());
    }
    cv::Matx31d w;
    cv::Matx33d u, vt;
    cv::SVD::compute(covariance, w, u, vt);
    // Without this the best fit of a flat or noisy face could be a mirror image.
    const double sign = cv::determinant(u * vt) < 0 ? -1.0 : 1.0;
    const cv::Matx33d r = u * cv::Matx33d::diag({1.0, 1.0, sign}) * vt;
    return {std::atan2(r(2, 1), r(2, 2)) * kDegrees,
            std::atan2(-r(2, 0), std::hypot(r(0, 0), r(1, 0))) * kDegrees,
            std::atan2(r(1, 0), r(0, 0)) * kDegrees};
}

}  // namespace kelmo
