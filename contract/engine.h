// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdarg>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "contract/frame_record.h"

/// The library that runs all shaders.
///
/// Pictures are BGRA with 8 bits and premultiplied alpha; texture coordinate (0, 0) is the bottom
/// left of the picture. Nothing here throws; results are 0 for success.
namespace kelmo {

/// What `NLEOpenGLEngineEffect::SetBlendMode` takes.
enum EngineBlendMode : int32_t {
    kBlendOver = 1,     ///< source + (1 - source alpha) * destination
    kBlendReplace = 2,  ///< source
    kBlendAdd = 3,      ///< source + destination
};

/// What `NLEOpenGLEngineEffect::SetDrawType` takes.
enum EngineDrawType : int32_t {
    kDrawTriangles = 1,     ///< vertices as they stand, three to a triangle
    kDrawIndexedLines = 2,  ///< the index list, two to a line
};

/// Named groups of alternative shader files: one inner list per group.
using ShaderExterns = std::vector<std::vector<std::string>>;

/// The engine side of one filter: its program, its inputs, its pictures.
///
/// Declarations (`Add...`) come before `CreateProgram`; a `Set...` of a name that was not declared
/// declares it. Setting is cheap and touches no GL; the GL work happens in `CreateProgram`,
/// `Resize`, the `SetInput...` uploads, `Render` and `ReadTexture`. Calls for one object come from
/// one thread at a time. Names are borrowed for the call, and so is data except where a line says
/// otherwise.
class NLEOpenGLEngineEffect {
public:
    virtual ~NLEOpenGLEngineEffect() = default;

    // --- declarations ---

    /// Declares the next input slot; slots count from 0. `clip` true: linear, clamped to the edge;
    /// false: material, linear, repeated.
    virtual void AddInputTexture(int32_t width, int32_t height, int32_t stride, bool clip) = 0;
    /// Declares an intermediate picture of the effect's size; indices count from 0.
    virtual int32_t AddRenderTarget() = 0;
    /// Returns the handle for `SetAudioBuffer`.
    virtual int32_t AddAudioBuffer() = 0;
    virtual void AddUniformFloat(const char* name, float value) = 0;
    virtual void AddUniformInt(const char* name, int32_t value) = 0;
    virtual void AddUniformVec2(const char* name, float x, float y) = 0;
    virtual void AddUniformVec3(const char* name, float x, float y, float z) = 0;
    virtual void AddUniformVec4(const char* name, float x, float y, float z, float w) = 0;
    /// 9 floats, column-major.
    virtual void AddUniformMat3(const char* name, const float* value) = 0;
    /// 16 floats, column-major.
    virtual void AddUniformMat4(const char* name, const float* value) = 0;
    /// `count` elements of 2 or 4 floats; `data` may be null for zeros. Any length.
    virtual void AddUniformArrayVec2(const char* name, const float* data, int32_t count) = 0;
    virtual void AddUniformArrayVec4(const char* name, const float* data, int32_t count) = 0;
    /// One element per instance, an attribute of the vertex shader.
    virtual void AddInstanceArrayVec2(const char* name, const float* data, int32_t count) = 0;
    virtual void AddInstanceArrayVec4(const char* name, const float* data, int32_t count) = 0;
    /// Builds the program of the current variants. 0 = ok.
    virtual int32_t CreateProgram(const std::shared_ptr<NLEOpenGLEngineEffect>& self) = 0;

    // --- values of a frame ---

    virtual void SetUniformFloat(const char* name, float value) = 0;
    virtual void SetUniformInt(const char* name, int32_t value) = 0;
    virtual void SetUniformVec2(const char* name, float x, float y) = 0;
    virtual void SetUniformVec3(const char* name, float x, float y, float z) = 0;
    virtual void SetUniformVec4(const char* name, float x, float y, float z, float w) = 0;
    virtual void SetUniformMat3(const char* name, const float* value) = 0;
    virtual void SetUniformMat4(const char* name, const float* value) = 0;
    virtual void SetUniformArrayVec2(const char* name, const float* data, int32_t count) = 0;
    virtual void SetUniformArrayVec4(const char* name, const float* data, int32_t count) = 0;
    virtual void SetInstanceArrayVec2(const char* name, const float* data, int32_t count) = 0;
    virtual void SetInstanceArrayVec4(const char* name, const float* data, int32_t count) = 0;

    /// CPU picture with its top row first; `format` is the number of 8-bit channels, 1 (grey) or 4
    /// (BGRA). Uploads at once; never reads past `height` rows of `stride` bytes.
    virtual void SetInputImage(int32_t slot, const void* pixels, int32_t width, int32_t height,
                               int32_t stride, int32_t format, bool reserved,
                               int32_t reserved2) = 0;
    /// Material with its bottom row first and straight alpha, rows of `step` bytes without padding.
    /// `channels` is always 4; the sample layout is told from step / cols: 1 grey, 2 grey with
    /// alpha, 3 BGR, 4 BGRA, 8 BGRA of 16 bits. Null pixels or a size of 0 leave the slot
    /// transparent.
    virtual void SetInputMaterial(int32_t slot, const void* pixels, int32_t cols, int32_t rows,
                                  int32_t step, int32_t channels, bool reserved, int32_t reserved2,
                                  int32_t word0, int32_t word1) = 0;
    /// A picture that is a GL texture already; the texture is borrowed until the next `Render`.
    virtual void SetInputTexture(int32_t slot, const FrameRecord& frame, int32_t width,
                                 int32_t height, int32_t stride) = 0;
    /// Spectrum of the frame, copied.
    virtual void SetAudioBuffer(int32_t handle, int32_t count, const float* values) = 0;

    // --- geometry and state of the pass ---

    /// Number of vertices of a pass with attributes. Without attributes a pass draws one quad over
    /// the whole frame.
    virtual void SetVertexCount(int32_t count) = 0;
    virtual void SetInstanceCount(int32_t count) = 0;
    /// Hands over the data of an attribute: vertex count x components words of 32 bits, floats, or
    /// with `indexList` unsigned indices for kDrawIndexedLines. `data` is borrowed until the next
    /// `Render`, which uploads it. `keep` says that the data will rarely change (a mesh); false,
    /// that it comes anew each frame.
    virtual void AddVertexAttribute(const char* name, int32_t components, const void* data,
                                    bool keep, bool indexList) = 0;
    virtual void SetDrawType(int32_t type) = 0;
    virtual void SetBlendMode(int32_t mode) = 0;
    virtual void SetDepthTest(bool on) = 0;
    virtual void SetDepthWrite(bool on) = 0;
    virtual void SetCullFace(bool on) = 0;
    /// Every pass begins with this colour, transparent black unless set.
    virtual void SetClearColor(float r, float g, float b, float a) = 0;
    /// Entry g picks the file of extern group g, fragment groups and vertex groups alike.
    virtual void SetVariantIndices(const std::vector<int32_t>& indices) = 0;

    // --- pictures ---

    /// Exchanges the picture of the last `Render` with intermediate `index`; copies nothing.
    virtual void SetRenderTarget(int32_t index) = 0;
    /// Intermediate `index` as a GPU frame; an empty record for an index that was not declared.
    virtual FrameRecord GetRenderTarget(int32_t index) = 0;
    /// The last result as a GPU frame. Both give the same picture.
    virtual FrameRecord GetResultFrame() = 0;
    virtual FrameRecord GetResultFrameAlt() = 0;
    /// Draws one pass into the result and brings it to `target`: CPU pixels are written top row
    /// first, a texture is drawn into, a record without picture leaves the result in the engine. 0
    /// = ok.
    virtual int32_t Render(FrameRecord& target, const std::shared_ptr<NLEOpenGLEngineEffect>& self,
                           int32_t reserved) = 0;
    /// Changes the size of result and intermediates; their pictures become transparent. 0 = ok.
    virtual int32_t Resize(int32_t width, int32_t height, int32_t stride,
                           const std::shared_ptr<NLEOpenGLEngineEffect>& self) = 0;
    virtual int32_t GetWidth() = 0;
    virtual int32_t GetHeight() = 0;
    virtual int32_t GetStride() = 0;
    /// Reads a texture of the given size into `target`, BGRA, top row first. False when it cannot.
    virtual bool ReadTexture(int32_t texture, int32_t width, int32_t height, int32_t stride,
                             void* target) = 0;
    /// Runs `task` with the engine's context current and returns its result.
    virtual bool RunOnGLThread(const std::function<bool()>& task) = 0;
};

/// One per process.
class NLEOpenGLEffectEngine {
public:
    virtual ~NLEOpenGLEffectEngine() = default;
    /// Makes the engine side of one filter. `multisample` asks for 3D drawing: smoothed edges.
    /// `vertexPath` may be empty. `out` stays empty on failure. Objects may outlive the
    /// engine, but on the host's road not the host's context.
    virtual void CreateEngineEffect(int32_t width, int32_t height, int32_t stride, bool multisample,
                                    const char* fragmentPath,
                                    std::shared_ptr<NLEOpenGLEngineEffect>& out, int32_t encrypt,
                                    const char* vertexPath, const ShaderExterns& fragmentExterns,
                                    const ShaderExterns& vertexExterns) = 0;
};

using EngineLogCallback = void (*)(int32_t level, const char* format, va_list args);

/// Exports of the engine library, by name, with C linkage.
extern "C" {
/// 0 and an engine in `engine`. `noDevice` is 1 when the host has no OpenGL device, so that the
/// library must bring its own context.
using CreateNLEOpenGLEffectEngineInstanceFn = int32_t (*)(NLEOpenGLEffectEngine** engine,
                                                          EngineLogCallback log, uint8_t noDevice,
                                                          int32_t reserved);
using DestroyNLEOpenGLEffectEngineInstanceFn = void (*)(NLEOpenGLEffectEngine* engine);
}

inline constexpr const char* kCreateEngine = "CreateNLEOpenGLEffectEngineInstance";
inline constexpr const char* kDestroyEngine = "DestroyNLEOpenGLEffectEngineInstance";

}  // namespace kelmo
