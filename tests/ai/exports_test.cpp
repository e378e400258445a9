// SPDX-License-Identifier: GPL-3.0-or-later
// The door of the library: what it exports and how it behaves when something is missing or wrong.
#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "ai_session.h"
#include "support/temporary_folder.h"

namespace kelmo::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Resources with the real models, of which a test replaces or takes away some.
class CopiedModels {
public:
    CopiedModels() {
        folder.MakeFolder("qor_effect");
        std::filesystem::copy(ModelFolder() + "/", folder.Path("qor_effect/models"));
    }
    void Remove(const std::string& name) { std::filesystem::remove(Path(name)); }
    void Replace(const std::string& name, const std::string& bytes) {
        Remove(name);
        folder.Write("qor_effect/models/" + name, bytes);
    }
    std::string Path(const std::string& name) const {
        return folder.Path("qor_effect/models/" + name);
    }
    const std::string& Resources() const { return folder.Path(); }

private:
    TemporaryFolder folder;
};

TEST(AiExports, AreSixAndNothingElse) {
    FILE* pipe = popen("nm -D --defined-only " KELMO_PLUGIN_DIR "/qorAiFilterPlugin.qor", "r");
    ASSERT_NE(pipe, nullptr);
    std::vector<std::string> names;
    char line[512], name[256];
    while (std::fgets(line, sizeof line, pipe))
        if (std::sscanf(line, "%*s %*s %255s", name) == 1) names.emplace_back(name);
    pclose(pipe);
    EXPECT_THAT(names, ElementsAre("CreateNLEAIEffectFilterFromGUID", "DeleteNLEAIEffectFilter",
                                   "NLEEffectFilterGetAIResData", "NLEEffectFilterSetParameter",
                                   "NLEEffectFilterTransform", "SetNLEAIEffectFilterLogCallback"));
}

TEST(AiExports, WithoutModelsCreateGivesNullAndOneLineThatHelps) {
    const TemporaryFolder empty;
    AiLibrary::Get().TakeLog();
    for (const char* guid : {kMask, kEdgeMask, kFace, kFaceShock, kPose}) {
        EXPECT_FALSE(AiSession(guid, empty.Path()).Exists());
        EXPECT_THAT(AiLibrary::TakeLog(),
                    ElementsAre(AllOf(HasSubstr("libtensorflowlite_c.so"),
                                      HasSubstr("scripts/fetch-models"), HasSubstr(empty.Path()))))
            << guid;
    }
}

TEST(AiExportsDeathTest, AProcessMayEndWhileNetworksAreLoaded) {
    KELMO_NEED_MODELS();
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto createAndEnd = [] {
        const AiSession face(kFace);
        const AiSession pose(kPose);
        std::exit(face.Exists() && pose.Exists() ? 0 : 1);
    };
    EXPECT_EXIT(createAndEnd(), testing::ExitedWithCode(0), "");
}

TEST(AiExports, RefuseWhatMakesNoSense) {
    AiLibrary& library = AiLibrary::Get();
    EXPECT_EQ(library.create(nullptr, nullptr), nullptr);
    EXPECT_EQ(library.create("00000000-0000-0000-0000-000000000000", KELMO_DATA_DIR), nullptr);
    EXPECT_NE(library.transform(nullptr, nullptr, 0, 0, 0, nullptr, 0, 0, 0, nullptr, 0, 0, 0), 0);
    EXPECT_NE(library.setParameter(nullptr, "Edge Feather", 3, NLEParamValue::Float(1)), 0);
    std::shared_ptr<AIDATA::BaseAIDATA> data;
    EXPECT_NE(library.getResult(nullptr, &data), 0);
    library.destroy(nullptr);
    void* nothing = nullptr;
    library.destroy(&nothing);
}

TEST(AiExports, ARuntimeThatIsNoneIsNamed) {
    const TemporaryFolder folder;
    folder.Write("qor_effect/models/libtensorflowlite_c.so", "this is no library");
    AiLibrary::TakeLog();
    EXPECT_FALSE(AiSession(kMask, folder.Path()).Exists());
    EXPECT_THAT(AiLibrary::TakeLog(), ElementsAre(HasSubstr("libtensorflowlite_c.so")));
}

TEST(AiExports, ARuntimeThatLacksAFunctionIsNamedWithIt) {
    const TemporaryFolder folder;
    folder.MakeFolder("qor_effect/models");
    // Any library will do that is not the runtime: our own.
    std::filesystem::copy(KELMO_PLUGIN_DIR "/qorAiFilterPlugin.qor",
                          folder.Path("qor_effect/models/libtensorflowlite_c.so"));
    AiLibrary::TakeLog();
    EXPECT_FALSE(AiSession(kMask, folder.Path()).Exists());
    EXPECT_THAT(AiLibrary::TakeLog(), ElementsAre(HasSubstr("TfLiteModelCreateFromFile")));
}

TEST(AiExports, AMissingOrDamagedModelIsNamed) {
    KELMO_NEED_MODELS();
    const struct {
        const char* guid;
        const char* file;
        const char* bytes;  ///< null: missing
    } cases[] = {
        {kMask, "person_mask.tflite", nullptr},
        {kMask, "person_mask.tflite", ""},
        {kMask, "person_mask.tflite", "not a network at all, but long enough to look at"},
        {kEdgeMask, "pose_detector.tflite", nullptr},
        {kFace, "face_mesh_attention.tflite", "????TFL3 with nothing behind it"},
        {kFaceShock, "face_geometry.pb", nullptr},
        {kFaceShock, "face_geometry.pb", "\x0a\xff\xff\xff\xff\xff\xff\xff\x7f"},
        {kPose, "pose_landmarks.tflite", nullptr},
    };
    for (const auto& c : cases) {
        CopiedModels models;
        if (c.bytes)
            models.Replace(c.file, c.bytes);
        else
            models.Remove(c.file);
        AiLibrary::TakeLog();
        EXPECT_FALSE(AiSession(c.guid, models.Resources()).Exists()) << c.file;
        EXPECT_THAT(AiLibrary::TakeLog(),
                    ElementsAre(AllOf(HasSubstr(c.file), HasSubstr("scripts/fetch-models"))));
    }
}

TEST(AiExports, ACutModelIsRefused) {
    KELMO_NEED_MODELS();
    const std::string whole = ReadFile(ModelFolder() + "/person_mask.tflite");
    for (size_t size : {whole.size() / 2, whole.size() - 1000}) {
        CopiedModels models;
        models.Replace("person_mask.tflite", whole.substr(0, size));
        EXPECT_FALSE(AiSession(kMask, models.Resources()).Exists()) << size;
    }
}

TEST(AiExports, ANetworkOfAnotherKindGivesAnEmptyMaskAndALine) {
    KELMO_NEED_MODELS();
    CopiedModels models;
    models.Replace("person_mask.tflite", ReadFile(ModelFolder() + "/face_mesh.tflite"));
    AiLibrary::TakeLog();
    AiSession session(kMask, models.Resources());
    ASSERT_TRUE(session.Exists());
    const cv::Mat frame(36, 64, CV_8UC4, cv::Scalar::all(90));
    cv::Mat mask(36, 64, CV_8UC4, cv::Scalar::all(77));
    EXPECT_NE(AiLibrary::Get().transform(session.Handle(), mask.data, 64, 36, 256, nullptr, 0, 0, 0,
                                         frame.data, 64, 36, 256),
              0);
    EXPECT_EQ(cv::countNonZero(mask.reshape(1)), 0);
    EXPECT_THAT(AiLibrary::TakeLog(), Contains(HasSubstr("person_mask.tflite cannot be used")));
}

TEST(AiExports, OddPicturesAreTakenOrRefusedButNeverRunOver) {
    KELMO_NEED_MODELS();
    AiLibrary& library = AiLibrary::Get();
    for (const char* guid : {kMask, kEdgeMask, kFace, kPose}) {
        AiSession session(guid);
        ASSERT_TRUE(session.Exists());
        session.Set("Edge Thickness", 10);
        for (const cv::Size size : {cv::Size(1, 1), cv::Size(1, 400), cv::Size(333, 1),
                                    cv::Size(3, 2), cv::Size(257, 129), cv::Size(1081, 31)}) {
            const cv::Mat frame(size, CV_8UC4, cv::Scalar(30, 60, 90, 255));
            cv::Mat mask(size, CV_8UC4);
            EXPECT_EQ(library.transform(session.Handle(), mask.data, size.width, size.height,
                                        int32_t(mask.step), nullptr, 0, 0, 0, frame.data,
                                        size.width, size.height, int32_t(frame.step)),
                      0)
                << guid << size;
        }
        unsigned char pixel[16] = {};
        const int32_t refused[][3] = {{0, 1, 4}, {1, 0, 4}, {-4, 1, 4}, {2, 2, 4}, {1 << 20, 1, 4}};
        for (const auto& [width, height, stride] : refused)
            EXPECT_NE(library.transform(session.Handle(), nullptr, 0, 0, 0, nullptr, 0, 0, 0, pixel,
                                        width, height, stride),
                      0);
        EXPECT_NE(
            library.transform(session.Handle(), pixel, 1, 1, 4, nullptr, 0, 0, 0, nullptr, 1, 1, 4),
            0);
    }
}

TEST(AiExports, OnlyTheEdgeMaskTakesEdgeParameters) {
    KELMO_NEED_MODELS();
    AiSession plain(kMask), edge(kEdgeMask);
    EXPECT_NE(plain.Set("Edge Thickness", 3), 0);
    EXPECT_EQ(edge.Set("Edge Thickness", 3), 0);
    EXPECT_EQ(edge.Set("Edge Feather", 3), 0);
    EXPECT_NE(edge.Set("Edge", 3), 0);
    AiLibrary& library = AiLibrary::Get();
    EXPECT_EQ(library.setParameter(edge.Handle(), "Edge Feather", kParamInt, NLEParamValue::Int(4)),
              0);
    EXPECT_NE(
        library.setParameter(edge.Handle(), "Edge Feather", kParamText, NLEParamValue::Text("4")),
        0);
}

}  // namespace
}  // namespace kelmo::test
