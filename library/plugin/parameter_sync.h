// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/nle_filter_info.h"
#include "contract/qor_host.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Brings the host's values of one frame to a filter: first the catalogue's parameters, then the
/// names that the filter has looked for in vain. A parameter that the host does not answer for
/// keeps its value, and so does one whose answer it cannot hold: numbers become the parameter's own
/// numeric type, a text is for texts and pointers, a pointer for pointers. Keeps a scratch value,
/// so that numbers cost no memory; one object per effect, on the effect's thread.
class ParameterSync {
public:
    void Run(QorRenderContext& context, const NLEFilterInfo& info, NLEOpenGLFilter& filter);

private:
    void SyncCataloguePart(QorRenderContext& context, const NLEFilterInfo& info,
                           NLEOpenGLFilter& filter, int32_t position);
    void SyncRequested(QorRenderContext& context, const char* name, NLEOpenGLFilter& filter,
                       int32_t position);
    /// Texts and their placement are properties of the input frame.
    void SyncFrameProperty(QorRenderContext& context, const char* name, NLEOpenGLFilter& filter,
                           int32_t position);
    void SetConverted(const QorValue& record, const char* name, NLEOpenGLFilter& filter);

    NLEParamValue value;
};

}  // namespace kelmo
