// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "framework/filter/nle_opengl_filter.h"
#include "framework/shared/working_size.h"

namespace kelmo {

/// Makes a filter from a GUID, or gives null. Installed at start-up, so that effects need not know
/// the catalogue.
using SubFilterCreation = std::function<std::unique_ptr<NLEOpenGLFilter>(const char* guid)>;
void SetSubFilterCreation(SubFilterCreation creation);

/// The creation of a running library: by the catalogue's description. Variants of the Astral family
/// are made from their master when there is one. Null, without a log line, for an unknown GUID.
std::unique_ptr<NLEOpenGLFilter> CreateFilterFromCatalogue(const char* guid);

/// A filter with `parent` as its owner, or null. The caller ends it no later than `parent` ends.
std::unique_ptr<NLEOpenGLFilter> CreateSubFilter(const char* guid, NLEOpenGLFilter* parent);

/// The stages of an effect: born in its constructor, ended with it, each maybe missing.
///
/// Owns the filters and keeps their order; what `Add` returns is borrowed, for use inside the
/// owner. Declare it as a member of the effect.
class SubFilters {
public:
    explicit SubFilters(NLEOpenGLFilter* filterOwner) : owner(filterOwner) {}

    /// Null when the catalogue does not know the GUID. A null `guid` adds nothing.
    NLEOpenGLFilter* Add(const char* guid);
    /// The same for an owner that needs a certain class; a filter of another class is dropped.
    template <typename Effect>
    Effect* AddAs(const char* guid) {
        auto filter = Make(guid);
        auto* const effect = dynamic_cast<Effect*>(filter.get());
        if (effect) filters.push_back(std::move(filter));
        return effect;
    }

    /// `InitEffect` of each in order. A stage that fails makes its own frames fail, not the owner.
    void InitEffects();
    void Resize(int32_t width, int32_t height, int32_t stride);
    void Resize(const WorkingSize& size) { Resize(size.width, size.height, size.stride); }
    /// Whether one of them reads pixels.
    bool NeedCpuFrame() const;

private:
    std::unique_ptr<NLEOpenGLFilter> Make(const char* guid);

    NLEOpenGLFilter* owner;
    std::vector<std::unique_ptr<NLEOpenGLFilter>> filters;
};

/// Runs one stage into its own picture and returns that as a frame. `owner` gives position and
/// duration. A stage that fails, or has nothing to draw, leaves the picture that it drew last.
FrameRecord RunSubFilter(NLEOpenGLFilter& stage, const NLEOpenGLFilter& owner,
                         const FrameRecord& second, const FrameRecord& first, int32_t width,
                         int32_t height, int32_t stride);
FrameRecord RunSubFilter(NLEOpenGLFilter& stage, const NLEOpenGLFilter& owner,
                         const FrameRecord& second, const FrameRecord& first,
                         const WorkingSize& size);

/// Binds a picture that a stage made at the next input slot, whatever it holds.
void BindStageResult(NLEOpenGLEngineEffect& engine, int32_t& slot, const FrameRecord& picture,
                     const WorkingSize& size);

}  // namespace kelmo
