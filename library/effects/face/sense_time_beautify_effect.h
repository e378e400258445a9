// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/face/sense_time_effect.h"

namespace kelmo {

/// Retouches faces. Each parameter of the table in the source is an integer in percent, 0 to 100;
/// those that go both ways are neutral at 50. What the description lacks, and the host does not
/// know, stays as the library has it; a change of a hundredth or less is not sent.
class NLEOpenGLSenseTimeBeautifyEffect : public NLEOpenGLSenseTimeEffect {
public:
    explicit NLEOpenGLSenseTimeBeautifyEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

protected:
    void PrepareHandle() override;
    void ApplyParams() override;
};

}  // namespace kelmo
