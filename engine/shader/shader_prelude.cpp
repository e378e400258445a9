// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/shader/shader_prelude.h"

#include <bitset>
#include <cctype>
#include <cstring>
#include <string_view>

namespace kelmo {
namespace {

// The initial values are what an effect that never sets them shows.
constexpr const char* kCommon = R"(uniform vec2 uResolution;
uniform float global_time = 0.0;
uniform float total_time = 0.0;
uniform float current_pos = 0.0;
uniform float total_len = 1.0;
uniform float frame_rate = 25.0;
uniform float fade = 1.0;
uniform vec4 orig_roi = vec4(0.0, 0.0, 1.0, 1.0);
uniform vec4 result_roi = vec4(0.0, 0.0, 1.0, 1.0);
uniform float roi_angle = 0.0;
vec2 FlipV(vec2 uv) { return vec2(uv.x, 1.0 - uv.y); }
vec4 ArrayAt(samplerBuffer values, int index) {
    return index < 0 || index >= textureSize(values) ? vec4(0.0) : texelFetch(values, index);
}
)";

constexpr const char* kAudioAccessor = R"(
float AudioAt$(float x) {
    float at = clamp(x, 0.0, 1.0) * float(max(audio_spectrum$_count - 1, 0));
    float low = floor(at);
    float a = ArrayAt(audio_spectrum$, int(low)).x;
    float b = ArrayAt(audio_spectrum$, min(int(low) + 1, audio_spectrum$_count - 1)).x;
    return mix(a, b, at - low);
}
)";

constexpr const char* kInputAccessors = R"(uniform sampler2D uInput$;
uniform bool uHasInput$;
uniform bool uInput$Straight;
vec4 Input$(vec2 uv) {
    vec4 c = texture(uInput$, uv);
    return uInput$Straight ? vec4(c.rgb * c.a, c.a) : c;
}
vec2 Input$Size() { return vec2(textureSize(uInput$, 0)); }
bool HasInput$() { return uHasInput$; }
)";

/// `pattern` with each $ replaced.
void AppendFilled(std::string& text, const char* pattern, const std::string& word) {
    for (const char* p = pattern; *p; ++p) {
        if (*p == '$') {
            text += word;
        } else {
            text += *p;
        }
    }
}

/// The slots that appear in `author` as "Input<number>" in any word.
std::bitset<kMaxInputSlots> SlotsIn(const std::string& author) {
    constexpr std::string_view kWord = "Input";
    std::bitset<kMaxInputSlots> slots;
    for (size_t at = author.find(kWord); at != std::string::npos; at = author.find(kWord, at + 1)) {
        size_t digit = at + kWord.size();
        size_t number = 0;
        size_t digits = 0;
        while (digit < author.size() && digits < 3 &&
               std::isdigit(static_cast<unsigned char>(author[digit]))) {
            number = number * 10 + static_cast<size_t>(author[digit] - '0');
            ++digit;
            ++digits;
        }
        if (digits > 0 && number < kMaxInputSlots) slots.set(number);
    }
    return slots;
}

std::string Prelude(const char* interface, const std::string& author, int audioBuffers) {
    std::string text = "#version 330 core\n";
    text += interface;
    text += kCommon;
    const std::bitset<kMaxInputSlots> slots = SlotsIn(author);
    for (size_t slot = 0; slot < slots.size(); ++slot) {
        if (slots[slot]) AppendFilled(text, kInputAccessors, std::to_string(slot));
    }
    if (audioBuffers > 0) text += "uniform float audio_intensity = 0.0;\n";
    for (int buffer = 0; buffer < audioBuffers; ++buffer) {
        const std::string word = buffer == 0 ? "" : std::to_string(buffer);
        AppendFilled(text, "uniform samplerBuffer audio_spectrum$;\n", word);
        AppendFilled(text, "uniform int audio_spectrum$_count;", word);
        AppendFilled(text, kAudioAccessor, word);
    }
    return text;
}

}  // namespace

const char* const kDefaultVertexShader = R"(in vec4 position;
in vec3 texcoord;
void main() {
    gl_Position = position;
    vTexCoord = texcoord.xy;
}
)";

std::string FragmentPrelude(const std::string& author, int audioBuffers) {
    return Prelude("in vec2 vTexCoord;\nout vec4 fragColor;\n", author, audioBuffers);
}

std::string VertexPrelude(const std::string& author, int audioBuffers) {
    return Prelude("out vec2 vTexCoord;\n", author, audioBuffers);
}

int SlotOfName(const char* name, const char* prefix, const char* suffix) {
    const size_t length = std::strlen(prefix);
    if (std::strncmp(name, prefix, length) != 0) return -1;
    const char* p = name + length;
    if (!std::isdigit(static_cast<unsigned char>(*p))) return -1;
    int number = 0;
    for (; std::isdigit(static_cast<unsigned char>(*p)) && number < kMaxInputSlots; ++p) {
        number = number * 10 + (*p - '0');
    }
    return number < kMaxInputSlots && std::strcmp(p, suffix) == 0 ? number : -1;
}

}  // namespace kelmo
