// SPDX-License-Identifier: GPL-3.0-or-later
// Every effect against a small picture of how it looked when somebody last found it right.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <opencv2/imgproc.hpp>
#include <set>

#include "tests/material/effect_stage.h"
#include "tests/material/picture_compare.h"
#include "tests/material/test_pictures.h"

namespace kelmo::test {
namespace {

namespace fs = std::filesystem;

constexpr int kWidth = 160;
constexpr int kHeight = 90;
constexpr int kLabel = 14;  // height of the line of text below a row of the sheet

/// Set by scripts/update-references: writes the references instead of comparing.
bool Updating() {
    return std::getenv("KELMO_UPDATE_REFERENCES") != nullptr;
}

fs::path ReferenceOf(const EffectDescription& effect) {
    return fs::path(KELMO_REFERENCE_DIR) / (FolderOf(effect) + ".png");
}

/// Old, new and difference side by side, a row for each effect that changed.
class ChangeSheet {
public:
    void Add(const EffectDescription& effect, const Picture& before, const Picture& after) {
        cv::Mat row(kHeight + kLabel, 3 * kWidth, CV_8UC4, cv::Scalar(40, 40, 40, 255));
        const Picture difference = Difference(before, after);
        const Picture* const pictures[] = {&before, &after, &difference};
        for (int i = 0; i < 3; ++i) {
            const cv::Mat picture(kHeight, kWidth, CV_8UC4,
                                  const_cast<uint8_t*>(pictures[i]->pixels.data()));
            picture.copyTo(row(cv::Rect(i * kWidth, 0, kWidth, kHeight)));
        }
        cv::putText(row, effect.name + ": old, new, difference", {4, kHeight + kLabel - 4},
                    cv::FONT_HERSHEY_SIMPLEX, 0.35, cv::Scalar(255, 255, 255, 255), 1, cv::LINE_AA);
        sheet.push_back(row);
    }

    void Write(const std::string& path) const {
        if (sheet.empty()) {
            fs::remove(path);
            std::printf("no reference changed\n");
            return;
        }
        Picture picture;
        picture.Resize(sheet.cols, sheet.rows);
        for (int y = 0; y < sheet.rows; ++y) {
            std::copy_n(sheet.ptr(y), picture.stride, picture.Row(y));
        }
        fs::create_directories(fs::path(path).parent_path());
        WritePng(path, picture);
        std::printf("%d references changed: %s\n", sheet.rows / (kHeight + kLabel), path.c_str());
    }

private:
    cv::Mat sheet;
};

Picture DrawReference(const EffectDescription& effect) {
    Picture first = Landscape(kWidth, kHeight);
    Picture second = City(kWidth, kHeight);
    return DrawGoodMoment(effect, first, second);
}

void Update(const EffectDescription& effect, ChangeSheet& sheet) {
    const fs::path path = ReferenceOf(effect);
    const Picture drawn = DrawReference(effect);
    fs::create_directories(path.parent_path());
    if (fs::exists(path)) {
        const Picture before = ReadPng(path.string());
        // What a test would take for the same stays byte for byte.
        if (LooksLike(before, drawn, "reference/update", {50.0, 8, 0.0})) return;
        sheet.Add(effect, before, drawn);
    } else {
        sheet.Add(effect, Clear(kWidth, kHeight), drawn);
    }
    WritePng(path.string(), drawn);
}

TEST(References, ShowWhatTheEffectsDraw) {
    ChangeSheet sheet;
    for (const EffectDescription& effect : AllEffects()) {
        if (IsPart(effect) || IsOfTheMoment(effect)) continue;
        SCOPED_TRACE(effect.name);
        if (Updating()) {
            Update(effect, sheet);
            continue;
        }
        const fs::path path = ReferenceOf(effect);
        if (!fs::exists(path)) {
            ADD_FAILURE() << "no reference " << path << "; make one with scripts/update-references";
            continue;
        }
        EXPECT_TRUE(LooksLike(ReadPng(path.string()), DrawReference(effect),
                              "reference/" + FolderOf(effect)));
    }
    if (Updating()) sheet.Write(KELMO_TEST_OUTPUT_DIR "/material/references.png");
}

TEST(References, BelongToAnEffectEach) {
    std::set<fs::path> known;
    for (const EffectDescription& effect : AllEffects()) known.insert(ReferenceOf(effect));
    for (const auto& entry : fs::recursive_directory_iterator(KELMO_REFERENCE_DIR)) {
        if (!entry.is_regular_file()) continue;
        EXPECT_TRUE(known.contains(entry.path())) << entry.path();
    }
}

}  // namespace
}  // namespace kelmo::test
