// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "bindings/sense_time_wrapper.h"
#include "framework/filter/nle_opengl_combine_filter.h"
#include "platform/gl_textures.h"

namespace kelmo {

/// Reads a file; one that cannot be read gives no bytes and a line on the standard output.
void ReadBinaryFile(const std::string& path, std::string& bytes);

/// Base of the effects that hand the frame to the face library instead of to a shader. The library
/// works in the engine's GL context.
///
/// Every failure gives kFilterFailed, and the clip stays as it is: no library, no engine, the
/// engine "-dx", an error of the library. A frame in which no face was found is worked on twice.
class NLEOpenGLSenseTimeEffect : public NLEOpenGLCombineFilter {
public:
    ~NLEOpenGLSenseTimeEffect() override;

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

protected:
    /// The formats of the pictures that go into and come out of the library.
    NLEOpenGLSenseTimeEffect(std::shared_ptr<NLEFilterInfo> filterInfo,
                             FaceSdkPixelFormat inputFormat, FaceSdkPixelFormat outputFormat);

    /// Just after the effect handle was made.
    virtual void PrepareHandle() = 0;
    /// At the beginning of each frame.
    virtual void ApplyParams() = 0;
    virtual double NextTimestamp() { return 0.0; }

    std::shared_ptr<THIRD_LIBRARY_IMPORT::SenseTimeWrapper> senseTime;
    void* effectHandle = nullptr;

private:
    bool CreateHandles();
    bool DrawFace(const cv::Mat& picture, const FrameRecord& first, FrameRecord& out);

    FaceSdkPixelFormat inputFormat;
    FaceSdkPixelFormat outputFormat;
    std::string resourceFolder;
    void* humanActionHandle = nullptr;
    bool ready = false;
    bool faceFound = false;
    GLTextures textures{2};
};

}  // namespace kelmo
