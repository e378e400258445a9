// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/triangulation/face_triangulation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <opencv2/imgproc.hpp>
#include <random>

#include "geometry/contours/contour_face.h"
#include "geometry/shapes/outlines.h"
#include "geometry/triangulation/face_triangulation_probe.h"
#include "plain_passes.h"

namespace kelmo {
namespace {

using test::Outline;

struct Face {
    Outline outer;
    std::vector<Outline> holes;
    std::vector<cv::Point2f> grid;

    std::vector<cv::Point2f> Points() const {
        std::vector<cv::Point2f> points = outer;
        for (const Outline& hole : holes) points.insert(points.end(), hole.begin(), hole.end());
        points.insert(points.end(), grid.begin(), grid.end());
        return points;
    }
    std::vector<const Polyline*> Holes() const {
        std::vector<const Polyline*> pointers;
        for (const Outline& hole : holes) pointers.push_back(&hole);
        return pointers;
    }
};

std::vector<Triangle2f> Triangulated(const Face& face) {
    std::vector<Triangle2f> triangles;
    Triangulate(triangles, face.Points(), face.outer, face.Holes());
    return triangles;
}

double AreaOf(const Outline& outline) {
    double area = 0;
    for (size_t i = 0; i < outline.size(); ++i) {
        const cv::Point2d p = outline[i];
        const cv::Point2d next = outline[(i + 1) % outline.size()];
        area += (next.y + p.y) * 0.5 * (next.x - p.x);
    }
    return area;
}

double AreaOf(const std::vector<Triangle2f>& triangles) {
    double area = 0;
    for (const Triangle2f& t : triangles) {
        const cv::Point2d a = t.a;
        area += std::abs((cv::Point2d(t.b) - a).cross(cv::Point2d(t.c) - a)) / 2;
    }
    return area;
}

bool IsSameList(const std::vector<Triangle2f>& left, const std::vector<Triangle2f>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const Triangle2f& l, const Triangle2f& r) {
                          return l.a == r.a && l.b == r.b && l.c == r.c;
                      });
}

Outline Letter() {  // an E: notches in a concave outline
    return {{0, 5}, {3, 5}, {3, 4}, {1, 4}, {1, 3}, {2, 3},
            {2, 2}, {1, 2}, {1, 1}, {3, 1}, {3, 0}, {0, 0}};
}

TEST(Triangulate, fillsHandMadeFacesExactly) {
    const struct {
        const char* name;
        Face face;
        size_t triangles;  // points - 2, and 2 more for each hole than its points
    } cases[] = {
        {"square", {test::Square(2), {}, {}}, 2},
        {"circle", {test::Circle(50, 1), {}, {}}, 48},
        {"letter with notches", {Letter(), {}, {}}, 10},
        {"star", {test::Star(7, 1, 0.3f), {}, {}}, 12},
        {"square with a hole", {test::Square(4), {test::Turned(test::Square(2))}, {}}, 8},
        {"two holes",
         {test::Square(8),
          {test::Turned(test::Circle(12, 1, {-2, 0})), test::Turned(test::Circle(12, 1, {2, 0}))},
          {}},
         30},
        {"inner points", {test::Square(4), {}, {{0.5f, 0.25f}, {-1, 1}, {1.5f, -1.25f}}}, 8},
    };
    for (const auto& c : cases) {
        const std::vector<Triangle2f> triangles = Triangulated(c.face);
        double area = AreaOf(c.face.outer);
        for (const Outline& hole : c.face.holes) area += AreaOf(hole);
        EXPECT_EQ(triangles.size(), c.triangles) << c.name;
        EXPECT_NEAR(AreaOf(triangles), area, 1e-6 * area) << c.name;
    }
}

TEST(Triangulate, keepsRepeatedPointsAndAddsNothingForTooFewOfThem) {
    Outline square = test::Square(2);
    square.insert(square.begin() + 1, square[0]);
    square.push_back(square[0]);
    EXPECT_NEAR(AreaOf(Triangulated({square, {}, {}})), 4, 1e-6);
    for (const Outline& few : {Outline{}, Outline{{1, 1}}, Outline{{1, 1}, {2, 1}},
                               Outline{{1, 1}, {1, 1}, {1, 1}, {2, 1}}}) {
        EXPECT_TRUE(Triangulated({few, {}, {}}).empty());
    }
}

TEST(Triangulate, isNotMisledBySmallOrFarOutlines) {
    for (const float scale : {1e-6f, 1e-3f, 1.0f, 1e3f}) {
        Outline star = test::Star(40, scale, scale * 0.8f);
        EXPECT_NEAR(AreaOf(Triangulated({star, {}, {}})) / AreaOf(star), 1, 1e-5) << scale;
    }
    Outline far = test::Square(4e6f);  // beyond what the first choice takes
    EXPECT_NEAR(AreaOf(Triangulated({far, {}, {}})), 0, 4e13);
}

TEST(Triangulate, survivesBrokenOutlines) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    std::mt19937 random(3);
    std::uniform_real_distribution<float> range(-1, 1);
    Outline tangle;
    for (int i = 0; i < 400; ++i) tangle.emplace_back(range(random), range(random));
    const Face faces[] = {
        {{{0, 1}, {nan, 1}, {1, 1}, {1, nan}, {1, 0}, {inf, 0}, {0, 0}, {-inf, 2}}, {}, {}},
        {Outline(50, {nan, nan}), {}, {}},
        {tangle, {tangle, test::Turned(tangle)}, {}},
        {{{-1, 1}, {1, -1}, {1, 1}, {-1, -1}}, {}, {}},             // a bow tie
        {{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {1.5f, 0}}, {}, {}},      // no area
        {test::Square(1), {test::Turned(test::Square(3))}, {}},     // the hole is larger
        {test::Square(2), {{}, {{0, 0}}, {{0, 0}, {0.5f, 0}}}, {}}  // holes without area
    };
    for (const Face& face : faces) {
        for (const Triangle2f& t : Triangulated(face)) {
            for (const cv::Point2f& p : {t.a, t.b, t.c}) {
                EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
            }
        }
    }
    EXPECT_NEAR(AreaOf(Triangulated(faces[0])), 1, 1e-6) << "the finite points make a square";
}

TEST(Triangulate, takesAHundredThousandPoints) {
    Outline wave;
    constexpr int kHalf = 50000;
    for (int i = 0; i < kHalf; ++i) {
        wave.emplace_back(-1 + 2.0f * i / kHalf, 0.5f + 0.3f * std::sin(i * 0.01f));
    }
    for (int i = kHalf; i-- > 0;) wave.emplace_back(-1 + 2.0f * i / kHalf, -0.5f);
    const std::vector<Triangle2f> triangles = Triangulated({wave, {}, {}});
    EXPECT_GE(triangles.size(), wave.size() - 2);
    EXPECT_NEAR(AreaOf(triangles) / AreaOf(wave), 1, 1e-3);
}

TEST(Triangulate, agreesWithPlainScansOverTheWholeList) {
    std::vector<Face> faces;
    faces.push_back({Letter(), {}, {}});
    faces.push_back({test::Star(31, 1, 0.2f), {test::Turned(test::Circle(9, 0.1f))}, {}});
    // Two points so close that the first triangulation takes them for one, and repairs do not.
    const cv::Point2f close[] = {{0, 0}, {1e-9f, 0}};
    faces.push_back(
        {{{0.5f, 0}, {0, -1}, {-0.5f, -0.5f}, close[0], close[1], {-1.5f, 0.5f}, {0.5f, 1}},
         {},
         {}});
    faces.push_back(
        {{{1.5f, 0}, {0, -1}, close[0], close[1], {-1, -0.5f}, {-1.5f, 0.5f}, {0.5f, 1}}, {}, {}});
    std::mt19937 random(5);
    std::uniform_real_distribution<float> range(-1, 1);
    for (int shape = 0; shape < 30; ++shape) {
        Face face{test::Circle(20 + 5 * shape, 1), {}, {}};
        // Dents in the outline: edges go missing, fans get gaps, a few edges cross.
        for (cv::Point2f& point : face.outer) point *= 0.6f + 0.4f * range(random);
        if (shape % 3 == 0) face.holes.push_back(test::Turned(test::Circle(7, 0.15f)));
        for (int i = 0; i < shape % 4 * 5; ++i) {
            face.grid.emplace_back(range(random) * 0.3f, range(random) * 0.3f);
        }
        faces.push_back(std::move(face));
    }
    for (size_t i = 0; i < faces.size(); ++i) {
        std::vector<Triangle2f> plain;
        test::PlainTriangulate(plain, faces[i].Points(), faces[i].outer, faces[i].Holes());
        EXPECT_FALSE(plain.empty());
        EXPECT_TRUE(IsSameList(Triangulated(faces[i]), plain)) << "face " << i;
    }
}

TEST(Triangulate, agreesWithPlainScansOnGlyphs) {
    for (const char* file : {test::kLatinFont, test::kHanFont}) {
        const test::FontFile font(file);
        const uint32_t stride = font.GlyphCount() / 60;
        for (uint32_t glyph = stride; glyph < font.GlyphCount(); glyph += stride) {
            test::FontTextPath text(1920, 1080);
            text.Add(font.Outline(glyph, 200, 900, 600, nullptr));
            Contours contours;
            contours.ParseTextPath(&text, 1920, 1080);
            contours.FlattenPaths(0.011f, false);
            if (contours.m_Points.empty() || contours.m_Points[0].empty()) continue;
            Face face;
            for (Outline outline : contours.m_Points[0]) {
                outline.erase(std::unique(outline.begin(), outline.end()), outline.end());
                if (outline.front() == outline.back()) outline.pop_back();
                if (AreaOf(outline) <= 0) {
                    face.holes.push_back(outline);
                } else if (outline.size() > face.outer.size()) {
                    face.outer = outline;
                }
            }
            std::vector<Triangle2f> plain;
            test::PlainTriangulate(plain, face.Points(), face.outer, face.Holes());
            EXPECT_TRUE(IsSameList(Triangulated(face), plain)) << file << " glyph " << glyph;
        }
    }
}

TEST(ContourProbe, givesTheAnswersOfAPolygonTest) {
    std::vector<Outline> shapes = {test::Square(2),
                                   Letter(),
                                   test::Star(9, 1, 0.4f),
                                   test::Circle(200, 1),
                                   {{0, 0}, {2, 0}, {1, 0}},
                                   {{1, 1}},
                                   {},
                                   {{-1, 1}, {1, -1}, {1, 1}, {-1, -1}}};
    std::mt19937 random(11);
    std::uniform_int_distribution<int> step(-6, 6);
    for (int shape = 0; shape < 20; ++shape) {
        Outline& outline = shapes.emplace_back();
        for (int i = 0; i < 3 + shape; ++i) outline.emplace_back(step(random), step(random));
    }
    for (size_t shape = 0; shape < shapes.size(); ++shape) {
        const ContourProbe probe(shapes[shape]);
        for (int i = 0; i < 2000; ++i) {
            // Quarters: many fall on corners, on level edges and on slanted ones.
            const cv::Point2f point(static_cast<float>(step(random)) + 0.25f * (i % 4),
                                    static_cast<float>(step(random)) + 0.5f * (i % 2));
            const double expected =
                shapes[shape].empty() ? -1 : cv::pointPolygonTest(shapes[shape], point, false);
            ASSERT_EQ(probe.Side(point), expected) << shape << " at " << point;
        }
    }
}

}  // namespace
}  // namespace kelmo
