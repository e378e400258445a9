// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "effects/face/sense_time_effect.h"

namespace kelmo {

/// Draws the package of the text parameter "stickerPath" on faces. It is loaded once: a later
/// change of the path reaches the library no more.
class NLEOpenGLSenseTimeStickerEffect : public NLEOpenGLSenseTimeEffect {
public:
    explicit NLEOpenGLSenseTimeStickerEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

protected:
    void PrepareHandle() override;
    void ApplyParams() override;
    /// Counts over all effects of the process, so that the library sees time go on.
    double NextTimestamp() override;

private:
    std::string currentPackagePath;
};

}  // namespace kelmo
