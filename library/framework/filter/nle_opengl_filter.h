// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <opencv2/core.hpp>
#include <set>
#include <string>
#include <vector>

#include "catalogue/nle_filter_info.h"
#include "contract/engine.h"
#include "contract/frame_record.h"
#include "contract/param_value.h"
#include "framework/engine/frame_time.h"
#include "framework/filter/parameter_upload.h"
#include "framework/textures/texture_frames.h"

namespace kelmo {

class AudioAnalysis;

/// Results of the operations of a filter.
enum FilterResult : int32_t {
    kFilterOk = 0,
    kFilterFailed = 1,
    kFilterRefusedType = 4,
    kFilterNoEngine = 5,
};

/// Root of every effect, and the whole of an effect that needs nothing but its shaders.
///
/// One filter drives one `NLEOpenGLEngineEffect`. It owns its copies of the parameters, the decoded
/// material (shared with background loaders, which may outlive it), the time and size of the
/// current frame and the audio state. Frames and audio samples are borrowed for a call.
///
/// Thread rule: all calls on one filter come from the render thread, with the engine's context
/// current where the host has a device. Operations return FilterResult unless they say otherwise;
/// a failed frame leaves the filter usable, and the next frame tries again.
///
/// What a derived class does:
/// - constructor: hand the description on; set `needCpuFrame` when it (or a sub-filter) reads
///   pixels, `asyncTextureLoad` and `engineFlag` if it needs them; create its sub-filters;
/// - `InitParams`: declare uniforms, targets and attributes beyond the common ones;
/// - `InitEffect` and `Resize`: sub-filters first, then the base;
/// - `DoEffect`: inputs with `SetInputFrame`, values, passes, and `Render` at the end.
class NLEOpenGLFilter {
public:
    /// Size before the first `Resize`, in pixels, and its stride in bytes.
    static constexpr int32_t kStartSize = 16;
    static constexpr int32_t kStartStride = 64;

    explicit NLEOpenGLFilter(std::shared_ptr<NLEFilterInfo> filterInfo);
    NLEOpenGLFilter(const NLEOpenGLFilter&) = delete;
    NLEOpenGLFilter& operator=(const NLEOpenGLFilter&) = delete;

    // --- what an effect overrides ---

    virtual ~NLEOpenGLFilter();
    /// Size of the frames to come; `stride` in bytes. Does nothing when the engine has that size.
    virtual int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride);
    /// Sets a parameter, or adds one of type `type` (a ParamType) that is not there. The value
    /// stays as it is, with its own type, which readers and uploads go by. 0 updated, 1 added.
    virtual int32_t SetParam(const char* name, int32_t type, NLEParamValue value);
    /// Draws one frame. `first` is the clip that the effect works on, `second` the second clip of a
    /// transition. 1 also when there is nothing to draw.
    virtual int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                             int32_t frameWidth, int32_t frameHeight, int32_t frameStride);
    /// Brings the sound of the frame to the shader; `smoothing` 0 is none. Always 0.
    virtual int32_t UpdateAudio(float smoothing);
    /// Decodes the material, copies the parameters, creates the engine side. 0, 1, or 5 without an
    /// engine.
    virtual int32_t InitEffect();
    /// Makes the engine side anew. An override does the same steps in the same order.
    virtual int32_t CreateEffect(int32_t newWidth, int32_t newHeight, int32_t newStride);
    /// Declares what the shaders use beyond the common uniforms. Called by `CreateEffect`.
    virtual int32_t InitParams();

    // --- time and sound, set before a frame ---

    void SetPosition(int32_t frame) { position = frame; }
    void SetDuration(int32_t frames) { duration = frames; }
    void SetFrameRate(float framesPerSecond) { frameRate = framesPerSecond; }
    int32_t GetPosition() const { return position; }
    int32_t GetDuration() const { return duration; }
    /// The rate of the topmost owner, in frames per second.
    float GetFrameRate() const;
    /// Position and duration in seconds, by that rate.
    FrameTime Time() const;
    /// Interleaved 16-bit samples of the frame, borrowed until the next call. 1, and nothing
    /// stored, for a filter without audio.
    int32_t SetAudioInput(int32_t channels, int32_t samples, int32_t bytes, int32_t format,
                          const void* data);

    // --- parameters ---

    /// Copies the current value of a parameter (of the last one, should a name stand twice). A name
    /// that is not there is remembered, and false returned: the effect object asks the host for it
    /// from the next frame on.
    bool FindParamValue(const char* name, NLEParamValue& value);
    /// The same with its limits.
    bool FindParamRange(const char* name, NLEParamValue& value, NLEParamValue& minimum,
                        NLEParamValue& maximum);
    /// The same without a copy: the parameter, or null. Valid until the next `SetParam`.
    const NLEFilterParams* FindParam(const char* name);
    /// The same for one number, whatever numeric type it has; false leaves `value` alone.
    bool FindFloat(const char* name, float& value);
    bool FindInt(const char* name, int32_t& value);
    /// The number, or `fallback` while there is none.
    float FloatOr(const char* name, float fallback);
    int32_t IntOr(const char* name, int32_t fallback);
    /// Sends every number as the uniform of its name.
    void UploadParams();

    // --- frames ---

    /// The picture of a frame as a `cv::Mat`: a view of its pixels; an empty one for a record
    /// without picture; for a frame that lives on the GPU alone, a black picture to be read only,
    /// since there are no pixels to see (`needCpuFrame` is set, so that the host is told at the
    /// next preparation).
    void GetMat(cv::Mat& out, const FrameRecord& frame);
    /// Gives a frame to an input slot of the engine and steps `slot`; a record without picture
    /// takes no slot.
    void SetInputFrame(int32_t& slot, const FrameRecord& frame);
    /// The engine's pictures as records that describe a texture; empty without an engine object.
    FrameRecord GetResultFrame() const;
    FrameRecord GetResultFrameAlt() const;
    FrameRecord GetTargetFrame(int32_t index) const;

    // --- what others see of a filter ---

    const std::shared_ptr<NLEOpenGLEngineEffect>& Engine() const { return engine; }
    const std::shared_ptr<NLEFilterInfo>& Info() const { return info; }
    const FilterParamList& Params() const { return params; }
    const std::set<std::string, std::less<>>& RequestedParams() const { return requestedParams; }
    bool NeedsCpuFrame() const { return needCpuFrame != 0; }
    bool SizeChanged() const { return sizeChanged != 0; }
    NLEOpenGLFilter* Parent() const { return parent; }
    /// `owner` must outlive this filter.
    void SetParent(NLEOpenGLFilter* owner) { parent = owner; }

protected:
    // --- steps of `CreateEffect`, for those who override it ---

    /// Stores the size, drops an earlier engine object and asks for a new one. False without one.
    bool MakeEngineEffect(int32_t newWidth, int32_t newHeight, int32_t newStride);
    /// "global_time", "total_time", "fade", "current_pos" and "total_len".
    void DeclareTimeUniforms();
    /// Builds the shaders; logs and returns 1 when that fails.
    int32_t BuildProgram();

    /// Renders into `out`; logs and returns 1 when that fails.
    int32_t RenderTo(FrameRecord& out);
    /// Renders a pass that stays in the engine, at the engine's size.
    int32_t RenderPass();
    /// The first parameter of that name, or null; nothing is remembered.
    NLEFilterParams* ParamNamed(const char* name) const;

    /// The engine side; empty before `InitEffect` and after a failure to make it.
    std::shared_ptr<NLEOpenGLEngineEffect> engine;
    std::string fragmentPath;
    std::string vertexPath;
    std::shared_ptr<TextureFrames> textureFrames;
    std::shared_ptr<std::vector<TexDesc>> texDescs;
    std::shared_ptr<NLEFilterInfo> info;
    /// Deep copies: values set here reach no other effect.
    FilterParamList params;
    /// Input slots to declare to the engine.
    std::map<int32_t, FrameRecord> inputs;
    /// Names looked for and not found in `params`.
    std::set<std::string, std::less<>> requestedParams;
    /// Size given to `CreateEffect`, in pixels and bytes.
    int32_t width = kStartSize;
    int32_t height = kStartSize;
    int32_t stride = kStartStride;
    /// In frames, from the host.
    int32_t duration = 0;
    int32_t position = 0;
    int32_t encrypt = 0;
    /// The effect reads pixels on the CPU; the host learns it when the effect is prepared.
    uint8_t needCpuFrame = 0;
    /// Asks the engine for smoothed edges.
    uint8_t engineFlag = 0;
    /// The last `Resize` changed the size.
    uint8_t sizeChanged = 0;
    /// Sequences and clips are decoded on a background thread.
    uint8_t asyncTextureLoad = 0;
    float frameRate = kTicksPerSecond;
    /// The filter that created this one; not owned.
    NLEOpenGLFilter* parent = nullptr;
    int32_t audioHandle = 0;
    int32_t audioChannels = 0;
    int32_t audioSamples = 0;
    int32_t audioBytes = 0;
    int32_t audioFormat = 0;
    const void* audioData = nullptr;
    /// Made by the first `UpdateAudio` of a filter with audio.
    std::unique_ptr<AudioAnalysis> audioAnalysis;
    float audioMin = 0.0F;
    float audioMax = 1.0F;
    /// In Hz.
    float frequencyMin = 0.0F;
    float frequencyMax = 22050.0F;
    float compressRatio = 1.0F;

private:
    void CloneParams();
    /// Returns the number of inputs that the base declares.
    std::size_t FillInputs();
    void DeclareInputs(std::size_t count);
    void DeclareCommonUniforms();
    void TakeAudioSettings();
    void RequestParam(const char* name);

    /// What `GetMat` gives for a frame without pixels.
    cv::Mat blackFrame;
};

}  // namespace kelmo
