// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "contract/param_value.h"

/// What a host offers to the plug-in, what the plug-in offers to a host.
///
/// Plain abstract classes, called through their virtual tables in the order in which they are
/// declared. Objects belong to whoever made them unless a line says otherwise. No exception may
/// cross any of these calls.
namespace kelmo {

/// One value on its way between host and plug-in: `type` is a HostType, the value lies behind it.
/// A text is borrowed: it stays the sender's and is read during the call.
struct QorValue {
    int32_t type = 0;
    union {
        int32_t i;
        float f;
        double d;
        uint8_t b;
        const char* s;
        void* p;
        unsigned char bytes[8] = {};
    };
};

/// A pair of 32-bit integers: a size or an offset in pixels.
struct QorPoint {
    int32_t x = 0;
    int32_t y = 0;
};

// ---------------------------------------------------------------------------------------------
// Suites
// ---------------------------------------------------------------------------------------------

inline constexpr const char* kMemoryAllocatorSuite = "Memory Allocator Suite";
inline constexpr const char* kImageBufferAllocatorSuite = "Image Buffer ALlocator Suite";
inline constexpr const char* kHostUtilSuite = "Host Util Suite";
inline constexpr const char* kGpuDeviceSuite = "GPU Device Suite";

enum QorLogLevel : int32_t { kLogInfo = 2, kLogWarning = 3, kLogError = 4 };
enum QorPathKind : int32_t { kPathResources = 1, kPathPlugin = 2 };

/// "Host Util Suite".
class QorHostUtilSuite {
public:
    virtual ~QorHostUtilSuite() = default;
    /// Writes a UTF-8 folder path of at most `size` bytes with its NUL. The buffer arrives preset
    /// with a name of the folder ("resources", "qorPlugin"), which stands for the path when the
    /// host leaves it. From any thread that calls the plug-in, under the rule of `Log`.
    virtual int32_t GetPath(int32_t kind, char* buffer, int32_t size) = 0;
    /// printf format; the text is borrowed. Called from any thread, by several at once: that of a
    /// call, those that load in the background, workers of OpenCV, and also while the plug-in or
    /// the engine holds a lock of its own. So a host must not hold a lock that its `Log` takes
    /// while it calls the plug-in.
    virtual void Log(int32_t level, const char* format, ...) = 0;
};

enum QorGpuDeviceType : int32_t { kQorDeviceTypeCpu = 0, kQorGPUDeviceTypeOpenGL = 2 };

struct QorGpuDeviceInfo {
    int32_t type = 0;
    int32_t reserved[15] = {};
};

/// "GPU Device Suite".
class QorGpuDeviceSuite {
public:
    virtual ~QorGpuDeviceSuite() = default;
    virtual int32_t GetDeviceCount() = 0;
    /// Fills the record; one that it leaves alone counts as no OpenGL device.
    virtual int32_t GetDeviceInfo(int32_t index, QorGpuDeviceInfo* info) = 0;
    /// The GL texture id behind a frame's surface; 0 when it was written. The texture belongs to
    /// the host's context; texture coordinate (0, 0) is the bottom left of the picture.
    virtual int32_t GetSurfaceTexture(void* surface, int32_t* texture, int32_t reserved) = 0;
};

/// First argument of `StartupQor`. Must live until `ShutdownQor` has returned, and as long as any
/// effect lives.
class QorPluginHost {
public:
    virtual ~QorPluginHost() = default;
    /// 0 and a suite in `suite`, or another value and null. The suite stays the host's.
    virtual int32_t AcquireSuite(const char* name, int32_t version, void** suite) = 0;
};

// ---------------------------------------------------------------------------------------------
// Publication
// ---------------------------------------------------------------------------------------------

/// Visibility argument of the parameter operations.
enum QorVisibility : int32_t { kParamHidden = 1, kParamVisible = 2 };

/// Bits of `QorEffectRegistrar::SetFlags`.
enum QorEffectFlags : uint32_t {
    kFlagOneInput = 0x2,
    kFlagTwoInputs = 0x4,
    kFlagRenderBlankFrames = 0x8,
    kFlagCpuFrames = 0x20,
    kFlagGpuFrames = 0x100,
    kFlagAlways = 0x810,
    kFlagAudio = 0x8000,
    kFlagDynamic = 0x800000,
};

/// Filled by `RegisterQorEffect`, once for each effect. Every parameter operation begins with the
/// parent (always -1), the index of the parameter from 0, its name and its display name; texts are
/// borrowed for the call.
class QorEffectRegistrar {
public:
    virtual ~QorEffectRegistrar() = default;
    virtual void SetIdentity(const char* guid, const char* displayName) = 0;
    /// QorEffectFlags.
    virtual void SetFlags(uint32_t flags) = 0;
    virtual void SetReserved(int32_t value) = 0;
    /// 1: the whole text at once, 2: character by character. Not called for other effects.
    virtual void SetTextKind(int32_t kind) = 0;
    virtual void AddFloatParam(int32_t parent, int32_t index, const char* name, const char* display,
                               float min, float max, float def, int32_t vis) = 0;
    virtual void AddIntParam(int32_t parent, int32_t index, const char* name, const char* display,
                             int32_t min, int32_t max, int32_t def, int32_t step, int32_t vis) = 0;
    /// 0xRRGGBB. The default stands first here.
    virtual void AddColorParam(int32_t parent, int32_t index, const char* name, const char* display,
                               int32_t def, int32_t min, int32_t max, int32_t vis) = 0;
    virtual void AddCheckBoxParam(int32_t parent, int32_t index, const char* name,
                                  const char* display, int32_t min, int32_t max, int32_t def,
                                  int32_t vis) = 0;
    virtual void AddStringParam(int32_t parent, int32_t index, const char* name,
                                const char* display, const char* reserved, int32_t flag) = 0;
    /// The default arrives as a record of type kHostText.
    virtual void AddGradientColorParam(int32_t parent, int32_t index, const char* name,
                                       const char* display, const QorValue* def, int32_t flag) = 0;
    virtual void AddDoubleParam(int32_t parent, int32_t index, const char* name,
                                const char* display, double min, double max, double def,
                                int32_t vis) = 0;
    /// One of nine places of the frame, counted by row.
    virtual void AddPalacesParam(int32_t parent, int32_t index, const char* name,
                                 const char* display, int32_t min, int32_t max, int32_t def,
                                 int32_t flag) = 0;
    virtual void AddListMaskParam(int32_t parent, int32_t index, const char* name,
                                  const char* display, const char* reserved, int32_t flag) = 0;
    virtual void AddListMosaicParam(int32_t parent, int32_t index, const char* name,
                                    const char* display, int32_t min, int32_t max, int32_t def,
                                    int32_t flag) = 0;
    virtual void AddColorStartParam(int32_t parent, int32_t index, const char* name,
                                    const char* display, int32_t min, int32_t max, int32_t def,
                                    int32_t vis) = 0;
    virtual void AddColorEndParam(int32_t parent, int32_t index, const char* name,
                                  const char* display, int32_t min, int32_t max, int32_t def,
                                  int32_t vis) = 0;
    /// A float that the host shows multiplied by 100.
    virtual void AddMult100Param(int32_t parent, int32_t index, const char* name,
                                 const char* display, float min, float max, float def,
                                 int32_t vis) = 0;
};

// ---------------------------------------------------------------------------------------------
// One frame
// ---------------------------------------------------------------------------------------------

/// A picture of the host. BGRA, 8 bits, premultiplied alpha, top row first.
class QorFrame {
public:
    virtual ~QorFrame() = default;
    virtual int32_t GetWidth() = 0;
    virtual int32_t GetHeight() = 0;
    /// Bytes from one row to the next, also for a frame that lives on the GPU alone.
    virtual int32_t GetStride() = 0;
    /// First row, or null for a frame without CPU pixels.
    virtual void* GetPixels() = 0;
    /// GPU surface for `QorGpuDeviceSuite::GetSurfaceTexture`, or null.
    virtual void* GetSurface() = 0;
    /// 0 = done. The one name is "SkipGroupTransform" (a bool, 1), set on the first input frame in
    /// `SyncFrame` when an effect has read "TransformParam" there: it places the text itself, and
    /// the host must not do it again. Who has no groups ignores it.
    virtual int32_t SetProperty(const char* name, const QorValue* value) = 0;
    /// 0 = found and written. Names, asked for by text effects on the first input frame:
    /// "TextUserData" (pointer to a TextUserData); "TransformParam" (pointer to seven floats: scale
    /// x and y, 1 unless placed, translation x and y in fractions of the frame, two that are 0.5,
    /// rotation in degrees). Both stay valid during the frame.
    virtual int32_t GetProperty(const char* name, QorValue* value) = 0;
};

/// What the property "TextUserData" points to; the text object is described in
/// contract/text_path.h.
struct TextUserData {
    class TextPath* textPath = nullptr;
    void* reserved[2] = {};
    /// Not zero when the text changed since the frame before.
    uint8_t textIsUpdate = 0;
};

/// Audio samples of one frame: interleaved, signed 16 bits, `GetChannels()` to a sample.
class QorAudio {
public:
    virtual ~QorAudio() = default;
    virtual int32_t GetChannels() = 0;
    /// Samples per channel.
    virtual int32_t GetSamples() = 0;
    virtual int32_t GetFormat() = 0;
    virtual int32_t GetBytes() = 0;
    virtual void* GetData() = 0;
};

/// Given to each call on an effect; valid for that call. Frames and audio are borrowed.
class QorRenderContext {
public:
    virtual ~QorRenderContext() = default;
    /// Current frame of the effect, from 0.
    virtual int32_t GetPosition() = 0;
    /// Frames in all.
    virtual int32_t GetDuration() = 0;
    /// Frames per second as a fraction.
    virtual void GetFrameRate(int64_t* numerator, int64_t* denominator) = 0;
    /// The picture needs this room around the frame; a host may ignore it.
    virtual void SetExpansion(QorPoint size, QorPoint offset) = 0;
    /// Index 0 is the clip that the effect works on, 1 the second clip of a transition; null when
    /// there is none.
    virtual QorFrame* GetInputFrame(int32_t index) = 0;
    virtual QorFrame* GetOutputFrame() = 0;
    /// Index 0: the samples of this frame, or null.
    virtual QorAudio* GetAudio(int32_t index) = 0;
    /// Pointer-sized values by name; `out` has room for `size` bytes. 0 = written. The name asked
    /// for is "ObjectAiDataTransferPtr" (contract/ai_transfer.h).
    virtual int32_t GetCustomData(const char* name, int32_t hostType, void* out, int32_t size) = 0;
    /// The value at a position; the record arrives with the type that is asked for. For a name that
    /// an effect asks for on its own that is kHostPointer, and the answer has a type of its own. 0
    /// = filled.
    virtual int32_t GetParamValue(const char* name, int32_t position, QorValue* value) = 0;
    /// Asked at prepare time: true when the effect reads pixels, so that frames must carry them.
    virtual void SetNeedCpuFrame(bool need) = 0;
};

// ---------------------------------------------------------------------------------------------
// The plug-in
// ---------------------------------------------------------------------------------------------

/// Results of the exports.
enum QorResult : int32_t { kQorOk = 0, kQorRefused = 2, kQorEffectFailed = 4 };

/// One effect instance, made by `CreateQorEffect` and ended by `ReleaseQorEffect`.
///
/// All calls on one effect come from one thread at a time. With an OpenGL device, `PrepareResource`
/// and every frame run on one and the same thread, with the host's context current.
class QorEffect {
public:
    virtual ~QorEffect() = default;
    /// Decodes material and builds the shaders. 0 ok, 4 failed.
    virtual int32_t PrepareResource(QorRenderContext* context) = 0;
    virtual int32_t Reserved1(QorRenderContext* context) = 0;
    /// Takes time and parameter values from the context. Always 0.
    virtual int32_t SyncFrame(QorRenderContext* context) = 0;
    /// Draws the frame of the last `SyncFrame`. 0 ok, 4 failed, or nothing to draw on this frame:
    /// then no line of level 4 is logged on this thread, and the clip goes on as it is.
    virtual int32_t GLRender(QorRenderContext* context) = 0;
    /// A second entry to the same operation.
    virtual int32_t GLRenderAlt(QorRenderContext* context) = 0;
    virtual int32_t Reserved2(QorRenderContext* context) = 0;
    /// Gives everything back; the effect then refuses `PrepareResource` and `GLRender`.
    virtual void ReleaseResource(QorRenderContext* context) = 0;
    virtual int32_t Reserved3(QorRenderContext* context) = 0;
    virtual int32_t Reserved4(QorRenderContext* context) = 0;
};

/// Filled by `StartupQor`. Texts are static.
struct QorPluginInfo {
    uint32_t interfaceVersion = 0;
    uint32_t pluginVersion = 0;
    const char* name = nullptr;
    const char* vendor = nullptr;
    const char* description = nullptr;
    const char* extra = nullptr;
    int32_t effectCount = 0;
};

/// The six exports of the plug-in, by name, with C linkage.
///
/// Order of calls: `StartupQor` once; `RegisterQorEffect` for each index below `effectCount`; any
/// number of `CreateQorEffect` and `ReleaseQorEffect`; `ShutdownQor` once. After it effects that
/// still live may draw on and are released; before anything else comes `StartupQor` again, with the
/// same host or another. Descriptions that were read stay: a second start adds new ones alone.
extern "C" {
using StartupQorFn = int32_t (*)(QorPluginHost* host, QorPluginInfo* info);
using ShutdownQorFn = int32_t (*)();
/// 0, or 2 on a null registrar or an index without an entry.
using RegisterQorEffectFn = int32_t (*)(int32_t index, QorEffectRegistrar* registrar);
/// Adds the first filter found below a folder and describes it. 0, or 2 when there is none.
using RegisterQorEffectFromConfPathFn = int32_t (*)(const char* folder,
                                                    QorEffectRegistrar* registrar);
/// `deviceType` is 2 (OpenGL) when the host has reported such a device, else 0. 0, or 2 = refused.
using CreateQorEffectFn = int32_t (*)(const char* guid, int32_t deviceType, QorEffect** effect);
using ReleaseQorEffectFn = int32_t (*)(QorEffect* effect);
}

inline constexpr const char* kStartupQor = "StartupQor";
inline constexpr const char* kShutdownQor = "ShutdownQor";
inline constexpr const char* kRegisterQorEffect = "RegisterQorEffect";
inline constexpr const char* kRegisterQorEffectFromConfPath = "RegisterQorEffectFromConfPath";
inline constexpr const char* kCreateQorEffect = "CreateQorEffect";
inline constexpr const char* kReleaseQorEffect = "ReleaseQorEffect";

}  // namespace kelmo
