// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "geometry/contours/contour_face.h"
#include "geometry/mesh/bevel_mesh_builder.h"
#include "geometry/mesh/bevel_normals.h"
#include "geometry/mesh/bevel_profile.h"
#include "geometry/shapes/outlines.h"
#include "mesh_checks.h"

namespace kelmo {
namespace {

using test::ParsedOutlines;

std::string Describe(const MeshShape& s) {
    return "model " + std::to_string(s.modelType) + ", extrusion " +
           std::to_string(s.extrusionType) + ", hidden " + std::to_string(s.hiddenFillingSurface) +
           ", double " + std::to_string(s.upperDoubleExtrude) + ", size " +
           std::to_string(s.bevelSize) + ", thickness " + std::to_string(s.borderThickness) +
           ", segments " + std::to_string(s.bevelSegments);
}

// Every model, with all that changes which triangles there are.
std::vector<MeshShape> AllKinds() {
    std::vector<MeshShape> shapes;
    for (int32_t model = 0; model < 4; ++model) {
        for (int32_t bits = 0; bits < 8; ++bits) {
            for (const float size : {0.0f, 1.0f, -1.0f}) {
                for (const int32_t segments : {1, 12}) {
                    MeshShape shape;
                    shape.modelType = model;
                    shape.extrusionType = bits & 1;
                    shape.hiddenFillingSurface = bits >> 1 & 1;
                    shape.upperDoubleExtrude = bits >> 2 & 1;
                    shape.bevelSize = size * 10;
                    shape.borderThickness = size;
                    shape.bevelSegments = segments;
                    shape.upperBevelSegments = segments + 3;
                    shape.baseBevelSegments = segments;
                    shapes.push_back(shape);
                }
            }
        }
    }
    return shapes;
}

const std::vector<test::Outline>& Ring() {
    static const std::vector<test::Outline> outlines{
        test::Circle(24, 0.5f, {0.3f, 0.1f}), test::Turned(test::Square(0.4f, {0.3f, 0.1f}))};
    return outlines;
}

int64_t CountOf(const BevelMeshBuilder& builder, const Contours& contours) {
    int64_t sides = 0;
    int64_t faces = 0;
    return builder.CountTriangles(contours, sides, faces);
}

TEST(BevelMesh, isWrittenToTheTriangleForEveryKind) {
    ParsedOutlines parsed(Ring());
    for (const bool hasBox : {false, true}) {
        parsed.contours.m_BoxValid = hasBox;
        parsed.contours.m_RectCount = 3;
        for (const MeshShape& given : AllKinds()) {
            BevelMeshBuilder builder;
            builder.SetShape(AdjustShape(given));
            VectorMesh mesh;
            ASSERT_TRUE(builder.BuildMesh(mesh, parsed.contours, 0.1f, false)) << Describe(given);
            EXPECT_EQ(mesh.triangleCount, CountOf(builder, parsed.contours));
            EXPECT_EQ(test::FaultOf(mesh), "") << Describe(given);
        }
    }
}

TEST(BevelMesh, countsAsItsTablesSay) {
    ParsedOutlines parsed(Ring());
    const int64_t sides = 24 + 4;
    const int64_t faces = static_cast<int64_t>(parsed.contours.m_Triangles[0].size());
    const struct {
        int32_t model, extrusion, hidden;
        int64_t expected;
    } cases[] = {
        {0, 0, 0, 2 * (sides + faces) + sides * 20 * 4},
        {0, 1, 0, 2 * (sides + faces) + sides * 20 * 4},
        {1, 0, 0, 2 * (sides + faces) + sides * 20 * 2},
        {1, 1, 0, 2 * (sides + faces) + sides * 20 * 4},
        {1, 0, 1, 4 * sides + sides * 20 * 4},
        {1, 1, 1, 4 * sides + sides * 20 * 4},
        {2, 0, 0, 2 * faces + sides * (9 + 12) * 2},
        {2, 1, 0, 2 * faces + sides * (9 + 24) * 2},
        {3, 1, 0, 2 * faces + sides * 20 * 2},
    };
    for (const auto& c : cases) {
        MeshShape shape;
        shape.modelType = c.model;
        shape.extrusionType = c.extrusion;
        shape.hiddenFillingSurface = c.hidden;
        shape.bevelSize = 1;
        shape.baseBevelSegments = 9;
        shape.upperBevelSegments = 12;
        BevelMeshBuilder builder;
        builder.SetShape(shape);
        EXPECT_EQ(CountOf(builder, parsed.contours), c.expected) << c.model << c.extrusion;
    }
}

TEST(BevelMesh, isClosedForEveryKindWithABevel) {
    for (const std::vector<test::Outline>& outlines :
         {Ring(), {test::Star(6, 0.6f, 0.4f)}, {test::Square(1)}}) {
        ParsedOutlines parsed(outlines);
        for (const MeshShape& given : AllKinds()) {
            if (given.bevelSize == 0) continue;
            BevelMeshBuilder builder;
            builder.SetShape(AdjustShape(given));
            VectorMesh mesh;
            ASSERT_TRUE(builder.BuildMesh(mesh, parsed.contours, 0.1f, false));
            EXPECT_EQ(test::OpenEdgeCount(mesh), 0) << Describe(given);
        }
    }
}

TEST(BevelMesh, hasNormalsOnTheOuterSideOfCleanShapes) {
    ParsedOutlines parsed({test::Circle(40, 0.5f)});
    for (const int32_t model : {0, 1, 2, 3}) {
        for (const float size : {1.0f, -1.0f}) {
            MeshShape given;
            given.modelType = model;
            given.bevelSize = given.borderThickness = size;
            given.bevelCurve = 0.5f;
            given.extrusionType = 1;
            BevelMeshBuilder builder;
            builder.SetShape(AdjustShape(given));
            VectorMesh mesh;
            ASSERT_TRUE(builder.BuildMesh(mesh, parsed.contours, 0.1f, false));
            for (int64_t first = 0; first < int64_t{mesh.triangleCount} * 3; first += 3) {
                if (test::VertexOf(mesh, first).texcoord[2] < 2) continue;
                const cv::Vec3d a = test::PlaceOf(mesh, first);
                const cv::Vec3d area = (cv::Vec3d(test::PlaceOf(mesh, first + 1)) - a)
                                           .cross(cv::Vec3d(test::PlaceOf(mesh, first + 2)) - a);
                if (cv::norm(area) < 1e-10) continue;
                for (int i = 0; i < 3; ++i) {
                    const cv::Vec3d normal = test::VertexOf(mesh, first + i).normal;
                    EXPECT_GT(normal.dot(area) / cv::norm(area), 0.5)
                        << Describe(given) << " triangle " << first / 3;
                }
            }
        }
    }
}

TEST(BevelMesh, staysFiniteForAnyParameters) {
    ParsedOutlines ring(Ring());
    ParsedOutlines spiky(
        {{{0, 0}, {0, 1}, {0, 1}, {1, 1}, {0.5f, 1}, {2, 1}, {2, 0}, {2, 0}}, {{5, 5}, {6, 5}}});
    const float inf = std::numeric_limits<float>::infinity();
    const float extremes[] = {0, 1e-30f, -1e-6f, 0.5f, 1, -1, 100, -100, inf, -inf, std::nanf("")};
    std::mt19937 random(2);
    const auto pick = [&] { return extremes[random() % std::size(extremes)]; };
    for (int round = 0; round < 250; ++round) {
        MeshShape given;
        given.modelType = static_cast<int32_t>(random() % 6) - 1;
        given.extrusionType = static_cast<int32_t>(random() % 3);
        given.hiddenFillingSurface = static_cast<int32_t>(random() % 2);
        given.upperDoubleExtrude = static_cast<int32_t>(random() % 2);
        given.uvMapMode = static_cast<int32_t>(random() % 2);
        given.bevelSegments = static_cast<int32_t>(random() % 50) - 5;
        for (float* field : {&given.bevelSize, &given.borderThickness, &given.bevelDepth,
                             &given.bevelCurve, &given.borderBevelSize, &given.upperBevelSize,
                             &given.baseBevelSize, &given.edgeExtrusionDepth}) {
            *field = pick();
        }
        for (ParsedOutlines* parsed : {&ring, &spiky}) {
            BevelMeshBuilder builder;
            builder.SetShape(AdjustShape(given));
            VectorMesh mesh;
            ASSERT_TRUE(builder.BuildMesh(mesh, parsed->contours, pick(), false));
            ASSERT_EQ(test::FaultOf(mesh), "") << Describe(given) << ", round " << round;
        }
    }
}

TEST(BevelMesh, keepsListsParallelForBrokenOutlines) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    std::mt19937 random(8);
    std::uniform_real_distribution<float> range(-1, 1);
    test::Outline tangle;
    for (int i = 0; i < 300; ++i) tangle.emplace_back(range(random), range(random));
    const std::vector<std::vector<test::Outline>> shapes = {
        {tangle}, {{{0, 0}, {nan, 1}, {1, 1}, {1, nan}}}, {{}}, {{{1, 1}}}, {test::Circle(3, 0)}};
    for (const std::vector<test::Outline>& outlines : shapes) {
        ParsedOutlines parsed(outlines);
        for (const MeshShape& given : AllKinds()) {
            BevelMeshBuilder builder;
            builder.SetShape(AdjustShape(given));
            VectorMesh mesh;
            if (!builder.BuildMesh(mesh, parsed.contours, 0.1f, false)) continue;
            const Contours& contours = parsed.contours;
            for (size_t g = 0; g < contours.m_EdgeExtends.size(); ++g) {
                ASSERT_EQ(contours.m_EdgeExtends[g].size(), contours.m_Edges[g].size());
                for (size_t c = 0; c < contours.m_Edges[g].size(); ++c) {
                    const size_t records = contours.m_EdgeExtends[g][c].size();
                    EXPECT_TRUE(records == 0 || records == contours.m_Edges[g][c].size());
                }
            }
        }
    }
}

TEST(BevelMesh, carriesAHundredThousandPoints) {
    ParsedOutlines parsed({test::Circle(100000, 0.9f)});
    MeshShape given;
    given.bevelSize = 1;
    given.bevelSegments = 2;
    BevelMeshBuilder builder;
    builder.SetShape(AdjustShape(given));
    VectorMesh mesh;
    ASSERT_TRUE(builder.BuildMesh(mesh, parsed.contours, 0.1f, false));
    EXPECT_EQ(test::FaultOf(mesh), "");
}

TEST(BevelProfile, runsFromTheBodyToTheFaceWithOneRowMoreThanStrips) {
    const cv::Point2f body(0, 0);
    const cv::Point2f face(-0.1f, 0.02f);
    for (const MeshShape& given : AllKinds()) {
        const MeshShape shape = AdjustShape(given);
        for (const float frontZ : {0.05f, 0.0f, -0.03f}) {
            for (const float depth : {0.2f, 0.0f}) {
                for (const bool isBack : {false, true}) {
                    const BevelProfile profile(shape, depth, frontZ, isBack);
                    const bool isInflated = shape.modelType == MeshShape::kInflated;
                    const int32_t strips = isInflated ? shape.upperBevelSegments +
                                                            (isBack ? 0 : shape.baseBevelSegments)
                                                      : shape.bevelSegments;
                    ASSERT_EQ(profile.RowCount(), static_cast<size_t>(strips) + 1)
                        << Describe(given);
                    std::vector<BevelRow> rows(profile.RowCount());
                    profile.Fill(body, face, profile.EdgeRadius(body, face), rows.data());
                    const float z = isBack ? -depth : 0;
                    const float height = isBack ? -frontZ : frontZ;
                    const cv::Vec3f end(face.x, face.y,
                                        shape.hiddenFillingSurface ? z : z + height);
                    EXPECT_EQ(rows.back().position, end) << Describe(given);
                    if (shape.modelType == MeshShape::kPlated) continue;
                    const cv::Vec3f start(body.x, body.y, isInflated && !isBack ? -depth : z);
                    EXPECT_EQ(rows.front().position, start) << Describe(given);
                }
            }
        }
    }
}

TEST(BevelProfile, ofABevelIsAChamferOrAQuarterRound) {
    const cv::Point2f body(0, 0);
    const cv::Point2f face(-1, 0);
    for (const float curve : {0.0f, 1.0f}) {
        MeshShape shape;
        shape.bevelSegments = 16;
        shape.bevelCurve = curve;
        const BevelProfile profile(shape, 2, 1, true);
        std::vector<BevelRow> rows(profile.RowCount());
        profile.Fill(body, face, 0, rows.data());
        for (const BevelRow& row : rows) {
            const float across = -row.position[0];
            const float down = -2 - row.position[2];
            // A chamfer is the straight line; a parabola through the corner (0, 1) is rounder.
            if (curve == 0) {
                EXPECT_NEAR(down, across, 1e-6);
            } else {
                EXPECT_NEAR(std::sqrt(across) + std::sqrt(std::max(0.0f, 1 - down)), 1, 1e-3);
            }
        }
    }
}

TEST(BevelProfile, ofABorderKeepsItsEdgesWithinItsHeight) {
    MeshShape shape;
    shape.modelType = MeshShape::kBordered;
    shape.borderBevelSize = 0.3f;
    const cv::Point2f body(0, 0);
    const cv::Point2f face(-1, 0);
    EXPECT_FLOAT_EQ(BevelProfile(shape, 1, 5, false).EdgeRadius(body, face), 0.3f);
    EXPECT_FLOAT_EQ(BevelProfile(shape, 1, 0.31f, false).EdgeRadius(body, face), 0.1f);
    EXPECT_FLOAT_EQ(BevelProfile(shape, 1, -0.21f, true).EdgeRadius(body, face), 0.1f);
    shape.hiddenFillingSurface = 1;
    EXPECT_FLOAT_EQ(BevelProfile(shape, 1, 5, false).EdgeRadius(body, face), 0.15f);
}

TEST(BevelProfile, changesToTheFaceWhereTheBorderEnds) {
    const auto built = [](int32_t model, int32_t hidden, int32_t isDouble) {
        MeshShape shape;
        shape.modelType = model;
        shape.hiddenFillingSurface = hidden;
        shape.upperDoubleExtrude = isDouble;
        shape.bevelSegments =
            20;  // rows of a border 5, 2, 5, 2, 7; hidden 9, 2, 10; plated 9, 2, 10
        shape.baseBevelSegments = 3;
        shape.upperBevelSegments = 6;
        return shape;
    };
    const struct {
        MeshShape shape;
        float frontZ;
        const char* kinds;
        int32_t split;  // v reaches three times the height at this row of the upper part
    } cases[] = {
        {built(1, 0, 0), 1, "222222222000000000000", 9},
        {built(1, 0, 0), -1, "222222222222220000000", 14},
        {built(1, 0, 1), 1, "222222200000000000000", 7},
        {built(1, 1, 0), 1, "222222222222222222222", 16},
        {built(1, 1, 0), -1, "222222222222222222222", 21},
        {built(1, 1, 1), 1, "222222222222222222222", 11},
        {built(1, 1, 1), -1, "222222222222222222222", 11},
        {built(2, 0, 0), 1, "1112222222", 7},
        {built(3, 0, 0), 1, "222222222222222200000", 16},
        {built(3, 0, 0), -1, "222222222222222222222", 21},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(Describe(c.shape) + ", front " + std::to_string(c.frontZ));
        const BevelProfile profile(c.shape, 1, c.frontZ, false);
        std::string kinds;
        for (size_t i = 0; i < profile.RowCount(); ++i) kinds += std::to_string(profile.KindOf(i));
        EXPECT_EQ(kinds, c.kinds);
        const size_t base = c.shape.modelType == MeshShape::kInflated ? 3 : 0;
        EXPECT_FLOAT_EQ(profile.TexcoordOf(base + 1), 3.0f / static_cast<float>(c.split));
    }
}

TEST(BevelNormals, replaceWhatTurnedOverByTheNearestGoodNeighbour) {
    constexpr size_t kSteps = 9;
    const cv::Vec3d good(0, 3, 4);
    const cv::Vec3d turned(0, 3, -4);
    BevelNormals normals;
    normals.Reset(kSteps, 1, false);
    for (size_t i = 0; i < kSteps; ++i) normals.Set(i, 0, i == 4 || i == 5 ? turned : good);
    normals.Straighten(std::vector<cv::Vec3f>(kSteps));
    for (size_t i = 0; i < kSteps; ++i) {
        EXPECT_EQ(normals.AtStart(i, 0), cv::Vec3f(0, 0.6f, 0.8f)) << i;
        EXPECT_EQ(normals.AtEnd(i, 0), cv::Vec3f(0, 0.6f, 0.8f)) << i;
    }
    // Turned all around: an overhang, which is as it should be.
    for (size_t i = 0; i < kSteps; ++i) normals.Set(i, 0, turned);
    normals.Straighten(std::vector<cv::Vec3f>(kSteps));
    EXPECT_EQ(normals.AtStart(0, 0), cv::Vec3f(0, 0.6f, -0.8f));
    // No area anywhere: the direction that is given for that.
    for (size_t i = 0; i < kSteps; ++i) normals.Set(i, 0, {});
    normals.Straighten(std::vector<cv::Vec3f>(kSteps, {1, 0, 0}));
    EXPECT_EQ(normals.AtEnd(8, 0), cv::Vec3f(1, 0, 0));
}

TEST(BevelMesh, continuesTheFaceMapOnFlatRowsAndRunsUAlongTheOutline) {
    ParsedOutlines parsed({test::Square(1)});
    MeshShape given;
    given.modelType = MeshShape::kBordered;
    given.borderThickness = -2;
    BevelMeshBuilder builder;
    builder.SetShape(AdjustShape(given));
    VectorMesh mesh;
    ASSERT_TRUE(builder.BuildMesh(mesh, parsed.contours, 0.1f, false));
    const MeshFaceMap& map = builder.Groups()[0].faceMap;
    int flat = 0;
    float longest = 0;
    for (int64_t i = 3 * (2 * 2 + 8); i < int64_t{mesh.triangleCount} * 3; ++i) {
        const MeshVertex v = test::VertexOf(mesh, i);
        if (v.texcoord[2] == 0) {
            const cv::Point2f uv = map.At({v.position[0], v.position[1]});
            EXPECT_EQ(cv::Point2f(v.texcoord[0], v.texcoord[1]), uv);
            ++flat;
        } else {
            longest = std::max(longest, v.texcoord[0]);
        }
    }
    EXPECT_GT(flat, 0);
    EXPECT_NEAR(longest, 4, 1e-5) << "four sides as long as the group";
}

}  // namespace
}  // namespace kelmo
