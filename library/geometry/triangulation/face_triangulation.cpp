// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/triangulation/face_triangulation.h"

#include "geometry/triangulation/delaunay.h"
#include "geometry/triangulation/face_triangulation_list.h"
#include "geometry/triangulation/face_triangulation_repair.h"

namespace kelmo {

void Triangulate(std::vector<Triangle2f>& out, const std::vector<cv::Point2f>& points,
                 const Polyline& outer, const std::vector<const Polyline*>& holes) {
    const Polyline finite = FinitePoints(points);
    if (finite.size() < 3) return;
    std::vector<FaceContour> contours;  // the outer one first
    contours.reserve(holes.size() + 1);
    contours.emplace_back(outer, true);
    if (contours[0].line.size() < 3) return;
    for (const Polyline* hole : holes) contours.emplace_back(*hole, false);

    std::vector<Triangle2f> unconstrained;
    GetDelaunayTriangleList(unconstrained, finite);
    FaceTriangleList triangles(finite.size());
    triangles.Append(unconstrained);
    for (FaceContour& contour : contours) contour.Number(triangles);

    int32_t firstPlace = 0;  // what the first round left has passed all probes already
    for (int round = 0; round < 2; ++round) {
        for (size_t hole = 1; hole < contours.size(); ++hole) {
            RecoverEdges(triangles, contours[hole]);
        }
        RecoverEdges(triangles, contours[0]);
        for (const FaceContour& contour : contours) {
            CarveTriangles(triangles, contour, firstPlace);
        }
        firstPlace = triangles.PlaceCount();
    }
    for (const FaceContour& contour : contours) RepairVertices(triangles, contour);
    for (const FaceContour& contour : contours) CarveTriangles(triangles, contour, firstPlace);
    triangles.MoveTo(out);
}

}  // namespace kelmo
