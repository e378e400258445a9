// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "contract/qor_host.h"

namespace kelmo::test {

QorValue HostInt(int32_t v);
QorValue HostFloat(float v);
QorValue HostDouble(double v);
QorValue HostBool(bool v);
/// Borrows the text.
QorValue HostText(const char* v);
QorValue HostPointer(void* v);

/// A frame of the host. Pixels are the frame's own, all zero; set `hasPixels` or `surface` for the
/// kind that a test wants.
class FakeFrame : public QorFrame {
public:
    FakeFrame(int32_t frameWidth, int32_t frameHeight);

    int32_t width;
    int32_t height;
    int32_t stride;
    bool hasPixels = true;
    void* surface = nullptr;
    std::vector<uint8_t> pixels;
    /// Answers of GetProperty; what SetProperty stores lands in `written`.
    std::map<std::string, QorValue, std::less<>> properties;
    std::map<std::string, QorValue, std::less<>> written;

    int32_t GetWidth() override { return width; }
    int32_t GetHeight() override { return height; }
    int32_t GetStride() override { return stride; }
    void* GetPixels() override { return hasPixels ? pixels.data() : nullptr; }
    void* GetSurface() override { return surface; }
    int32_t SetProperty(const char* name, const QorValue* value) override;
    int32_t GetProperty(const char* name, QorValue* value) override;
};

class FakeAudio : public QorAudio {
public:
    int32_t channels = 2;
    int32_t format = 7;
    std::vector<int16_t> samples = std::vector<int16_t>(2 * 1764);

    int32_t GetChannels() override { return channels; }
    int32_t GetSamples() override { return static_cast<int32_t>(samples.size()) / channels; }
    int32_t GetFormat() override { return format; }
    int32_t GetBytes() override { return static_cast<int32_t>(samples.size() * 2); }
    void* GetData() override { return samples.data(); }
};

/// One frame of a host: everything a test sets stands in public members. Allocates nothing while it
/// answers, apart from what `asked` collects when `recording` is on.
class FakeRenderContext : public QorRenderContext {
public:
    int32_t position = 0;
    int32_t duration = 100;
    int64_t rateNumerator = 25;
    int64_t rateDenominator = 1;
    /// Borrowed; null: there is none.
    QorFrame* first = nullptr;
    QorFrame* second = nullptr;
    QorFrame* output = nullptr;
    QorAudio* audio = nullptr;
    void* aiTransfer = nullptr;
    /// Answers of GetParamValue; a name without one gives an error.
    std::map<std::string, QorValue, std::less<>> values;

    bool recording = true;
    /// What GetParamValue was asked for: name and the type that the record arrived with.
    std::vector<std::pair<std::string, int32_t>> asked;
    std::vector<int32_t> askedPositions;
    std::optional<bool> needCpuFrame;
    /// Size and offset of the last SetExpansion.
    std::optional<std::pair<QorPoint, QorPoint>> expansion;

    int32_t GetPosition() override { return position; }
    int32_t GetDuration() override { return duration; }
    void GetFrameRate(int64_t* numerator, int64_t* denominator) override;
    void SetExpansion(QorPoint size, QorPoint offset) override { expansion = {size, offset}; }
    QorFrame* GetInputFrame(int32_t index) override;
    QorFrame* GetOutputFrame() override { return output; }
    QorAudio* GetAudio(int32_t) override { return audio; }
    int32_t GetCustomData(const char* name, int32_t hostType, void* out, int32_t size) override;
    int32_t GetParamValue(const char* name, int32_t at, QorValue* value) override;
    void SetNeedCpuFrame(bool need) override { needCpuFrame = need; }
};

}  // namespace kelmo::test
