// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/mesh/bevel_profile.h"

#include <algorithm>
#include <cmath>

#include "geometry/offset/edge_offset.h"

namespace kelmo {
namespace {

constexpr int32_t kFaceKind = 0;
constexpr int32_t kBodyKind = 1;
constexpr int32_t kBevelKind = 2;

constexpr float kSmallestBorder = 0.001f;
constexpr float kHiddenBorder = 0.15f;
// v runs this often over the texture while the bevel rises by 1.
constexpr float kTexturesPerHeight = 3;

cv::Vec3f Lift(const cv::Point2f& point, float z) {
    return {point.x, point.y, z};
}

template <typename Point>
Point Mix(const Point& from, const Point& to, float share) {
    return from * (1 - share) + to * share;
}

// The control point of a rounded edge: `curve` 0 lies on the chord, 1 in the corner over the
// body's outline.
cv::Vec3f EdgeControl(const cv::Vec3f& body, const cv::Vec3f& face, float curve) {
    const cv::Vec3f corner(body[0], body[1], face[2]);
    return Mix((body + face) * 0.5f, corner, curve);
}

// Writes the rows of one piece after the other.
class RowWriter {
public:
    explicit RowWriter(BevelRow* first) : next(first) {}

    void Curve(const cv::Vec3f& start, const cv::Vec3f& control, const cv::Vec3f& end, int32_t rows,
               bool reachesEnd) {
        const auto steps = static_cast<float>(std::max(reachesEnd ? rows - 1 : rows, 1));
        for (int32_t i = 0; i < rows; ++i) {
            const float t = static_cast<float>(i) / steps;
            next->position =
                start * ((1 - t) * (1 - t)) + control * (2 * t * (1 - t)) + end * (t * t);
            next->tangent = (control - start) * (2 * (1 - t)) + (end - control) * (2 * t);
            ++next;
        }
    }

    void Line(const cv::Vec3f& start, const cv::Vec3f& end, int32_t rows) {
        for (int32_t i = 0; i < rows; ++i) {
            const float t = static_cast<float>(i) / static_cast<float>(rows);
            next->position = Mix(start, end, t);
            next->tangent = end - start;
            ++next;
        }
    }

private:
    BevelRow* next;
};

}  // namespace

BevelProfile::BevelProfile(const MeshShape& builtShape, float bodyDepth, float faceZ, bool back)
    : shape(builtShape),
      depth(bodyDepth),
      frontZ(faceZ),
      isBack(back),
      outlineZ(back ? -bodyDepth : 0),
      height(back ? -faceZ : faceZ),
      border(std::max(shape.borderBevelSize, kSmallestBorder)) {
    switch (shape.modelType) {
        case MeshShape::kBordered:
            PlanBordered();
            break;
        case MeshShape::kInflated:
            PlanInflated();
            break;
        case MeshShape::kPlated:
            PlanPlated();
            break;
        default:
            PlanBevelled();
            break;
    }
    PlanTexcoords();
}

void BevelProfile::Append(int32_t rows, int32_t kind, bool reachesEnd) {
    rows = std::max(rows, 0);
    pieces.push_back({rows, reachesEnd});
    kinds.insert(kinds.end(), rows, kind);
}

int32_t BevelProfile::RowsThrough(size_t piece) const {
    int32_t rows = 0;
    for (size_t i = 0; i < std::min(piece, pieces.size()); ++i) rows += pieces[i].rows;
    return rows;
}

void BevelProfile::PlanBevelled() {
    Append(shape.bevelSegments + 1, kBevelKind, true);
    splitRow = RowsThrough(1);
}

void BevelProfile::PlanInflated() {
    hasBase = !isBack;
    if (hasBase) Append(shape.baseBevelSegments, kBodyKind);
    const int32_t segments = shape.upperBevelSegments;
    const int32_t shelf = segments >= 6 ? segments / 3 : 2;
    Append(shelf, kBevelKind);
    Append(segments - shelf + 1, kBevelKind, true);
    splitRow = static_cast<int32_t>(kinds.size());
}

void BevelProfile::PlanPlated() {
    const int32_t rest = shape.bevelSegments - 2;
    const int32_t upright = depth == 0 ? 1 : 2;
    const int32_t last = rest - rest / 2 + 1 + (2 - upright);
    Append(rest / 2, kBevelKind);
    Append(upright, kBevelKind);
    AppendEdge(last, true);
}

void BevelProfile::AppendEdge(int32_t rows, bool reachesEnd) {
    const int32_t before = static_cast<int32_t>(kinds.size());
    Append(rows, kBevelKind, reachesEnd);
    const int32_t faceRow = before + rows / 2;
    if (frontZ > 0) std::fill(kinds.begin() + faceRow, kinds.end(), kFaceKind);
    splitRow = frontZ > 0 ? faceRow : static_cast<int32_t>(kinds.size());
}

void BevelProfile::PlanBordered() {
    const int32_t segments = shape.bevelSegments;
    if (shape.hiddenFillingSurface == 1) {
        const int32_t rest = segments - 2;
        const int32_t first = rest < 4 ? 2 : rest / 2;
        Append(first, kBevelKind);
        Append(2, kBevelKind);
        AppendEdge(rest - first + 1, true);
        std::fill(kinds.begin(), kinds.end(), kBevelKind);  // there is no face
        if (shape.upperDoubleExtrude == 1) splitRow = RowsThrough(2);
        return;
    }
    const int32_t straight = border == 0.5f ? 0 : 2;
    const int32_t rest = segments - straight - 2;
    const int32_t rounded = std::max(rest / 3, 2);
    Append(rounded, kBevelKind);
    Append(2, kBevelKind);
    if (shape.upperDoubleExtrude == 1) {
        Append(rounded, kFaceKind);
        splitRow = RowsThrough(2);
    } else {
        AppendEdge(rounded, false);
        if (frontZ <= 0) splitRow += straight;
    }
    Append(straight, frontZ <= 0 ? kBevelKind : kFaceKind);
    Append(rest - 2 * rounded + 1, kFaceKind, true);
}

void BevelProfile::PlanTexcoords() {
    const float whole = kTexturesPerHeight * std::abs(height);
    const int32_t base = hasBase ? shape.baseBevelSegments : 0;
    const auto split = static_cast<float>(std::max(splitRow - base, 1));
    texcoords.resize(kinds.size());
    for (size_t i = 0; i < kinds.size(); ++i) {
        const auto row = static_cast<int32_t>(i);
        if (row >= base) {
            texcoords[i] = static_cast<float>(row - base) * whole / split;
        } else {
            texcoords[i] =
                static_cast<float>(row) * kTexturesPerHeight * depth / static_cast<float>(base + 1);
        }
    }
}

float BevelProfile::EdgeRadius(const cv::Point2f& body, const cv::Point2f& face) const {
    const auto width = static_cast<float>(cv::norm(face - body));
    const float radius = width * (shape.hiddenFillingSurface == 1 ? kHiddenBorder : border);
    // Two or three edges must fit over each other.
    if (frontZ > 0) return std::min(radius, frontZ / 3.1f);
    return std::min(radius, -frontZ / 2.1f);
}

void BevelProfile::Fill(const cv::Point2f& body, const cv::Point2f& face, float radius,
                        BevelRow* rows) const {
    switch (shape.modelType) {
        case MeshShape::kBordered:
            return FillBordered(body, face, radius, rows);
        case MeshShape::kInflated:
            return FillInflated(body, face, rows);
        case MeshShape::kPlated:
            return FillPlated(body, face, rows);
        default:
            return FillBevelled(body, face, rows);
    }
}

void BevelProfile::FillBevelled(const cv::Point2f& body, const cv::Point2f& face,
                                BevelRow* rows) const {
    const cv::Vec3f start = Lift(body, outlineZ);
    const cv::Vec3f end = Lift(face, outlineZ + height);
    RowWriter(rows).Curve(start, EdgeControl(start, end, shape.bevelCurve), end, pieces[0].rows,
                          true);
}

void BevelProfile::FillInflated(const cv::Point2f& body, const cv::Point2f& face,
                                BevelRow* rows) const {
    RowWriter writer(rows);
    const cv::Point2f outwards = UnitVector(body - face);
    size_t piece = 0;
    if (hasBase) {
        const cv::Point2f bulge = body + outwards * (depth * 0.5f * shape.baseBevelSize);
        writer.Curve(Lift(body, -depth), Lift(bulge, -depth / 2), Lift(body, 0),
                     pieces[piece++].rows, false);
    }
    const auto width = static_cast<float>(cv::norm(body - face));
    const cv::Point2f bulge = face + outwards * (2 * width * shape.upperBevelSize);
    writer.Line(Lift(body, outlineZ), Lift(face, outlineZ), pieces[piece++].rows);
    writer.Curve(Lift(face, outlineZ), Lift(bulge, outlineZ + height / 2),
                 Lift(face, outlineZ + height), pieces[piece].rows, true);
}

void BevelProfile::FillPlated(const cv::Point2f& body, const cv::Point2f& face,
                              BevelRow* rows) const {
    RowWriter writer(rows);
    const float bottom = outlineZ - height - depth;
    const float top = outlineZ + height;
    const auto ring = [&](const cv::Point2f& from, const cv::Point2f& to, float z,
                          const Piece& piece) {
        const cv::Vec3f control = EdgeControl(Lift(body, z), Lift(face, z), shape.bevelCurve);
        writer.Curve(Lift(from, z), control, Lift(to, z), piece.rows, piece.reachesEnd);
    };
    ring(face, body, bottom, pieces[0]);
    writer.Line(Lift(body, bottom), Lift(body, top), pieces[1].rows);
    ring(body, face, top, pieces[2]);
}

void BevelProfile::FillBordered(const cv::Point2f& body, const cv::Point2f& face, float radius,
                                BevelRow* rows) const {
    RowWriter writer(rows);
    const bool isHidden = shape.hiddenFillingSurface == 1;
    const bool isDouble = shape.upperDoubleExtrude == 1;
    const float r = isBack ? -radius : radius;
    const float z = outlineZ;
    const float top = z + height;
    const cv::Point2f step = Mix(face, body, border);  // where the border ends
    const cv::Vec3f outer = Lift(body, z + r);
    const cv::Vec3f faceAtEdge = Lift(face, z + r);
    const cv::Vec3f stepAtEdge = Lift(step, z + r);

    const cv::Vec3f& inner = isHidden || isDouble ? faceAtEdge : stepAtEdge;
    const cv::Vec3f roundEnd = Mix(outer, inner, border);
    const cv::Vec3f flatEnd = isDouble && !isHidden ? faceAtEdge : Mix(inner, outer, border);
    writer.Curve(Lift(body, z), outer, roundEnd, pieces[0].rows, false);
    writer.Line(roundEnd, flatEnd, pieces[1].rows);
    if (isHidden) {
        writer.Curve(flatEnd, faceAtEdge, Lift(face, z), pieces[2].rows, true);
        return;
    }

    cv::Vec3f stepStart;
    cv::Vec3f stepEnd;
    if (isDouble) {
        stepStart = Lift(step, Mix(z + r, top, border));
        stepEnd = Lift(step, Mix(top, z + r, border));
    } else if (frontZ > 0) {
        stepStart = Lift(step, z + 2 * r);
        stepEnd = Lift(step, top - r);
    } else {
        stepStart = Lift(step, z);
        stepEnd = Lift(step, top + r);
    }
    writer.Curve(flatEnd, stepAtEdge, stepStart, pieces[2].rows, false);
    writer.Line(stepStart, stepEnd, pieces[3].rows);
    writer.Curve(stepEnd, Lift(step, top), Lift(face, top), pieces[4].rows, true);
}

}  // namespace kelmo
