// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <mutex>

#include "host/session/catalogue.h"
#include "host/session/effect_chain.h"
#include "host/session/gl_device.h"
#include "host/session/host_error.h"
#include "host/session/plugin_library.h"

namespace kelmo::host {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::string FakePlugin(const std::string& which) {
    return std::string(KELMO_TEST_PLUGINS) + "/" + which + "/" + kPluginFileName;
}

template <typename Work>
std::string ErrorOf(Work work) {
    try {
        work();
    } catch (const HostError& error) {
        return error.what();
    }
    return "no error";
}

/// The working stand-in, started, with its log kept.
struct Host {
    explicit Host(bool device = false)
        : services(
              {"/res", "/plug"}, [this](int32_t, std::string_view line) { log.emplace_back(line); },
              device),
          plugin(PluginLibrary::Load(FakePlugin("good"))) {
        plugin->Startup(services);
        catalogue = Catalogue::Of(*plugin);
    }

    ChainLink Link(const std::string& name, const std::vector<std::string>& assignments,
                   int64_t frames, int64_t firstFrame = 0) {
        ChainLink link;
        link.effect = &catalogue.Find(name);
        for (const std::string& a : assignments) {
            link.tracks.push_back(ParseAssignment(*link.effect, a));
        }
        link.frames = frames;
        link.firstFrame = firstFrame;
        return link;
    }

    std::vector<std::string> Lines(const std::string& part) const {
        std::vector<std::string> lines;
        for (const std::string& line : log) {
            if (line.find(part) != std::string::npos) lines.push_back(line);
        }
        return lines;
    }

    std::vector<std::string> log;
    HostServices services;
    std::unique_ptr<PluginLibrary> plugin;
    Catalogue catalogue;
};

/// 2x2: red, green over blue, half transparent white.
Picture Sample() {
    Picture picture;
    picture.Resize(2, 2);
    picture.pixels = {0, 0, 255, 255, 0, 255, 0, 255, 255, 0, 0, 255, 128, 128, 128, 128};
    return picture;
}

Picture Flat(uint8_t value) {
    Picture picture;
    picture.Resize(2, 2);
    std::fill(picture.pixels.begin(), picture.pixels.end(), value);
    return picture;
}

const std::vector<uint8_t> kInvertedSample = {255, 255, 0,   255, 255, 0, 255, 255,
                                              0,   255, 255, 255, 0,   0, 0,   128};

TEST(PluginLibrary, SaysWhyALibraryIsNoPlugin) {
    EXPECT_THAT(ErrorOf([] { PluginLibrary::Load("/no/such.qor"); }), HasSubstr("does not exist"));
    EXPECT_THAT(ErrorOf([] { PluginLibrary::Load(KELMO_SOURCE_DIR "/README.md"); }),
                HasSubstr("does not load"));
    EXPECT_THAT(ErrorOf([] { PluginLibrary::Load(FakePlugin("missing_export")); }),
                HasSubstr("no export ReleaseQorEffect"));
    HostServices services({}, {}, false);
    const auto plugin = PluginLibrary::Load(FakePlugin("no_start"));
    EXPECT_THAT(ErrorOf([&] { plugin->Startup(services); }), HasSubstr("StartupQor returned 2"));
    EXPECT_EQ(services.LastError(), "no catalogue here");
}

TEST(PluginLibrary, IsShutDownOnce) {
    std::vector<std::string> log;
    HostServices services(
        {"/res", "/plug"}, [&](int32_t, std::string_view line) { log.emplace_back(line); }, false);
    {
        const auto plugin = PluginLibrary::Load(FakePlugin("good"));
        plugin->Startup(services);
        plugin->Shutdown();
    }
    EXPECT_THAT(log, ElementsAre("folders /res /plug", "shut down"));
}

TEST(HostServices, RefusesWhatItDoesNotKnow) {
    HostServices services({"/res", std::string(600, 'x')}, {}, true);
    void* suite = nullptr;
    for (const char* name :
         {kMemoryAllocatorSuite, kImageBufferAllocatorSuite, kHostUtilSuite, kGpuDeviceSuite}) {
        EXPECT_EQ(services.AcquireSuite(name, 1, &suite), kQorOk);
        EXPECT_NE(suite, nullptr);
        EXPECT_NE(services.AcquireSuite(name, 2, &suite), kQorOk);
        EXPECT_EQ(suite, nullptr);
    }
    EXPECT_NE(services.AcquireSuite("Other Suite", 1, &suite), kQorOk);
    services.AcquireSuite(kHostUtilSuite, 1, &suite);
    auto* util = static_cast<QorHostUtilSuite*>(suite);
    char path[512] = "qorPlugin";
    EXPECT_NE(util->GetPath(kPathPlugin, path, sizeof path), kQorOk) << "longer than the buffer";
    EXPECT_STREQ(path, "qorPlugin");
    EXPECT_NE(util->GetPath(7, path, sizeof path), kQorOk);
    EXPECT_EQ(util->GetPath(kPathResources, path, 5), kQorOk);
    EXPECT_STREQ(path, "/res");
    services.AcquireSuite(kGpuDeviceSuite, 1, &suite);
    auto* gpu = static_cast<QorGpuDeviceSuite*>(suite);
    QorGpuDeviceInfo info;
    EXPECT_EQ(gpu->GetDeviceCount(), 1);
    EXPECT_EQ(gpu->GetDeviceInfo(0, &info), kQorOk);
    EXPECT_EQ(info.type, kQorGPUDeviceTypeOpenGL);
    EXPECT_NE(gpu->GetDeviceInfo(1, &info), kQorOk);
}

TEST(HostServices, KeepsLongLogLinesWhole) {
    std::string seen;
    HostServices services(
        {}, [&](int32_t, std::string_view line) { seen = line; }, false);
    void* suite = nullptr;
    services.AcquireSuite(kHostUtilSuite, 1, &suite);
    const std::string longText(3000, 'y');
    static_cast<QorHostUtilSuite*>(suite)->Log(kLogError, "%s%d\n", longText.c_str(), 7);
    EXPECT_EQ(seen, longText + "7");
    EXPECT_EQ(services.LastError(), longText + "7");
}

TEST(HostServices, LinesOfTheHostItselfAreNoReason) {
    int lines = 0;
    HostServices services(
        {}, [&](int32_t, std::string_view) { ++lines; }, false);
    void* suite = nullptr;
    services.AcquireSuite(kHostUtilSuite, 1, &suite);
    {
        const HostServices::OwnWork work;
        static_cast<QorHostUtilSuite*>(suite)->Log(kLogError, "no models");
    }
    EXPECT_EQ(services.LastError(), "");
    EXPECT_EQ(lines, 1);
}

TEST(Catalogue, TakesDownWhatThePluginPublishes) {
    Host host;
    const EffectDescription& invert = host.catalogue.Find("invert");
    EXPECT_EQ(invert.guid, "AAAAAAAA-0000-0000-0000-000000000001");
    EXPECT_EQ(invert.Type(), EffectType::kFilter);
    EXPECT_TRUE(invert.WantsAudio());
    EXPECT_EQ(host.catalogue.Find("Cross Fade").Type(), EffectType::kTransition);
    EXPECT_EQ(host.catalogue.Find("caption").Type(), EffectType::kText);
    EXPECT_EQ(invert.parameters.size(), 16U) << "the name that comes twice counts once";
    EXPECT_EQ(invert.Parameter("amount")->min, 0);
    EXPECT_EQ(invert.Parameter("tint")->def, 0xFF8000);
    EXPECT_EQ(invert.Parameter("strength")->def, 0.1) << "no digits of the binary form";
    EXPECT_EQ(invert.Parameter("ramp")->defaultText, "0:#FF0000");
    EXPECT_FALSE(invert.Parameter("failAt")->visible);
}

TEST(Catalogue, FindsByGuidAndNameAndSaysWhatIsNear) {
    Host host;
    EXPECT_EQ(host.catalogue.Find("aaaaaaaa-0000-0000-0000-000000000003").name, "Caption");
    EXPECT_THAT(ErrorOf([&] { host.catalogue.Find("inverd"); }),
                HasSubstr("did you mean \"Invert\""));
    EXPECT_THAT(ErrorOf([&] { host.catalogue.Find("twin"); }),
                HasSubstr("AAAAAAAA-0000-0000-0000-000000000005"));
    EXPECT_THAT(ErrorOf([&] { Catalogue().Find("x"); }), HasSubstr("unknown effect"));
}

TEST(EffectChain, DrawsEachFrameWithItsTimeValuesAndSound) {
    Host host;
    std::vector<ChainLink> links;
    links.push_back(host.Link(
        "Invert", {"amount=0@0f,100@4f", "tint=red", "on=off", "label=a,b@c", "exact=-0.5"}, 5));
    EffectChain chain(*host.plugin, host.services, std::move(links), 2, 2, {30000, 1001}, false);
    Picture input = Sample();
    Picture output;
    std::vector<int16_t> samples(2 * 1471, -300);
    for (int i = 0; i < 5; ++i) {
        chain.Render(i, input, nullptr, {samples, {}, nullptr}, output);
        EXPECT_EQ(output.pixels == kInvertedSample, i >= 3) << "frame " << i;
    }
    EXPECT_EQ(input.pixels, Sample().pixels);
    EXPECT_THAT(host.Lines("Invert frame"), testing::SizeIs(5));
    EXPECT_EQ(host.Lines("Invert frame")[3],
              "Invert frame 3 of 5 rate 30000/1001 amount 75.00 count 3 tint FF0000 on 0 exact "
              "-0.50 label a,b@c own 5 a,b@c samples 1471 loudest 300");
    chain.Render(0, input, nullptr, {}, output);
    EXPECT_THAT(host.log.back(), HasSubstr("samples -1")) << "no sound, no audio object";
}

TEST(EffectChain, RunsEffectsOneAfterTheOtherInTheirOwnTime) {
    Host host;
    std::vector<ChainLink> links;
    links.push_back(host.Link("Cross Fade", {}, 3, 2));
    links.push_back(host.Link("Invert", {}, 6));
    EffectChain chain(*host.plugin, host.services, std::move(links), 2, 2, {25, 1}, false);
    Picture output;
    std::vector<int> values;
    for (int i = 0; i < 6; ++i) {
        Picture first = Flat(i < 5 ? 0 : 200);
        first.pixels[3] = 255;
        Picture second = Flat(200);
        const bool both = i >= 2 && i < 5;
        chain.Render(i, first, both ? &second : nullptr, {}, output);
        values.push_back(output.pixels[3] - output.pixels[0]);
    }
    // What is left of the first channel after inversion: the cross fade itself.
    EXPECT_THAT(values, ElementsAre(0, 0, 0, 100, 200, 200));
    EXPECT_THAT(host.Lines("Cross Fade frame"), testing::SizeIs(3));
    EXPECT_THAT(host.Lines("Cross Fade frame")[0], HasSubstr("frame 0 of 3"));
    EXPECT_THAT(host.Lines("Invert frame")[5], HasSubstr("frame 5 of 6"));
}

TEST(EffectChain, PassesFramesThatNoEffectWorksOn) {
    Host host;
    std::vector<ChainLink> links;
    links.push_back(host.Link("Cross Fade", {}, 3, 2));
    EffectChain chain(*host.plugin, host.services, std::move(links), 2, 2, {25, 1}, false);
    Picture input = Sample();
    Picture output;
    chain.Render(0, input, nullptr, {}, output);
    EXPECT_EQ(output.pixels, Sample().pixels);
    EXPECT_THAT(host.Lines("Cross Fade frame"), testing::IsEmpty());
}

TEST(EffectChain, ATransitionStandsFirst) {
    Host host;
    std::vector<ChainLink> links;
    links.push_back(host.Link("Invert", {}, 3));
    links.push_back(host.Link("Cross Fade", {}, 3));
    EXPECT_THAT(
        ErrorOf([&] {
            EffectChain(*host.plugin, host.services, std::move(links), 2, 2, {25, 1}, false);
        }),
        HasSubstr("must be the first"));
}

TEST(EffectChain, FailuresNameTheEffectTheFrameAndTheReason) {
    Host host;
    std::vector<ChainLink> broken;
    broken.push_back(host.Link("Never Ready", {}, 3));
    EXPECT_EQ(ErrorOf([&] {
                  EffectChain(*host.plugin, host.services, std::move(broken), 2, 2, {25, 1}, false);
              }),
              "effect \"Never Ready\" could not be prepared: no shader for Never Ready");
    std::vector<ChainLink> links;
    links.push_back(host.Link("Invert", {"failAt=1"}, 3));
    EffectChain chain(*host.plugin, host.services, std::move(links), 2, 2, {25, 1}, false);
    Picture input = Sample();
    Picture output;
    chain.Render(0, input, nullptr, {}, output);
    EXPECT_EQ(ErrorOf([&] { chain.Render(1, input, nullptr, {}, output); }),
              "effect \"Invert\" failed at frame 1: told to fail");
    chain.Render(2, input, nullptr, {}, output);
    EXPECT_EQ(output.pixels, kInvertedSample);
}

TEST(EffectChain, AnEffectWithNothingToDrawLetsThePictureThrough) {
    for (const bool onGpu : {false, true}) {
        SCOPED_TRACE(onGpu);
        std::unique_ptr<GlDevice> device;
        try {
            if (onGpu) device = GlDevice::Create();
        } catch (const HostError& error) {
            GTEST_SKIP() << error.what();
        }
        Host host(onGpu);
        std::vector<ChainLink> links;
        links.push_back(host.Link("Invert", {}, 3));
        links.push_back(host.Link("Invert", {"idleAt=1"}, 3));
        EffectChain chain(*host.plugin, host.services, std::move(links), 2, 2, {25, 1}, onGpu);
        Picture input = Sample();
        Picture output;
        chain.Render(0, input, nullptr, {}, output);
        EXPECT_EQ(output.pixels, Sample().pixels) << "inverted twice";
        chain.Render(1, input, nullptr, {}, output);
        EXPECT_EQ(output.pixels, kInvertedSample) << "the first effect alone";
        EXPECT_THAT(host.Lines("a loader failed"), testing::SizeIs(1));
    }
}

TEST(EffectChain, OnTheGpuPicturesStandUprightAndChainsStayThere) {
    std::unique_ptr<GlDevice> device;
    try {
        device = GlDevice::Create();
    } catch (const HostError& error) {
        GTEST_SKIP() << error.what();
    }
    EXPECT_FALSE(device->Info().renderer.empty());
    Host host(true);
    std::vector<ChainLink> links;
    links.push_back(host.Link("Cross Fade", {}, 3));
    links.push_back(host.Link("Invert", {}, 3));
    links.push_back(host.Link("Invert", {}, 3));
    links.push_back(host.Link("Invert", {}, 3));
    EffectChain chain(*host.plugin, host.services, std::move(links), 2, 2, {25, 1}, true);
    Picture first = Sample();
    Picture second = Flat(9);
    Picture output;
    chain.Render(0, first, &second, {}, output);
    EXPECT_EQ(output.pixels, kInvertedSample);
    EXPECT_EQ(host.Lines("texture begins").front(), "texture begins with 0000FF")
        << "the bottom left of the picture comes first";
    chain.Render(2, first, &second, {}, output);
    const std::vector<uint8_t> inverse = {0, 0, 0, 9, 0, 0, 0, 9, 0, 0, 0, 9, 0, 0, 0, 9};
    EXPECT_EQ(output.pixels, inverse) << "the second clip alone";
}

}  // namespace
}  // namespace kelmo::host
