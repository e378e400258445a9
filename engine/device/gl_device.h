// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/device/gl_context.h"
#include "engine/device/gl_object.h"
#include "engine/device/state_guard.h"
#include "engine/engine_log.h"

namespace kelmo {

class ShaderProgram;

/// Bytes from one corner of the quad to the next.
inline constexpr GLsizei kQuadStride = 7 * sizeof(float);

/// What the context can do.
struct GlLimits {
    int textureSize = 0;   ///< largest width and height of a picture
    int bufferTexels = 0;  ///< longest array, in elements
    int textureUnits = 0;  ///< pictures and arrays that one program can read
    int samples = 0;       ///< of a multisampled pass, at most 4
    /// A software rasteriser: transfers are copies, best done in portions that stay in the cache.
    bool software = false;
};

/// Objects that all effects use, made on the first entry.
struct GlCommons {
    GlObject clipSampler;      ///< linear, clamped to the edge
    GlObject materialSampler;  ///< linear, repeated
    GlObject emptyTexture;     ///< one transparent pixel
    GlObject emptyBuffer;      ///< storage of emptyArray: one element of zeros
    GlObject emptyArray;       ///< buffer texture
    GlObject quadBuffer;       ///< strip of 4 corners: position (4), texcoord (3)
    GlObject vertexArray;      ///< set up by each pass, nothing enabled in between
};

/// One context as the engine uses it: a lock, and what the effects of that context share.
///
/// All GL work happens inside a `GlScope`. A scope holds the lock and has the context current; on
/// the host's road it also puts the host's state back at its end. Scopes nest on one thread. The
/// lock serialises the GL work of the context: the rasteriser spreads one pass over all cores
/// by itself, and GL on a card is serial anyway. Shared by the engine and its effects, so that an
/// effect which outlives the engine stays safe.
///
/// On the host's road the context is the one that is current on the first entry, for good.
class GlDevice {
public:
    GlDevice(std::unique_ptr<GlContext> context, EngineLog log);
    ~GlDevice();
    GlDevice(const GlDevice&) = delete;

    const EngineLog& Log() const { return log; }
    const GlLimits& Limits() const { return limits; }
    const GlCommons& Commons() const { return commons; }

    /// Programs by their whole source; they die with their last user. Inside a scope.
    std::unordered_map<std::string, std::weak_ptr<ShaderProgram>>& Programs() { return programs; }
    /// Memory for portions of a transfer. Inside a scope; valid until the next call.
    uint8_t* Staging(size_t bytes);
    /// Makes texture unit `unit` the active one. Every unit that a scope touches goes through here.
    void UseUnit(int unit);
    /// Sets the state that all our GL work starts from. `GlScope` does so on entering.
    void ApplyBaseState();
    /// Before foreign GL code runs inside a scope: every unit is put back at the scope's end.
    void SaveAllUnits();

    /// Deletes a name, now when the context is current on this thread, else on the next entry.
    void Discard(GlKind kind, GLuint id);

private:
    friend class GlScope;
    struct Waste {
        GlKind kind;
        GLuint id;
    };

    bool Enter();
    void Leave();
    bool Begin();
    bool IsUsable();
    bool ReadLimits();
    void MakeCommons();
    void MakeQuad();
    void EmptyWaste();

    std::recursive_mutex mutex;
    std::unique_ptr<GlContext> context;
    const EngineLog log;
    int depth = 0;
    void* adopted = nullptr;
    GlLimits limits;
    StateGuard guard;
    std::unordered_map<std::string, std::weak_ptr<ShaderProgram>> programs;
    std::vector<uint8_t> staging;
    std::mutex wasteMutex;
    std::vector<Waste> waste;
    GlCommons commons;
};

/// The right to call GL, from here to the end of the block. False, after a log line, when there is
/// no context.
class GlScope {
public:
    explicit GlScope(GlDevice& device) : device(device), entered(device.Enter()) {}
    ~GlScope() {
        if (entered) device.Leave();
    }
    GlScope(const GlScope&) = delete;
    explicit operator bool() const { return entered; }

private:
    GlDevice& device;
    const bool entered;
};

}  // namespace kelmo
