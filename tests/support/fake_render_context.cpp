// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/fake_render_context.h"

#include <cstring>
#include <string_view>

namespace kelmo::test {

namespace {

int32_t Answer(const std::map<std::string, QorValue, std::less<>>& answers, const char* name,
               QorValue* value) {
    const auto found = answers.find(std::string_view(name));
    if (found == answers.end()) return 1;
    *value = found->second;
    return 0;
}

}  // namespace

QorValue HostInt(int32_t v) {
    QorValue value;
    value.type = 3;
    value.i = v;
    return value;
}

QorValue HostFloat(float v) {
    QorValue value;
    value.type = 5;
    value.f = v;
    return value;
}

QorValue HostDouble(double v) {
    QorValue value;
    value.type = 6;
    value.d = v;
    return value;
}

QorValue HostBool(bool v) {
    QorValue value;
    value.type = 7;
    value.b = v ? 1 : 0;
    return value;
}

QorValue HostText(const char* v) {
    QorValue value;
    value.type = 8;
    value.s = v;
    return value;
}

QorValue HostPointer(void* v) {
    QorValue value;
    value.type = 9;
    value.p = v;
    return value;
}

FakeFrame::FakeFrame(int32_t frameWidth, int32_t frameHeight)
    : width(frameWidth),
      height(frameHeight),
      stride(frameWidth * 4),
      pixels(static_cast<std::size_t>(stride) * static_cast<std::size_t>(frameHeight)) {}

int32_t FakeFrame::SetProperty(const char* name, const QorValue* value) {
    written[name] = *value;
    return 0;
}

int32_t FakeFrame::GetProperty(const char* name, QorValue* value) {
    return Answer(properties, name, value);
}

void FakeRenderContext::GetFrameRate(int64_t* numerator, int64_t* denominator) {
    *numerator = rateNumerator;
    *denominator = rateDenominator;
}

QorFrame* FakeRenderContext::GetInputFrame(int32_t index) {
    return index == 0 ? first : index == 1 ? second : nullptr;
}

int32_t FakeRenderContext::GetCustomData(const char* name, int32_t hostType, void* out,
                                         int32_t size) {
    if (std::strcmp(name, "ObjectAiDataTransferPtr") != 0 || hostType != 9 || size != 8) return 1;
    if (!aiTransfer) return 1;
    std::memcpy(out, &aiTransfer, sizeof aiTransfer);
    return 0;
}

int32_t FakeRenderContext::GetParamValue(const char* name, int32_t at, QorValue* value) {
    if (recording) {
        asked.emplace_back(name, value->type);
        askedPositions.push_back(at);
    }
    return Answer(values, name, value);
}

}  // namespace kelmo::test
