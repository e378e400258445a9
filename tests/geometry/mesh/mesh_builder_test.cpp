// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/mesh/mesh_builder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "geometry/contours/contour_face.h"
#include "geometry/mesh/bevel_mesh_builder.h"
#include "geometry/shapes/outlines.h"
#include "mesh_checks.h"

namespace kelmo {
namespace {

using test::ParsedOutlines;
using test::VertexOf;

const std::vector<test::Outline>& RingOutlines() {
    static const std::vector<test::Outline> outlines{test::Circle(16, 0.5f, {0.25f, -0.125f}),
                                                     test::Turned(test::Circle(12, 0.2f))};
    return outlines;
}

MeshShape Shape(int32_t modelType, float size) {
    MeshShape shape;
    shape.modelType = modelType;
    shape.bevelSize = size * 10;
    shape.borderThickness = size;
    return shape;
}

TEST(AdjustShape, choosesTheSizeThatCountsForTheModel) {
    const struct {
        int32_t model;
        float bevelSize, borderThickness, expected;
    } cases[] = {{0, 5, 2, 0.5f}, {1, 5, 2, 2}, {2, 5, 2, 2}, {2, 5, 0, 0.001f}, {3, 5, 2, 0.5f}};
    for (const auto& c : cases) {
        MeshShape given;
        given.modelType = c.model;
        given.bevelSize = c.bevelSize;
        given.borderThickness = c.borderThickness;
        EXPECT_FLOAT_EQ(AdjustShape(given).bevelSize, c.expected) << c.model;
        EXPECT_EQ(AdjustShape(given).borderThickness, c.model % 3 == 0 ? 0 : c.borderThickness);
    }
}

TEST(AdjustShape, keepsSegmentsBordersAndTypesWithinTheirModels) {
    MeshShape few;
    few.bevelSegments = few.baseBevelSegments = few.upperBevelSegments = -3;
    few.hiddenFillingSurface = few.extrusionType = 1;
    few.borderBevelSize = 0.5f;
    few.edgeExtrusionDepth = -1;
    const auto adjusted = [&](int32_t model, int32_t doubleExtrude = 0) {
        MeshShape given = few;
        given.modelType = model;
        given.upperDoubleExtrude = doubleExtrude;
        return AdjustShape(given);
    };
    EXPECT_EQ(adjusted(0).bevelSegments, 1);
    EXPECT_EQ(adjusted(1).bevelSegments, 10);
    EXPECT_EQ(adjusted(3).bevelSegments, 4);
    EXPECT_EQ(adjusted(2).baseBevelSegments, 2);
    EXPECT_EQ(adjusted(2).upperBevelSegments, 6);
    EXPECT_EQ(adjusted(0).hiddenFillingSurface, 0);
    EXPECT_EQ(adjusted(1).hiddenFillingSurface, 1);
    EXPECT_FLOAT_EQ(adjusted(1).bevelSize, 0.001f) << "an outline needs a width";
    EXPECT_EQ(adjusted(3).extrusionType, 0);
    EXPECT_EQ(adjusted(1).extrusionType, 1);
    EXPECT_FLOAT_EQ(adjusted(1, 1).borderBevelSize, 0.5f) << "hidden: no scale";
    few.hiddenFillingSurface = 0;
    EXPECT_FLOAT_EQ(adjusted(1, 1).borderBevelSize, 0.25f);
    EXPECT_FLOAT_EQ(adjusted(1, 0).borderBevelSize, 0.15f);
    EXPECT_FLOAT_EQ(adjusted(1, 1).edgeExtrusionDepth, 0.01f);
    EXPECT_FLOAT_EQ(adjusted(2).edgeExtrusionDepth, 0.003f);
    EXPECT_EQ(adjusted(17).modelType, 0);
    few.levelSubdivision = -1;
    EXPECT_EQ(adjusted(0).levelSubdivision, 0);
    few.levelSubdivision = std::numeric_limits<int32_t>::max();
    EXPECT_EQ(adjusted(0).levelSubdivision, 1024);
    few.bevelSize = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(adjusted(0).bevelSize, 0);
}

TEST(BuildMesh, withoutBevelIsAClosedBody) {
    const std::vector<std::vector<test::Outline>> shapes = {
        {test::Square(1)},
        RingOutlines(),
        {test::Star(7, 0.5f, 0.2f)},
        {test::Circle(12, 0.2f, {-0.5f, 0}), test::Circle(9, 0.2f, {0.5f, 0})}};
    for (size_t i = 0; i < shapes.size(); ++i) {
        for (const bool isText : {true, false}) {
            ParsedOutlines parsed(shapes[i], isText);
            BevelMeshBuilder builder;
            VectorMesh mesh;
            ASSERT_TRUE(builder.BuildMesh(mesh, parsed.contours, 0.1f, false));
            EXPECT_EQ(test::OpenEdgeCount(mesh), 0) << "shape " << i;
            EXPECT_EQ(test::FaultOf(mesh), "");
        }
    }
}

TEST(BuildMesh, ofGlyphsWithoutBevelIsClosed) {
    const test::FontFile font(test::kLatinFont);
    for (const char32_t character : std::u32string(U"AOB8%gij&@\u00C5\u00E9")) {
        test::FontTextPath text(1920, 1080);
        text.Add(font.Outline(font.GlyphOf(character), 300, 700, 700, nullptr));
        Contours contours;
        test::ParseText(contours, text, 1920, 1080);
        BevelMeshBuilder builder;
        VectorMesh mesh;
        ASSERT_TRUE(builder.BuildMesh(mesh, contours, 0.1f, false));
        EXPECT_EQ(test::FaultOf(mesh), "") << static_cast<uint32_t>(character);
        EXPECT_EQ(test::OpenEdgeCount(mesh), 0) << static_cast<uint32_t>(character);
    }
}

TEST(BuildMesh, putsFrontsBacksAndWallsInOrder) {
    ParsedOutlines parsed({test::Square(2)});
    MeshBuilder builder;
    VectorMesh mesh;
    ASSERT_TRUE(builder.BuildMesh(mesh, parsed.contours, 0.25f, false));
    ASSERT_EQ(mesh.triangleCount, 2 * (2 + 4));
    const float depth = 0.25f * 2 * 1.8f;
    for (int t = 0; t < 2; ++t) {
        for (int i = 0; i < 3; ++i) {
            const MeshVertex front = VertexOf(mesh, 3 * t + i);
            // The back repeats the front in the order second, first, third.
            const int turned[] = {1, 0, 2};
            const MeshVertex back = VertexOf(mesh, 3 * (2 + t) + turned[i]);
            EXPECT_EQ(front.normal, cv::Vec3f(0, 0, 1));
            EXPECT_EQ(back.normal, cv::Vec3f(0, 0, -1));
            EXPECT_EQ(front.position[2], 0);
            EXPECT_FLOAT_EQ(back.position[2], -depth);
            EXPECT_EQ(front.position[0], back.position[0]);
            EXPECT_EQ(front.texcoord, back.texcoord);
            EXPECT_FLOAT_EQ(front.texcoord[0], front.position[0] / 2 + 0.5f);
            EXPECT_FLOAT_EQ(front.texcoord[1], front.position[1] / 2 + 0.5f);
            EXPECT_EQ(front.tangent, cv::Vec3f(1, 0, 0));
            EXPECT_EQ(test::CenterOf(mesh, 3 * t + i), cv::Vec4f(0, 0, -depth / 2, 0));
        }
    }
    // The first step leads from the bottom left to the top left corner; its wall faces left.
    const cv::Point2f p(-1, -1);
    const cv::Point2f q(-1, 1);
    const struct {
        cv::Point2f point;
        bool isBottom;
        float u;
    } wall[] = {{q, false, 1}, {p, false, 0}, {p, true, 0},
                {q, true, 1},  {q, false, 1}, {p, true, 0}};
    for (int i = 0; i < 6; ++i) {
        const MeshVertex v = VertexOf(mesh, 3 * 4 + i);
        EXPECT_EQ(v.position,
                  cv::Vec4f(wall[i].point.x, wall[i].point.y, wall[i].isBottom ? -depth : 0, 0))
            << i;
        EXPECT_FLOAT_EQ(v.texcoord[0], wall[i].u) << i;
        EXPECT_FLOAT_EQ(v.texcoord[1], wall[i].isBottom ? 0.25f : 0) << i;
        EXPECT_EQ(v.texcoord[2], 1);
        EXPECT_EQ(v.tangent, cv::Vec3f(0, 1, 0));
        EXPECT_FLOAT_EQ(v.normal[0], -0.5f);
        EXPECT_FLOAT_EQ(v.normal[1], wall[i].point == p ? -0.5f : 0.5f);
    }
}

TEST(BuildMesh, windsFacesAndWallsClockwiseSeenFromOutside) {
    ParsedOutlines parsed(RingOutlines());
    MeshBuilder builder;
    VectorMesh mesh;
    ASSERT_TRUE(builder.BuildMesh(mesh, parsed.contours, 0.2f, false));
    for (int64_t first = 0; first < int64_t{mesh.triangleCount} * 3; first += 3) {
        const cv::Vec3f a = test::PlaceOf(mesh, first);
        const cv::Vec3f cross =
            (test::PlaceOf(mesh, first + 1) - a).cross(test::PlaceOf(mesh, first + 2) - a);
        EXPECT_LT(cross.dot(VertexOf(mesh, first).normal), 0) << first / 3;
    }
}

TEST(BuildMesh, movesTheBodyOutForPositiveAndTheFaceInForNegativeSizes) {
    const auto extent = [](const VectorMesh& mesh, float kind, bool front) {
        float most = 0;
        for (int64_t i = 0; i < int64_t{mesh.triangleCount} * 3; ++i) {
            const MeshVertex v = VertexOf(mesh, i);
            if (v.texcoord[2] == kind && (kind != 0 || (v.normal[2] > 0) == front)) {
                most = std::max(most, v.position[0]);
            }
        }
        return most;
    };
    for (const bool isText : {true, false}) {
        for (const float size : {3.0f, -3.0f}) {
            ParsedOutlines parsed({test::Square(2)}, isText);
            MeshBuilder builder;
            MeshShape shape;
            shape.modelType = MeshShape::kBordered;
            shape.borderThickness = size;
            builder.SetShape(AdjustShape(shape));
            VectorMesh mesh;
            ASSERT_TRUE(builder.BuildMesh(mesh, parsed.contours, 0.25f, false));
            const float moved = 2 * std::abs(size) / 30;
            EXPECT_NEAR(extent(mesh, 1, true), size > 0 ? 1 + moved : 1, 1e-5);
            EXPECT_NEAR(extent(mesh, 0, true), size > 0 ? 1 : 1 - moved, 1e-5);
            EXPECT_NEAR(extent(mesh, 0, false), size > 0 ? 1 + moved : 1, 1e-5) << "flat back";
            ASSERT_EQ(parsed.contours.m_EdgeExtends[0][0].size(), 8u);
        }
    }
}

TEST(BuildMesh, takesEachGroupsOwnSizeForMasksAndTheSmallestForText) {
    for (const bool isText : {true, false}) {
        Contours contours;
        for (const float side : {2.0f, 0.5f}) {
            Contours one;
            test::FillContours(one, {test::Square(side)});
            contours.m_Points.push_back(one.m_Points[0]);
            contours.m_Edges.push_back(one.m_Edges[0]);
        }
        contours.m_IsText = isText;
        ContourFace().ParseContours(contours, false, 0, 0);
        MeshBuilder builder;
        builder.SetShape(AdjustShape(Shape(MeshShape::kBevelled, 3)));
        VectorMesh mesh;
        ASSERT_TRUE(builder.BuildMesh(mesh, contours, 0.5f, false));
        ASSERT_EQ(builder.Groups().size(), 2u);
        EXPECT_NEAR(builder.Groups()[0].frontZ, isText ? 0.05f : 0.2f, 1e-6);
        EXPECT_NEAR(builder.Groups()[1].frontZ, 0.05f, 1e-6);
        EXPECT_EQ(builder.Groups()[1].center[3], 1);
    }
}

TEST(BuildMesh, sharesOneFaceMapWhenAskedTo) {
    Contours contours;
    for (const float x : {-1.0f, 1.0f}) {
        Contours one;
        test::FillContours(one, {test::Square(1, {x, 0})});
        contours.m_Points.push_back(one.m_Points[0]);
        contours.m_Edges.push_back(one.m_Edges[0]);
    }
    ContourFace().ParseContours(contours, false, 0, 0);
    for (const int32_t mode : {0, 1}) {
        MeshShape shape;
        shape.uvMapMode = mode;
        MeshBuilder builder;
        builder.SetShape(shape);
        VectorMesh mesh;
        ASSERT_TRUE(builder.BuildMesh(mesh, contours, 0.1f, false));
        for (int64_t i = 0; i < 12; ++i) {
            const MeshVertex v = VertexOf(mesh, i);
            const float x = v.position[0] - (mode ? 0 : test::CenterOf(mesh, i)[0]);
            EXPECT_NEAR(v.texcoord[0], x + 0.5f, 1e-5) << "mode " << mode;
            EXPECT_NEAR(v.texcoord[1], v.position[1] + 0.5f, 1e-5);
        }
    }
}

TEST(BuildMesh, liftsFrontFacesByTheHeightPicture) {
    ParsedOutlines parsed({test::Square(2)});
    cv::Mat picture(8, 4, CV_8UC4, cv::Scalar(51, 9, 9, 9));  // not square: must not read beyond
    MeshShape shape;
    shape.enableSubdivision = true;
    for (const bool hasPicture : {true, false}) {
        MeshBuilder builder;
        builder.SetShape(shape);
        builder.SetHeightPicture(hasPicture ? picture : cv::Mat());
        VectorMesh mesh;
        ASSERT_TRUE(builder.BuildMesh(mesh, parsed.contours, 0.1f, false));
        for (int64_t i = 0; i < 12; ++i) {
            const bool isFront = i < 6;
            EXPECT_FLOAT_EQ(VertexOf(mesh, i).position[3], isFront && hasPicture ? 0.2f : 0);
        }
    }
}

TEST(BuildMesh, endsWithRectsAndBox) {
    ParsedOutlines parsed({test::Square(2)});
    Contours& contours = parsed.contours;
    contours.m_BoxValid = true;
    contours.m_BoxCorners = {cv::Point2f(-2, 2), {2, 2}, {2, -2}, {-2, -2}};
    contours.m_BoxColor = 0x00FF8000;
    contours.m_RectCount = 2;
    contours.m_RectColor = 0x330000FF;
    for (int i = 0; i < 16; ++i) contours.m_Rects.push_back(static_cast<float>(i));
    MeshBuilder builder;
    VectorMesh mesh;
    ASSERT_TRUE(builder.BuildMesh(mesh, contours, 0.1f, false));
    EXPECT_EQ(test::FaultOf(mesh), "");
    const int64_t box = int64_t{mesh.triangleCount} * 3 - 6;
    const int order[] = {0, 1, 3, 1, 2, 3};
    const cv::Vec3f texcoords[] = {{0, 0, 1000}, {1, 0, 1000}, {1, 1, 1000}, {0, 1, 1000}};
    for (int i = 0; i < 6; ++i) {
        const MeshVertex v = VertexOf(mesh, box + i);
        EXPECT_EQ(v.position[0], contours.m_BoxCorners[order[i]].x);
        EXPECT_EQ(v.position[1], contours.m_BoxCorners[order[i]].y);
        EXPECT_EQ(v.texcoord, texcoords[order[i]]);
        EXPECT_FLOAT_EQ(v.tangent[1], 128 / 255.0f);
        EXPECT_EQ(test::CenterOf(mesh, box + i), cv::Vec4f());
        const MeshVertex rect = VertexOf(mesh, box - 6 + i);
        EXPECT_EQ(rect.position[0], static_cast<float>(8 + 2 * order[i])) << "the second rect";
        EXPECT_EQ(rect.tangent, cv::Vec3f(1, 0, 0));
        EXPECT_FLOAT_EQ(test::CenterOf(mesh, box - 6 + i)[3], 0.8f);
        EXPECT_EQ(VertexOf(mesh, box - 12 + i).position[0], static_cast<float>(2 * order[i]));
    }
}

TEST(BuildMesh, refusesWhatHasNoTrianglesOrTooMany) {
    Contours empty;
    MeshBuilder builder;
    VectorMesh mesh;
    EXPECT_FALSE(builder.BuildMesh(mesh, empty, 0.1f, false));
    EXPECT_FALSE(mesh.IsValid());
    ParsedOutlines parsed(RingOutlines());
    BevelMeshBuilder bevels;
    MeshShape shape = Shape(MeshShape::kBevelled, 1);
    shape.bevelSegments = std::numeric_limits<int32_t>::max();
    bevels.SetShape(AdjustShape(shape));
    EXPECT_FALSE(bevels.BuildMesh(mesh, parsed.contours, 0.1f, false));
    EXPECT_FALSE(mesh.IsValid());
    // A box alone is something.
    empty.m_BoxValid = true;
    EXPECT_TRUE(builder.BuildMesh(mesh, empty, 0.1f, false));
    EXPECT_EQ(mesh.triangleCount, 2);
    // Also when it stands around blanks: groups without points, which have no size.
    empty.m_IsText = true;
    empty.m_Points = empty.m_Edges = {{}, {{}, {}}};
    ContourFace().ParseContours(empty, false, 0, 0);
    EXPECT_TRUE(bevels.BuildMesh(mesh, empty, 0.1f, false));
    EXPECT_EQ(mesh.triangleCount, 2);
    for (const MeshGroup& group : bevels.Groups()) {
        EXPECT_LT(std::abs(group.frontZ) + std::abs(group.offsetFactor), 1e-6f);
    }
    Contours nothing;
    EXPECT_FALSE(builder.BuildMesh(mesh, nothing, 0.1f, false));
    EXPECT_EQ(mesh.triangleCount, 2) << "a mesh in use stays what it was";
}

TEST(VectorMesh, makesLinesOnDemand) {
    VectorMesh mesh;
    mesh.BuildElements();
    EXPECT_EQ(mesh.elements, nullptr);
    mesh.NewDataBuffer(2);
    ASSERT_TRUE(mesh.IsValid());
    mesh.NewDataBuffer(0);
    EXPECT_EQ(mesh.triangleCount, 2) << "nothing asked for, nothing changed";
    mesh.BuildElements();
    const uint32_t expected[] = {0, 1, 1, 2, 2, 0, 3, 4, 4, 5, 5, 3};
    EXPECT_TRUE(std::equal(std::begin(expected), std::end(expected), mesh.elements.get()));
    mesh.NewDataBuffer(int64_t{VectorMesh::kMaxTriangles} + 1);
    EXPECT_EQ(mesh.triangleCount, 0);
    EXPECT_EQ(mesh.elements, nullptr);
}

}  // namespace
}  // namespace kelmo
