// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/media/picture/picture.h"
#include "host/session/catalogue.h"
#include "host/session/effect_session.h"

namespace kelmo::host {
class HostTextPath;
}

namespace kelmo::test {

using host::EffectDescription;
using host::Picture;

/// An effect at work on pictures in memory, frame after frame. Effects that follow a person find
/// the one of staged_person.h in every picture, whatever it shows.
class StagedEffect {
public:
    /// `frames` at 25 a second. Throws HostError when the effect cannot be made.
    StagedEffect(const EffectDescription& effect, int width, int height, int64_t frames,
                 const std::vector<std::string>& assignments = {});

    /// Draws one frame. Transitions take the second clip, filters leave it alone. Effects that want
    /// sound hear `samples`; empty: none. A frame that the effect leaves unprocessed (there is
    /// nothing for it to do, and it complains of nothing) is the clip. Throws HostError for other
    /// failures.
    Picture Draw(int64_t frame, Picture& first, Picture& second, std::vector<int16_t> samples = {});

private:
    const EffectDescription& description;
    int width;
    int height;
    std::shared_ptr<host::HostTextPath> text;
    std::unique_ptr<host::EffectSession> session;
};

/// The started plug-in with the staged material, once for the whole program.
const std::vector<EffectDescription>& AllEffects();
/// By name. Throws HostError for an unknown one.
const EffectDescription& EffectNamed(const std::string& name);

/// Entries that only work inside others; their picture alone means nothing.
/// `wanted`, the number of cases below which a test over the catalogue proves nothing; 0 while
/// KELMO_ONLY leaves most of the catalogue out.
int AtLeast(int wanted);
bool IsPart(const EffectDescription& effect);
bool IsTransition(const EffectDescription& effect);
/// Entries that draw or move letters; they are given a text.
bool IsTitle(const EffectDescription& effect);
/// Entries whose randomness is that of the moment: drawn again, a frame looks different.
bool IsOfTheMoment(const EffectDescription& effect);
/// Entries that go on with every frame drawn, whatever its position.
bool GoesOn(const EffectDescription& effect);

/// What the plug-in logged as warnings and errors since the last call.
std::vector<std::string> TakeComplaints();

/// "transition/twill": family and folder of an entry's description.
std::string FolderOf(const EffectDescription& effect);

/// The moment that galleries show: an effect in full swing. Two seconds of a filter, one of a
/// transition.
struct GoodMoment {
    explicit GoodMoment(const EffectDescription& effect)
        : frames(IsTransition(effect) ? 25 : 50), frame(IsTransition(effect) ? 10 : 20) {}
    int64_t frames;
    int64_t frame;
};

/// The frame of the good moment after all that come before it, with loud sound. The first clip
/// moves sideways and shows `first` as it is at that frame, so that effects with a memory have
/// something to remember.
Picture DrawGoodMoment(const EffectDescription& effect, Picture& first, Picture& second,
                       const std::vector<std::string>& assignments = {});

}  // namespace kelmo::test
