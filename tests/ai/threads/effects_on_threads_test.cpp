// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <thread>

#include "host/session/catalogue.h"
#include "host/session/effect_session.h"
#include "host/session/plugin_library.h"
#include "tests/ai/ai_session.h"

namespace kelmo::test {
namespace {

constexpr int kFrames = 6;

/// The pictures that an effect makes of a photo that moves by `step` pixels a frame.
std::vector<cv::Mat> Draw(host::PluginLibrary& plugin, host::HostServices& services,
                          const host::EffectDescription& effect, const cv::Mat& photo, float step) {
    host::EffectSession session(plugin, services, effect, {},
                                {photo.cols, photo.rows, {25, 1}, kFrames});
    std::vector<cv::Mat> drawn;
    for (int i = 0; i < kFrames; ++i) {
        cv::Mat clip = Moved(photo, step * static_cast<float>(i), 0);
        cv::Mat output(clip.size(), clip.type());
        host::HostFrame frames[2];
        frames[0].Set(clip.cols, clip.rows, clip.data, nullptr);
        frames[1].Set(clip.cols, clip.rows, output.data, nullptr);
        host::FrameInputs inputs;
        inputs.first = &frames[0];
        inputs.output = &frames[1];
        static_cast<void>(session.Render(i, inputs));
        drawn.push_back(output);
    }
    return drawn;
}

/// Each draws what it draws alone: nothing of one reaches the other. Both want the same networks at
/// the same time, the first time while they are still being loaded.
TEST(TwoEffectsWithTheAiLibrary, DrawOnTwoThreadsWhatTheyDrawAlone) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
    const cv::Mat photo = astronaut(cv::Rect(0, 0, 512, 320)).clone();
    host::HostServices services(
        {KELMO_DATA_DIR, KELMO_PLUGIN_DIR}, [](int32_t, std::string_view) {}, false);
    std::string path = KELMO_PLUGIN_DIR "/";
    path += host::kPluginFileName;
    const auto plugin = host::PluginLibrary::Load(path);
    plugin->Startup(services);
    const host::Catalogue catalogue = host::Catalogue::Of(*plugin);
    const host::EffectDescription& effect = catalogue.Find("Face Magnifier");

    constexpr float kSteps[] = {3.0F, -2.0F};
    std::vector<cv::Mat> together[2];
    std::thread threads[2];
    for (int t = 0; t < 2; ++t) {
        threads[t] = std::thread(
            [&, t] { together[t] = Draw(*plugin, services, effect, photo, kSteps[t]); });
    }
    for (std::thread& thread : threads) thread.join();
    for (int t = 0; t < 2; ++t) {
        const std::vector<cv::Mat> alone = Draw(*plugin, services, effect, photo, kSteps[t]);
        ASSERT_EQ(together[t].size(), alone.size());
        for (int i = 0; i < kFrames; ++i) {
            EXPECT_EQ(cv::norm(alone[i], together[t][i], cv::NORM_INF), 0) << t << " " << i;
        }
        EXPECT_GT(cv::norm(alone[0], photo, cv::NORM_INF), 50) << "the lens is there";
    }
}

}  // namespace
}  // namespace kelmo::test
