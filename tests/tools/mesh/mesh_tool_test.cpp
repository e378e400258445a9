// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <opencv2/imgcodecs.hpp>
#include <set>
#include <sstream>

#include "geometry/contours/contour_face.h"
#include "geometry/mesh/bevel_mesh_builder.h"
#include "geometry/shapes/outlines.h"
#include "tools/mesh/mesh_picture.h"
#include "tools/mesh/obj_writer.h"
#include "tools/mesh/shape_parameters.h"

namespace kelmo::tools {
namespace {

void BuildFrame(VectorMesh& mesh, float bevelSize) {
    Contours contours;
    test::FillContours(contours, {test::Square(1), test::Turned(test::Square(0.5f))});
    ContourFace().ParseContours(contours, false, 0, 0);
    MeshShape shape;
    shape.bevelSize = bevelSize;
    BevelMeshBuilder builder;
    builder.SetShape(AdjustShape(shape));
    ASSERT_TRUE(builder.BuildMesh(mesh, contours, 0.1f, false));
}

struct ObjModel {
    std::vector<cv::Vec3f> places;
    std::vector<cv::Vec3f> normals;
    std::vector<std::array<int, 3>> faces;  ///< numbers from 0
    std::set<std::string> groups;

    explicit ObjModel(const std::string& text) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string kind;
            words >> kind;
            if (kind == "v" || kind == "vn") {
                cv::Vec3f v;
                words >> v[0] >> v[1] >> v[2];
                (kind == "v" ? places : normals).push_back(v);
            } else if (kind == "g") {
                groups.insert(line.substr(2));
            } else if (kind == "f") {
                std::array<int, 3>& face = faces.emplace_back();
                for (int& corner : face) {
                    std::string word;
                    words >> word;
                    corner = std::stoi(word) - 1;
                }
            }
        }
    }

    cv::Vec3f Across(const std::array<int, 3>& face) const {
        return (places[face[1]] - places[face[0]]).cross(places[face[2]] - places[face[0]]);
    }
};

ObjModel Written(const VectorMesh& mesh) {
    std::ostringstream out;
    WriteObj(out, mesh);
    return ObjModel(out.str());
}

TEST(MeshTool, ModelsAreClosedAndTurnedOutwards) {
    VectorMesh mesh;
    BuildFrame(mesh, 0);
    const ObjModel model = Written(mesh);
    EXPECT_EQ(model.faces.size(), static_cast<size_t>(mesh.triangleCount));
    EXPECT_EQ(model.places.size(), 3 * model.faces.size());
    EXPECT_THAT(model.groups, testing::ElementsAre("body", "face"));
    // Each edge runs once each way, or a reader would see a hole or a face from its back.
    std::map<std::array<float, 6>, int> balance;
    double volume = 0;
    for (const auto& face : model.faces) {
        for (int i = 0; i < 3; ++i) {
            const cv::Vec3f& from = model.places[face[i]];
            const cv::Vec3f& to = model.places[face[(i + 1) % 3]];
            ++balance[{from[0], from[1], from[2], to[0], to[1], to[2]}];
            --balance[{to[0], to[1], to[2], from[0], from[1], from[2]}];
        }
        volume += model.places[face[0]].dot(model.places[face[1]].cross(model.places[face[2]])) / 6;
    }
    for (const auto& [edge, count] : balance) EXPECT_EQ(count, 0);
    EXPECT_NEAR(volume, 0.75 * 0.18, 1e-3) << "the frame's area times its depth, not inside out";
}

TEST(MeshTool, BevelsAreTurnedLikeTheRest) {
    VectorMesh mesh;
    BuildFrame(mesh, 1);
    const ObjModel model = Written(mesh);
    EXPECT_THAT(model.groups, testing::ElementsAre("bevel", "body", "face"));
    for (const auto& face : model.faces) {
        const cv::Vec3f& normal = model.normals[face[0]];
        EXPECT_NEAR(cv::norm(normal), 1, 1e-5);
        EXPECT_GT(model.Across(face).dot(normal), 0);
    }
}

TEST(MeshTool, PicturesShowTheShapeAndFaultyNormals) {
    VectorMesh mesh;
    BuildFrame(mesh, 0);
    MeshView view;
    view.width = view.height = 120;
    view.rotateX = view.rotateY = 0;
    const cv::Mat front = DrawMesh(mesh, view);
    ASSERT_EQ(front.size(), cv::Size(120, 120));
    const auto background = front.at<cv::Vec3b>(2, 2);
    const auto ring = front.at<cv::Vec3b>(60, 20);
    EXPECT_EQ(front.at<cv::Vec3b>(60, 60), background) << "one looks through the hole";
    EXPECT_GT(ring[1], background[1] + 60);
    EXPECT_NEAR(ring[0], ring[2], 2) << "faces are grey";

    // A tall picture is drawn in bands, and no seam shows.
    view.height = 600;
    const cv::Mat tall = DrawMesh(mesh, view);
    ASSERT_EQ(tall.size(), cv::Size(120, 600));
    EXPECT_EQ(cv::norm(tall.rowRange(240, 360), front, cv::NORM_INF), 0);
    view.height = 120;

    view.rotateY = 60;
    cv::Mat isBlue;
    cv::inRange(DrawMesh(mesh, view), cv::Scalar(40, 0, 0), cv::Scalar(255, 160, 90), isBlue);
    EXPECT_GT(cv::countNonZero(isBlue), 100) << "from the side the body shows, and it is blue";

    std::fill_n(mesh.normals.get(), 9 * mesh.triangleCount, 0.0f);
    view.rotateY = 0;
    EXPECT_EQ(DrawMesh(mesh, view).at<cv::Vec3b>(60, 20), cv::Vec3b(255, 0, 255));
}

TEST(MeshTool, ParametersAreSetByName) {
    MeshParameters parameters;
    for (const char* assignment : {"ModelType=2", "BevelSize=-4.5", "BevelSegments=7", "segment=20",
                                   "Extrude=0.25", "enable_subdivision=1"}) {
        SetParameter(parameters, assignment);
    }
    EXPECT_EQ(parameters.shape.modelType, MeshShape::kInflated);
    EXPECT_FLOAT_EQ(parameters.shape.bevelSize, -4.5f);
    EXPECT_EQ(parameters.shape.bevelSegments, 8) << "one row more than strips";
    EXPECT_FLOAT_EQ(parameters.segment, 0.02f);
    EXPECT_FLOAT_EQ(parameters.extrude, 0.25f);
    EXPECT_TRUE(parameters.shape.enableSubdivision);
    for (const char* wrong : {"", "ModelType", "=1", "Colour=1", "ModelType=", "ModelType=x",
                              "ModelType=1x", "BevelSize=nan", "BevelSize=1e9"}) {
        SCOPED_TRACE(wrong);
        EXPECT_THROW(SetParameter(parameters, wrong), std::invalid_argument);
    }
}

int RunTool(const std::string& arguments) {
    std::string command = KELMO_BIN_DIR "/kelmo-mesh ";
    command += arguments + " >/dev/null 2>&1";
    return std::system(command.c_str());
}

TEST(MeshTool, TheProgramWritesEveryModelTypeAndSaysWhatIsWrong) {
    const std::filesystem::path folder = KELMO_TEST_OUTPUT_DIR "/mesh";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    for (int type = 0; type < 4; ++type) {
        const std::string picture = (folder / (std::to_string(type) + ".png")).string();
        std::string arguments = "-t 'O8% \xC3\x84' --width 320 --height 180 BevelSize=3 ModelType=";
        arguments += std::to_string(type) + " -o " + picture;
        EXPECT_EQ(RunTool(arguments), 0) << arguments;
        EXPECT_EQ(cv::imread(picture).size(), cv::Size(320, 180));
    }
    EXPECT_EQ(RunTool("-t A -o " + (folder / "a.obj").string()), 0);
    for (const std::string wrong :
         {"-t A Colour=1 -o x.png", "-t ' ' -o x.png", "-t A -o /no/x.obj", "-t A -o /no/x.png",
          "-t A -f /no/font.ttf -o x.png", "-t A"}) {
        EXPECT_NE(RunTool(wrong), 0) << wrong;
        EXPECT_FALSE(std::filesystem::exists("x.png"));
    }
}

}  // namespace
}  // namespace kelmo::tools
