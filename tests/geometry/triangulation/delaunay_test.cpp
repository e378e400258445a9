// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/triangulation/delaunay.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <opencv2/imgproc.hpp>
#include <random>

#include "geometry/triangulation/delaunay_points.h"
#include "geometry/triangulation/delaunay_triangle.h"

namespace kelmo {
namespace {

std::vector<cv::Point2f> RandomPoints(int count, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> range(-1, 1);
    std::vector<cv::Point2f> points;
    for (int i = 0; i < count; ++i) points.emplace_back(range(random), range(random));
    return points;
}

double Cross(const Triangle2f& t) {
    const cv::Point2d a = t.a;
    return (cv::Point2d(t.b) - a).cross(cv::Point2d(t.c) - a);
}

double AreaOf(const std::vector<Triangle2f>& triangles) {
    double area = 0;
    for (const Triangle2f& t : triangles) area += std::abs(Cross(t)) / 2;
    return area;
}

double HullArea(const std::vector<cv::Point2f>& points) {
    std::vector<cv::Point2f> hull;
    cv::convexHull(points, hull);
    return cv::contourArea(hull);
}

// The place of `point` in the circle through the corners, negative outside.
double InCircle(const Triangle2f& t, const cv::Point2d& point) {
    const cv::Point2d a = cv::Point2d(t.a) - point, b = cv::Point2d(t.b) - point,
                      c = cv::Point2d(t.c) - point;
    const double value = a.dot(a) * b.cross(c) + b.dot(b) * c.cross(a) + c.dot(c) * a.cross(b);
    return Cross(t) > 0 ? value : -value;
}

using Operation = void (*)(std::vector<Triangle2f>&, const std::vector<cv::Point2f>&);

void ByFallback(std::vector<Triangle2f>& out, const std::vector<cv::Point2f>& points) {
    DT::DelaunayTriangle(1000000).GetTriangles(out, points);
}

TEST(Delaunay, coversTheHullWithEmptyCircles) {
    for (const Operation operation : {&GetDelaunayTriangleList, &ByFallback}) {
        for (const int count : {3, 4, 10, 150}) {
            const std::vector<cv::Point2f> points = RandomPoints(count, 40 + count);
            std::vector<Triangle2f> triangles;
            operation(triangles, points);
            EXPECT_NEAR(AreaOf(triangles), HullArea(points), 1e-4) << count;
            for (const Triangle2f& t : triangles) {
                for (const cv::Point2f& p : points) EXPECT_LT(InCircle(t, p), 1e-6);
                for (const cv::Point2f& corner : {t.a, t.b, t.c}) {
                    EXPECT_NE(std::find(points.begin(), points.end(), corner), points.end())
                        << "corners are the points bit for bit";
                }
            }
        }
    }
}

TEST(Delaunay, ofTheFallbackRunsClockwise) {
    std::vector<Triangle2f> triangles;
    ByFallback(triangles, RandomPoints(80, 1));
    ASSERT_FALSE(triangles.empty());
    for (const Triangle2f& t : triangles) EXPECT_LT(Cross(t), 0);
}

TEST(Delaunay, addsNothingWithoutThreePointsThatSpanAnything) {
    for (const Operation operation : {&GetDelaunayTriangleList, &ByFallback}) {
        for (const std::vector<cv::Point2f>& points :
             {std::vector<cv::Point2f>{}, {{1, 1}}, {{1, 1}, {2, 1}}, {{1, 1}, {1, 1}, {1, 1}}}) {
            std::vector<Triangle2f> triangles{{{9, 9}, {8, 8}, {7, 9}}};
            operation(triangles, points);
            EXPECT_EQ(triangles.size(), 1u) << "what stood there stays";
        }
    }
}

TEST(Delaunay, fallsBackForPointsThatOpenCvRefuses) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    std::vector<cv::Point2f> points = RandomPoints(30, 9);
    points.emplace_back(2e6f, 0.5f);
    std::vector<Triangle2f> triangles;
    GetDelaunayTriangleList(triangles, points);
    EXPECT_FALSE(triangles.empty()) << "the points within reach are still joined";
    points.emplace_back(nan, 0);
    GetDelaunayTriangleList(triangles, points);  // whatever comes out, it ends
    GetDelaunayTriangleList(triangles, std::vector<cv::Point2f>(20000, {5e6f, 0}));
}

TEST(DelaunayPoints, numberPlacesAndNotBits) {
    DelaunayPoints points;
    EXPECT_EQ(points.Find({0, 0}), DelaunayPoints::kNone);
    EXPECT_EQ(points.Add({0, 1}), 0);
    EXPECT_EQ(points.Add({-0.0f, 1}), 0);
    EXPECT_EQ(points.Add({1, 0}), 1);
    EXPECT_EQ(points.Find({1, -0.0f}), 1);
    EXPECT_EQ(points.Find({1, 1e-45f}), DelaunayPoints::kNone);
    for (int i = 0; i < 5000; ++i) points.Add({0.001f * i, -0.5f});
    EXPECT_EQ(points.Size(), 5002u);
    EXPECT_EQ(points.At(points.Find({0.001f * 4321, -0.5f})), cv::Point2f(0.001f * 4321, -0.5f));
}

}  // namespace
}  // namespace kelmo
