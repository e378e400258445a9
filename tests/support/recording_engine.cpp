// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/recording_engine.h"

#include <algorithm>
#include <cstring>
#include <sstream>
#include <utility>

namespace kelmo::test {

namespace {

template <typename... Parts>
std::string Line(const char* operation, const Parts&... parts) {
    std::ostringstream line;
    line << std::boolalpha << operation << '(';
    [[maybe_unused]] const char* separator = "";
    ((line << separator << parts, separator = ", "), ...);
    line << ')';
    return line.str();
}

const char* Words(const void* pixels) {
    return pixels ? "pixels" : "null";
}

std::string Picture(const FrameRecord& frame) {
    if (frame.HasTexture()) return "texture " + std::to_string(frame.texture);
    return frame.HasCpuPixels() ? "pixels" : "no picture";
}

}  // namespace

/// The engine side of one filter; writes into its record.
class RecordingEngineEffect : public NLEOpenGLEngineEffect {
public:
    RecordingEngineEffect(RecordingEngine& owner, std::size_t index,
                          std::shared_ptr<EffectRecord> effectRecord)
        : engine(owner),
          number(index),
          record(std::move(effectRecord)),
          result(owner.NewTexture()) {}
    ~RecordingEngineEffect() override {
        Note("Destroyed");
        record->alive = false;
    }

    void AddInputTexture(int32_t width, int32_t height, int32_t stride, bool clip) override {
        Note("AddInputTexture", width, height, stride, clip);
    }
    int32_t AddRenderTarget() override {
        Note("AddRenderTarget");
        targets.push_back(engine.NewTexture());
        return static_cast<int32_t>(targets.size()) - 1;
    }
    int32_t AddAudioBuffer() override {
        Note("AddAudioBuffer");
        return ++audioBuffers;
    }

    void AddUniformFloat(const char* name, float v) override {
        Value("AddUniformFloat", name, &v, 1);
    }
    void AddUniformInt(const char* name, int32_t v) override { IntValue("AddUniformInt", name, v); }
    void AddUniformVec2(const char* name, float x, float y) override {
        Value("AddUniformVec2", name, Floats{x, y}.v, 2);
    }
    void AddUniformVec3(const char* name, float x, float y, float z) override {
        Value("AddUniformVec3", name, Floats{x, y, z}.v, 3);
    }
    void AddUniformVec4(const char* name, float x, float y, float z, float w) override {
        Value("AddUniformVec4", name, Floats{x, y, z, w}.v, 4);
    }
    void AddUniformMat3(const char* name, const float* v) override {
        Matrix("AddUniformMat3", name, v, 9);
    }
    void AddUniformMat4(const char* name, const float* v) override {
        Matrix("AddUniformMat4", name, v, 16);
    }
    void AddUniformArrayVec2(const char* name, const float* data, int32_t n) override {
        Array("AddUniformArrayVec2", name, data, n, 2);
    }
    void AddUniformArrayVec4(const char* name, const float* data, int32_t n) override {
        Array("AddUniformArrayVec4", name, data, n, 4);
    }
    void AddInstanceArrayVec2(const char* name, const float* data, int32_t n) override {
        Array("AddInstanceArrayVec2", name, data, n, 2);
    }
    void AddInstanceArrayVec4(const char* name, const float* data, int32_t n) override {
        Array("AddInstanceArrayVec4", name, data, n, 4);
    }
    int32_t CreateProgram(const std::shared_ptr<NLEOpenGLEngineEffect>& self) override {
        Note("CreateProgram", self.get() == this ? "self" : "stranger");
        return engine.failProgram ? 1 : 0;
    }

    void SetUniformFloat(const char* name, float v) override {
        Value("SetUniformFloat", name, &v, 1);
    }
    void SetUniformInt(const char* name, int32_t v) override { IntValue("SetUniformInt", name, v); }
    void SetUniformVec2(const char* name, float x, float y) override {
        Value("SetUniformVec2", name, Floats{x, y}.v, 2);
    }
    void SetUniformVec3(const char* name, float x, float y, float z) override {
        Value("SetUniformVec3", name, Floats{x, y, z}.v, 3);
    }
    void SetUniformVec4(const char* name, float x, float y, float z, float w) override {
        Value("SetUniformVec4", name, Floats{x, y, z, w}.v, 4);
    }
    void SetUniformMat3(const char* name, const float* v) override {
        Matrix("SetUniformMat3", name, v, 9);
    }
    void SetUniformMat4(const char* name, const float* v) override {
        Matrix("SetUniformMat4", name, v, 16);
    }
    void SetUniformArrayVec2(const char* name, const float* data, int32_t n) override {
        Array("SetUniformArrayVec2", name, data, n, 2);
    }
    void SetUniformArrayVec4(const char* name, const float* data, int32_t n) override {
        Array("SetUniformArrayVec4", name, data, n, 4);
    }
    void SetInstanceArrayVec2(const char* name, const float* data, int32_t n) override {
        Array("SetInstanceArrayVec2", name, data, n, 2);
    }
    void SetInstanceArrayVec4(const char* name, const float* data, int32_t n) override {
        Array("SetInstanceArrayVec4", name, data, n, 4);
    }

    void SetInputImage(int32_t slot, const void* pixels, int32_t width, int32_t height,
                       int32_t stride, int32_t format, bool, int32_t) override {
        Note("SetInputImage", slot, Words(pixels), width, height, stride, format);
        Input(slot, {EffectRecord::Input::kImage, pixels, 0, width, height, stride, format});
    }
    void SetInputMaterial(int32_t slot, const void* pixels, int32_t cols, int32_t rows,
                          int32_t step, int32_t channels, bool, int32_t, int32_t word0,
                          int32_t word1) override {
        Note("SetInputMaterial", slot, Words(pixels), cols, rows, step, channels, word0, word1);
        Input(slot, {EffectRecord::Input::kMaterial, pixels, 0, cols, rows, step, channels});
    }
    void SetInputTexture(int32_t slot, const FrameRecord& frame, int32_t width, int32_t height,
                         int32_t stride) override {
        Note("SetInputTexture", slot, frame.texture, width, height, stride);
        Input(slot, {EffectRecord::Input::kTexture, nullptr, frame.texture, width, height, stride,
                     frame.channels});
    }
    void SetAudioBuffer(int32_t handle, int32_t count, const float* values) override {
        Note("SetAudioBuffer", handle, count);
        if (engine.recording) record->audioBuffer.assign(values, values + std::max(count, 0));
    }

    void SetVertexCount(int32_t count) override {
        Note("SetVertexCount", count);
        record->vertexCount = count;
    }
    void SetInstanceCount(int32_t count) override {
        Note("SetInstanceCount", count);
        record->instanceCount = count;
    }
    void AddVertexAttribute(const char* name, int32_t components, const void* data, bool keep,
                            bool indexList) override {
        Note("AddVertexAttribute", name, components, data ? "data" : "null", keep, indexList);
        if (!engine.recording) return;
        EffectRecord::Attribute& attribute = record->attributes[name];
        attribute.components = components;
        attribute.keep = keep;
        attribute.indexList = indexList;
        attribute.data = data;
    }
    void SetDrawType(int32_t type) override {
        Note("SetDrawType", type);
        record->drawType = type;
    }
    void SetBlendMode(int32_t mode) override {
        Note("SetBlendMode", mode);
        record->blendMode = mode;
    }
    void SetDepthTest(bool on) override {
        Note("SetDepthTest", on);
        record->depthTest = on;
    }
    void SetDepthWrite(bool on) override {
        Note("SetDepthWrite", on);
        record->depthWrite = on;
    }
    void SetCullFace(bool on) override {
        Note("SetCullFace", on);
        record->cullFace = on;
    }
    void SetClearColor(float r, float g, float b, float a) override {
        Note("SetClearColor", r, g, b, a);
        if (engine.recording) record->clearColor = {r, g, b, a};
    }
    void SetVariantIndices(const std::vector<int32_t>& indices) override {
        if (!engine.recording) return;
        std::string list;
        for (const int32_t index : indices)
            list += (list.empty() ? "" : " ") + std::to_string(index);
        Note("SetVariantIndices", list);
        record->variants = indices;
    }

    void SetRenderTarget(int32_t index) override {
        Note("SetRenderTarget", index);
        if (HasTarget(index)) std::swap(result, targets[static_cast<std::size_t>(index)]);
    }
    FrameRecord GetRenderTarget(int32_t index) override {
        Note("GetRenderTarget", index);
        return HasTarget(index) ? Frame(targets[static_cast<std::size_t>(index)]) : FrameRecord();
    }
    FrameRecord GetResultFrame() override { return Frame(result); }
    FrameRecord GetResultFrameAlt() override { return Frame(result); }
    int32_t Render(FrameRecord& target, const std::shared_ptr<NLEOpenGLEngineEffect>& self,
                   int32_t) override {
        if (engine.recording) {
            Note("Render", Picture(target), self.get() == this ? "self" : "stranger");
        }
        CopyAttributes();
        if (engine.failRender) return 1;
        if (engine.onRender) engine.onRender(*record, target);
        record->lastTarget = target;
        ++record->renderCount;
        engine.drawnBy[static_cast<std::size_t>(result - RecordingEngine::kFirstTexture)] =
            ++engine.renders;
        return 0;
    }
    int32_t Resize(int32_t width, int32_t height, int32_t stride,
                   const std::shared_ptr<NLEOpenGLEngineEffect>& self) override {
        Note("Resize", width, height, stride, self.get() == this ? "self" : "stranger");
        if (engine.failResize) return 1;
        record->width = width;
        record->height = height;
        record->stride = stride;
        return 0;
    }
    int32_t GetWidth() override { return record->width; }
    int32_t GetHeight() override { return record->height; }
    int32_t GetStride() override { return record->stride; }
    bool ReadTexture(int32_t texture, int32_t width, int32_t height, int32_t stride,
                     void* target) override {
        Note("ReadTexture", texture, width, height, stride);
        if (engine.failReadTexture) return false;
        std::memset(target, 0, static_cast<std::size_t>(height) * static_cast<std::size_t>(stride));
        if (engine.onRead) engine.onRead(texture, width, height, stride, target);
        return true;
    }
    bool RunOnGLThread(const std::function<bool()>& task) override {
        Note("RunOnGLThread");
        return task && task();
    }

private:
    struct Floats {
        float v[4];
    };

    template <typename... Parts>
    void Note(const char* operation, const Parts&... parts) {
        if (!engine.recording) return;
        std::string line = Line(operation, parts...);
        engine.calls.push_back(std::to_string(number) + ": " + line);
        record->calls.push_back(std::move(line));
    }
    void Keep(const char* name, const float* values, std::size_t count) {
        if (values) {
            record->uniforms[name].assign(values, values + count);
        } else {
            record->uniforms[name].assign(count, 0.0F);
        }
    }
    void Value(const char* operation, const char* name, const float* values, std::size_t count) {
        if (!engine.recording) return;
        std::ostringstream text;
        for (std::size_t i = 0; i < count; ++i) text << (i ? ", " : "") << values[i];
        Note(operation, name, text.str());
        Keep(name, values, count);
    }
    void IntValue(const char* operation, const char* name, int32_t value) {
        if (!engine.recording) return;
        Note(operation, name, value);
        const auto asFloat = static_cast<float>(value);
        Keep(name, &asFloat, 1);
    }
    void Matrix(const char* operation, const char* name, const float* values, std::size_t count) {
        if (!engine.recording) return;
        Note(operation, name);
        Keep(name, values, count);
    }
    void Array(const char* operation, const char* name, const float* data, int32_t count,
               std::size_t components) {
        if (!engine.recording) return;
        Note(operation, name, count);
        Keep(name, data, static_cast<std::size_t>(std::max(count, 0)) * components);
    }
    void Input(int32_t slot, const EffectRecord::Input& input) {
        if (engine.recording) record->inputs[slot] = input;
    }
    void CopyAttributes() {
        if (!engine.recording) return;
        for (auto& [name, attribute] : record->attributes) {
            if (!attribute.data) continue;
            const auto count = static_cast<std::size_t>(record->vertexCount) *
                               static_cast<std::size_t>(attribute.components);
            attribute.values.resize(count);
            if (attribute.indexList) {
                const auto* indices = static_cast<const uint32_t*>(attribute.data);
                std::copy(indices, indices + count, attribute.values.begin());
            } else {
                const auto* floats = static_cast<const float*>(attribute.data);
                std::copy(floats, floats + count, attribute.values.begin());
            }
            attribute.data = nullptr;
        }
    }
    bool HasTarget(int32_t index) const {
        return index >= 0 && static_cast<std::size_t>(index) < targets.size();
    }
    FrameRecord Frame(int32_t texture) const {
        FrameRecord frame = FrameRecord::TargetLess(record->width, record->height, record->stride);
        frame.tag = -1;
        frame.texture = texture;
        frame.isCpu = 0;
        return frame;
    }

    RecordingEngine& engine;
    std::size_t number;
    std::shared_ptr<EffectRecord> record;
    int32_t result;
    std::vector<int32_t> targets;
    int32_t audioBuffers = 0;
};

namespace {

std::vector<std::string> WithPrefix(const std::vector<std::string>& lines,
                                    std::string_view prefix) {
    std::vector<std::string> found;
    for (const std::string& line : lines) {
        if (line.starts_with(prefix)) found.push_back(line);
    }
    return found;
}

}  // namespace

std::vector<std::string> EffectRecord::Calls(std::string_view prefix) const {
    return WithPrefix(calls, prefix);
}

int EffectRecord::Count(std::string_view prefix) const {
    return static_cast<int>(WithPrefix(calls, prefix).size());
}

bool EffectRecord::Has(std::string_view line) const {
    return std::find(calls.begin(), calls.end(), line) != calls.end();
}

std::vector<float> EffectRecord::Uniform(std::string_view name) const {
    const auto found = uniforms.find(name);
    return found == uniforms.end() ? std::vector<float>() : found->second;
}

float EffectRecord::UniformFloat(std::string_view name) const {
    return Uniform(name).at(0);
}

int32_t EffectRecord::UniformInt(std::string_view name) const {
    return static_cast<int32_t>(Uniform(name).at(0));
}

std::vector<float> EffectRecord::AttributeValues(std::string_view name) const {
    const auto found = attributes.find(name);
    return found == attributes.end() ? std::vector<float>() : found->second.values;
}

EffectRecord::Input EffectRecord::InputAt(int32_t slot) const {
    const auto found = inputs.find(slot);
    return found == inputs.end() ? Input() : found->second;
}

EffectRecord* RecordingEngine::FindEffect(std::string_view text) const {
    for (const auto& effect : effects) {
        if (effect->fragmentPath.find(text) != std::string::npos) return effect.get();
    }
    return nullptr;
}

std::vector<std::string> RecordingEngine::Calls(std::string_view prefix) const {
    return WithPrefix(calls, prefix);
}

void RecordingEngine::ClearCalls() {
    calls.clear();
    for (const auto& effect : effects) effect->ClearCalls();
}

int32_t RecordingEngine::DrawnBy(int32_t texture) const {
    return drawnBy.at(static_cast<std::size_t>(texture - kFirstTexture));
}

int32_t RecordingEngine::NewTexture() {
    drawnBy.push_back(0);
    return kFirstTexture + static_cast<int32_t>(drawnBy.size()) - 1;
}

void RecordingEngine::CreateEngineEffect(int32_t width, int32_t height, int32_t stride,
                                         bool multisample, const char* fragmentPath,
                                         std::shared_ptr<NLEOpenGLEngineEffect>& out,
                                         int32_t encrypt, const char* vertexPath,
                                         const ShaderExterns& fragmentExterns,
                                         const ShaderExterns& vertexExterns) {
    if (failCreateEffect) return;
    auto record = std::make_shared<EffectRecord>();
    record->fragmentPath = fragmentPath;
    record->vertexPath = vertexPath;
    record->fragmentExterns = fragmentExterns;
    record->vertexExterns = vertexExterns;
    record->multisample = multisample;
    record->encrypt = encrypt;
    record->width = width;
    record->height = height;
    record->stride = stride;
    out = std::make_shared<RecordingEngineEffect>(*this, effects.size(), record);
    effects.push_back(std::move(record));
}

}  // namespace kelmo::test
