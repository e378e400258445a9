// SPDX-License-Identifier: GPL-3.0-or-later
// A small plug-in for tests of the host: it draws simple pictures that a test can compute itself,
// logs what it was given on each frame, and fails on demand.
#include <epoxy/gl.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "contract/ai_transfer.h"
#include "contract/qor_host.h"
#include "contract/text_path.h"

namespace {

using namespace kelmo;

QorHostUtilSuite* util = nullptr;
QorGpuDeviceSuite* gpu = nullptr;
bool hasDevice = false;

struct Entry {
    const char* guid;
    const char* name;
    bool transition;
    int textKind;
};
constexpr Entry kEntries[] = {
    {"AAAAAAAA-0000-0000-0000-000000000001", "Invert", false, 0},
    {"AAAAAAAA-0000-0000-0000-000000000002", "Cross Fade", true, 0},
    {"AAAAAAAA-0000-0000-0000-000000000003", "Caption", false, 2},
    {"AAAAAAAA-0000-0000-0000-000000000004", "Twin", false, 0},
    {"AAAAAAAA-0000-0000-0000-000000000005", "Twin", false, 0},
    {"AAAAAAAA-0000-0000-0000-000000000006", "Never Ready", false, 0},
};
constexpr int kCount = sizeof kEntries / sizeof kEntries[0];

class FakeEffect final : public QorEffect {
public:
    explicit FakeEffect(const Entry& which) : entry(which) {}

    int32_t PrepareResource(QorRenderContext* context) override {
        context->SetNeedCpuFrame(false);
        if (std::string(entry.name) != "Never Ready") return kQorOk;
        util->Log(kLogError, "no shader for %s", entry.name);
        return kQorEffectFailed;
    }
    int32_t Reserved1(QorRenderContext*) override { return 0; }
    int32_t SyncFrame(QorRenderContext* context) override {
        position = context->GetPosition();
        amount = Ask(context, "amount", kHostFloat).f;
        const int32_t count = Ask(context, "count", kHostInt).i;
        const int32_t tint = Ask(context, "tint", kHostInt).i;
        const int32_t on = Ask(context, "on", kHostInt).i;
        const double exact = Ask(context, "exact", kHostDouble).d;
        const QorValue label = Ask(context, "label", kHostText);
        // A name that an effect asks for on its own comes as a pointer; the answer has its own
        // type.
        const int32_t ownType = Ask(context, "amount", kHostPointer).type;
        const QorValue ownText = Ask(context, "label", kHostPointer);
        failAt = Ask(context, "failAt", kHostInt).i;
        idleAt = Ask(context, "idleAt", kHostInt).i;
        interruptAt = Ask(context, "interruptAt", kHostInt).i;
        LogPeople(context);
        if (entry.textKind != 0) LogText(context->GetInputFrame(0));
        int64_t numerator = 0;
        int64_t denominator = 0;
        context->GetFrameRate(&numerator, &denominator);
        QorAudio* audio = context->GetAudio(0);
        const int samples = audio == nullptr ? -1 : audio->GetSamples();
        const int loudest = audio == nullptr ? -1 : Loudest(*audio);
        util->Log(kLogInfo,
                  "%s frame %d of %d rate %d/%d amount %.2f count %d tint %06X on %d exact %.2f "
                  "label %s own %d %s samples %d loudest %d",
                  entry.name, position, context->GetDuration(), static_cast<int>(numerator),
                  static_cast<int>(denominator), static_cast<double>(amount), count, tint, on,
                  exact, label.type == kHostText && label.s ? label.s : "-", ownType,
                  ownText.type == kHostText && ownText.s ? ownText.s : "-", samples, loudest);
        return kQorOk;
    }
    int32_t GLRender(QorRenderContext* context) override {
        if (position == interruptAt) std::raise(SIGINT);
        if (position == idleAt) {
            // Nothing to draw: not a word; what another thread says has nothing to do with it.
            std::thread([] { util->Log(kLogError, "a loader failed"); }).join();
            return kQorEffectFailed;
        }
        if (position == failAt) {
            util->Log(kLogError, "told to fail");
            return kQorEffectFailed;
        }
        QorFrame* output = context->GetOutputFrame();
        std::vector<uint8_t> first = Pixels(context->GetInputFrame(0));
        if (entry.transition) {
            if (context->GetInputFrame(1) == nullptr) return kQorEffectFailed;
            const std::vector<uint8_t> second = Pixels(context->GetInputFrame(1));
            const int last = std::max(1, context->GetDuration() - 1);
            for (size_t i = 0; i < first.size(); ++i) {
                first[i] = static_cast<uint8_t>(
                    (first[i] * (last - position) + second[i] * position) / last);
            }
        } else {
            for (size_t i = 0; i < first.size(); ++i) {
                // Premultiplied: the inverse of a colour is taken from its alpha.
                const uint8_t inverse = static_cast<uint8_t>(first[i / 4 * 4 + 3] - first[i]);
                if (i % 4 != 3 && amount > 50) first[i] = inverse;
            }
        }
        Store(*output, first);
        return kQorOk;
    }
    int32_t GLRenderAlt(QorRenderContext* context) override { return GLRender(context); }
    int32_t Reserved2(QorRenderContext*) override { return 0; }
    void ReleaseResource(QorRenderContext*) override {
        util->Log(kLogInfo, "%s released", entry.name);
    }
    int32_t Reserved3(QorRenderContext*) override { return 0; }
    int32_t Reserved4(QorRenderContext*) override { return 0; }

private:
    QorValue Ask(QorRenderContext* context, const char* name, int32_t type) const {
        QorValue value;
        value.type = type;
        if (context->GetParamValue(name, position, &value) != kQorOk) value = QorValue{};
        return value;
    }

    static void LogPeople(QorRenderContext* context) {
        ObjectAiDataTransfer* people = nullptr;
        if (context->GetCustomData(kAiTransferParam, kHostPointer, &people, sizeof(void*)) !=
            kQorOk) {
            return;
        }
        void* bytes = nullptr;
        int32_t width = 0;
        int32_t height = 0;
        int32_t stride = 0;
        if (people->GetMaskImage(&bytes, &width, &height, &stride)) {
            const auto* middle = static_cast<const uint8_t*>(bytes) + height / 2 * stride;
            util->Log(kLogInfo, "mask %dx%d from %d to %d", width, height, middle[0],
                      middle[(width - 1) * 4]);
        }
        int32_t length = 0;
        if (people->GetPoseBlock(&bytes, &length)) {
            float point[2] = {-1, -1};
            if (length >= 16) std::memcpy(point, static_cast<uint8_t*>(bytes) + 8, sizeof point);
            util->Log(kLogInfo, "block of %d bytes, nose at %.3f %.3f", length,
                      static_cast<double>(point[0]), static_cast<double>(point[1]));
        }
    }

    static void LogText(QorFrame* frame) {
        QorValue value;
        value.type = kHostPointer;
        if (frame == nullptr || frame->GetProperty("TextUserData", &value) != kQorOk) {
            util->Log(kLogInfo, "no text");
            return;
        }
        const auto* data = static_cast<const TextUserData*>(value.p);
        util->Log(kLogInfo, "text of %d pieces, changed %d", data->textPath->GetPathCount(),
                  data->textIsUpdate);
    }

    static int Loudest(QorAudio& audio) {
        const auto* values = static_cast<const int16_t*>(audio.GetData());
        int loudest = 0;
        for (int i = 0; i < audio.GetSamples() * audio.GetChannels(); ++i) {
            loudest = std::max(loudest, std::abs(static_cast<int>(values[i])));
        }
        return loudest;
    }

    /// BGRA in the order in which the frame holds its rows: top first in memory, bottom first in a
    /// texture.
    std::vector<uint8_t> Pixels(QorFrame* frame) const {
        const int width = frame->GetWidth();
        const int height = frame->GetHeight();
        std::vector<uint8_t> pixels(static_cast<size_t>(width) * height * 4);
        if (frame->GetSurface() != nullptr) {
            int32_t texture = 0;
            gpu->GetSurfaceTexture(frame->GetSurface(), &texture, 0);
            glPixelStorei(GL_PACK_ROW_LENGTH, 0);
            glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture));
            glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, pixels.data());
            util->Log(kLogInfo, "texture begins with %02X%02X%02X", pixels[2], pixels[1],
                      pixels[0]);
        } else {
            for (int y = 0; y < height; ++y) {
                std::memcpy(pixels.data() + static_cast<size_t>(y) * width * 4,
                            static_cast<uint8_t*>(frame->GetPixels()) +
                                static_cast<size_t>(y) * frame->GetStride(),
                            static_cast<size_t>(width) * 4);
            }
        }
        return pixels;
    }

    void Store(QorFrame& frame, const std::vector<uint8_t>& pixels) const {
        const int width = frame.GetWidth();
        const int height = frame.GetHeight();
        if (frame.GetSurface() != nullptr) {
            int32_t texture = 0;
            gpu->GetSurfaceTexture(frame.GetSurface(), &texture, 0);
            glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
            glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture));
            glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, GL_BGRA, GL_UNSIGNED_BYTE,
                            pixels.data());
            // As an engine may leave them: the host must not rely on the transfer state.
            glPixelStorei(GL_UNPACK_ROW_LENGTH, 3);
            glPixelStorei(GL_PACK_ROW_LENGTH, 3);
        } else {
            for (int y = 0; y < height; ++y) {
                std::memcpy(static_cast<uint8_t*>(frame.GetPixels()) +
                                static_cast<size_t>(y) * frame.GetStride(),
                            pixels.data() + static_cast<size_t>(y) * width * 4,
                            static_cast<size_t>(width) * 4);
            }
        }
    }

    const Entry& entry;
    int32_t position = 0;
    float amount = 0;
    int32_t failAt = -1;
    int32_t idleAt = -1;
    int32_t interruptAt = -1;
};

}  // namespace

#define KELMO_FAKE_EXPORT extern "C" __attribute__((visibility("default")))

KELMO_FAKE_EXPORT int32_t StartupQor(kelmo::QorPluginHost* host, kelmo::QorPluginInfo* info) {
    void* suite = nullptr;
    host->AcquireSuite(kHostUtilSuite, 1, &suite);
    util = static_cast<QorHostUtilSuite*>(suite);
    host->AcquireSuite(kGpuDeviceSuite, 1, &suite);
    gpu = static_cast<QorGpuDeviceSuite*>(suite);
#ifdef KELMO_FAKE_START_FAILS
    util->Log(kLogError, "no catalogue here");
    return kQorRefused;
#endif
    hasDevice = gpu->GetDeviceCount() > 0;
    char resources[512] = "resources";
    char plugins[512] = "qorPlugin";
    util->GetPath(kPathResources, resources, sizeof resources);
    util->GetPath(kPathPlugin, plugins, sizeof plugins);
    util->Log(kLogInfo, "folders %s %s", resources, plugins);
    info->interfaceVersion = 1;
    info->pluginVersion = 1;
    info->name = "Fake";
    info->vendor = "test";
    info->description = "Fake Desc";
    info->extra = "";
    info->effectCount = kCount;
    return kQorOk;
}

KELMO_FAKE_EXPORT int32_t ShutdownQor() {
    util->Log(kLogInfo, "shut down");
    return kQorOk;
}

KELMO_FAKE_EXPORT int32_t RegisterQorEffect(int32_t index, kelmo::QorEffectRegistrar* registrar) {
    if (index < 0 || index >= kCount || registrar == nullptr) return kQorRefused;
    const Entry& entry = kEntries[index];
    registrar->SetIdentity(entry.guid, entry.name);
    registrar->SetFlags(kFlagAlways | (hasDevice ? kFlagGpuFrames : kFlagCpuFrames) |
                        (entry.transition ? kFlagTwoInputs : kFlagOneInput) | kFlagAudio);
    registrar->SetReserved(0);
    if (entry.textKind != 0) registrar->SetTextKind(entry.textKind);
    QorValue gradient;
    gradient.type = kHostText;
    gradient.s = "0:#FF0000";
    QorEffectRegistrar& r = *registrar;
    r.AddFloatParam(-1, 0, "amount", "Amount", 0, 100, 100, kParamVisible);
    r.AddIntParam(-1, 1, "count", "Count", 0, 10, 3, 1, kParamVisible);
    r.AddColorParam(-1, 2, "tint", "Tint", 0xFF8000, 0, 0xFFFFFF, kParamVisible);
    r.AddCheckBoxParam(-1, 3, "on", "On", 0, 1, 1, kParamVisible);
    r.AddStringParam(-1, 4, "label", "Label", nullptr, 0);
    r.AddGradientColorParam(-1, 5, "ramp", "Ramp", &gradient, 0);
    r.AddDoubleParam(-1, 6, "exact", "Exact", -1, 1, 0.25, kParamVisible);
    r.AddPalacesParam(-1, 7, "place", "Place", 0, 8, 4, 0);
    r.AddListMaskParam(-1, 8, "mask", "Mask", nullptr, 0);
    r.AddListMosaicParam(-1, 9, "mosaic", "Mosaic", 0, 3, 0, 0);
    r.AddColorStartParam(-1, 10, "from", "From", 0, 0xFFFFFF, 0, kParamVisible);
    r.AddColorEndParam(-1, 11, "to", "To", 0, 0xFFFFFF, 0xFFFFFF, kParamVisible);
    r.AddMult100Param(-1, 12, "strength", "Strength", 0, 1, 0.1F, kParamVisible);
    r.AddIntParam(-1, 13, "failAt", "failAt", -1, 100000, -1, 1, kParamHidden);
    r.AddIntParam(-1, 15, "idleAt", "idleAt", -1, 100000, -1, 1, kParamHidden);
    r.AddIntParam(-1, 14, "interruptAt", "interruptAt", -1, 100000, -1, 1, kParamHidden);
    // Published again under a name that is taken, as some entries do.
    r.AddFloatParam(-1, 0, "amount", "Amount", 30, 100, 60, kParamVisible);
    return kQorOk;
}

KELMO_FAKE_EXPORT int32_t RegisterQorEffectFromConfPath(const char*, kelmo::QorEffectRegistrar*) {
    return kQorRefused;
}

KELMO_FAKE_EXPORT int32_t CreateQorEffect(const char* guid, int32_t deviceType,
                                          kelmo::QorEffect** effect) {
    if (deviceType != (hasDevice ? kQorGPUDeviceTypeOpenGL : kQorDeviceTypeCpu)) {
        return kQorRefused;
    }
    for (const Entry& entry : kEntries) {
        if (std::strcmp(entry.guid, guid) != 0) continue;
        *effect = std::make_unique<FakeEffect>(entry).release();
        return kQorOk;
    }
    return kQorRefused;
}

#ifndef KELMO_FAKE_WITHOUT_RELEASE
KELMO_FAKE_EXPORT int32_t ReleaseQorEffect(kelmo::QorEffect* effect) {
    delete effect;
    return kQorOk;
}
#endif
