// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/engine/effect_engine.h"
#include "tests/support/recording_engine.h"

namespace kelmo::test {

/// A recording engine that the library uses as its engine for the life of the object. Effects must
/// be gone before it.
class EngineSession : public RecordingEngine {
public:
    EngineSession() { SetEngineForTesting(this); }
    ~EngineSession() override { SetEngineForTesting(nullptr); }
};

}  // namespace kelmo::test
