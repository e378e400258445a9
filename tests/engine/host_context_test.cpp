// SPDX-License-Identifier: GPL-3.0-or-later
// The host's road: the engine works in the context that is current, and leaves it as it was.
#include <dlfcn.h>
#include <epoxy/gl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "engine/effect_stage.h"
#include "support/egl_test_context.h"

namespace kelmo::test {
namespace {

using ::testing::HasSubstr;

/// An engine library, opened for one test.
class Library {
public:
    explicit Library(const char* name) : handle(dlopen(name, RTLD_NOW)) {
        EXPECT_TRUE(handle) << dlerror();
    }
    ~Library() { dlclose(handle); }
    Library(const Library&) = delete;

    int32_t Create(NLEOpenGLEffectEngine** engine, uint8_t noDevice) const {
        const auto create =
            reinterpret_cast<CreateNLEOpenGLEffectEngineInstanceFn>(dlsym(handle, kCreateEngine));
        return create(engine, EngineLogLines::Callback, noDevice, 0);
    }
    void Destroy(NLEOpenGLEffectEngine* engine) const {
        reinterpret_cast<DestroyNLEOpenGLEffectEngineInstanceFn>(dlsym(handle, kDestroyEngine))(
            engine);
    }

private:
    void* const handle;
};

EffectPointer MakeEffect(NLEOpenGLEffectEngine& engine, const std::string& path) {
    EffectPointer effect;
    engine.CreateEngineEffect(2, 2, 8, false, path.c_str(), effect, 0, "", {}, {});
    EXPECT_TRUE(effect && effect->CreateProgram(effect) == 0) << EngineLogLines::Take();
    return effect;
}

class EngineLibrary : public ::testing::Test {
protected:
    TemporaryFolder folder;
    const std::string copyPath = folder.Write("copy.frag", kCopyShader);
    const Pixels picture = {kRed, kGreen, kBlue, kWhite};
};

TEST_F(EngineLibrary, WithItsOwnContextNeedsNothingFromTheHost) {
    const Library library(KELMO_PLUGIN_DIR "/TZOpenGLEffectMgr-mesa.so");
    NLEOpenGLEffectEngine* engine = nullptr;
    ASSERT_EQ(library.Create(&engine, 1), 0) << EngineLogLines::Take();
    EffectPointer effect = MakeEffect(*engine, copyPath);
    SetImage(effect, 0, picture, 2, 2);
    EXPECT_EQ(RenderPixels(effect), picture);
    effect.reset();
    library.Destroy(engine);
}

TEST_F(EngineLibrary, WithItsOwnContextGivesTheThreadItsContextBack) {
    const EglTestContext context;
    ASSERT_TRUE(context.IsValid());
    const Library library(KELMO_PLUGIN_DIR "/TZOpenGLEffectMgr-mesa.so");
    NLEOpenGLEffectEngine* engine = nullptr;
    ASSERT_EQ(library.Create(&engine, 1), 0) << EngineLogLines::Take();
    EXPECT_TRUE(context.IsCurrent());
    EffectPointer effect = MakeEffect(*engine, copyPath);
    SetImage(effect, 0, picture, 2, 2);
    EXPECT_EQ(RenderPixels(effect), picture);
    EXPECT_TRUE(context.IsCurrent());
    EXPECT_TRUE(effect->RunOnGLThread([&] { return !context.IsCurrent(); }));
    EXPECT_TRUE(context.IsCurrent());
    effect.reset();
    library.Destroy(engine);
    EXPECT_TRUE(context.IsCurrent());
}

TEST_F(EngineLibrary, OnTheHostsRoadWorksInTheHostsContext) {
    const EglTestContext context;
    ASSERT_TRUE(context.IsValid());
    const Library library(KELMO_PLUGIN_DIR "/TZOpenGLEffectMgr.so");
    NLEOpenGLEffectEngine* engine = nullptr;
    ASSERT_EQ(library.Create(&engine, 0), 0) << EngineLogLines::Take();
    EffectPointer effect = MakeEffect(*engine, copyPath);
    // A texture of the host's as input and as target.
    GLuint textures[2];
    glGenTextures(2, textures);
    for (const GLuint texture : textures) {
        glBindTexture(GL_TEXTURE_2D, texture);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 2, 2, 0, GL_BGRA, GL_UNSIGNED_BYTE,
                     texture == textures[0] ? picture.data() : nullptr);
    }
    FrameRecord frame;
    frame.tag = -1;
    frame.isCpu = 0;
    frame.texture = static_cast<int32_t>(textures[0]);
    frame.width = frame.height = 2;
    effect->SetInputTexture(0, frame, 2, 2, 8);
    FrameRecord target = frame;
    target.texture = static_cast<int32_t>(textures[1]);
    ASSERT_EQ(effect->Render(target, effect, 0), 0) << EngineLogLines::Take();
    Pixels got(4);
    glBindTexture(GL_TEXTURE_2D, textures[1]);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, got.data());
    EXPECT_EQ(got, picture);
    effect.reset();
    library.Destroy(engine);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    glDeleteTextures(2, textures);
}

TEST_F(EngineLibrary, OnTheHostsRoadRefusesToStartWithoutADevice) {
    const Library library(KELMO_PLUGIN_DIR "/TZOpenGLEffectMgr.so");
    NLEOpenGLEffectEngine* engine = nullptr;
    EngineLogLines::Take();
    EXPECT_NE(library.Create(&engine, 0), 0);
    EXPECT_EQ(engine, nullptr);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("no OpenGL context is current"));
    const EglTestContext context;
    EXPECT_NE(library.Create(&engine, 1), 0);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("TZOpenGLEffectMgr-mesa"));
    EXPECT_NE(library.Create(nullptr, 0), 0);
}

class EngineInHostContext : public ::testing::Test {
protected:
    EngineInHostContext() {
        EngineLogLines::Take();
        engine = MakeHostContextEngine(EngineLogLines::Callback);
        EXPECT_TRUE(engine) << EngineLogLines::Take();
    }

    TemporaryFolder folder;
    const std::string copyPath = folder.Write("copy.frag", kCopyShader);
    EglTestContext context;
    std::unique_ptr<EffectEngine> engine;
};

/// All state that a host might rely on, by glGet.
std::vector<GLint> HostState() {
    constexpr GLenum kIntegers[] = {GL_DRAW_FRAMEBUFFER_BINDING,
                                    GL_READ_FRAMEBUFFER_BINDING,
                                    GL_VERTEX_ARRAY_BINDING,
                                    GL_CURRENT_PROGRAM,
                                    GL_ARRAY_BUFFER_BINDING,
                                    GL_PIXEL_PACK_BUFFER_BINDING,
                                    GL_PIXEL_UNPACK_BUFFER_BINDING,
                                    GL_ACTIVE_TEXTURE,
                                    GL_VIEWPORT,
                                    GL_BLEND,
                                    GL_BLEND_SRC_RGB,
                                    GL_BLEND_DST_RGB,
                                    GL_BLEND_SRC_ALPHA,
                                    GL_BLEND_DST_ALPHA,
                                    GL_BLEND_EQUATION_RGB,
                                    GL_BLEND_EQUATION_ALPHA,
                                    GL_DEPTH_TEST,
                                    GL_DEPTH_FUNC,
                                    GL_DEPTH_WRITEMASK,
                                    GL_CULL_FACE,
                                    GL_CULL_FACE_MODE,
                                    GL_FRONT_FACE,
                                    GL_SCISSOR_TEST,
                                    GL_SCISSOR_BOX,
                                    GL_STENCIL_TEST,
                                    GL_DITHER,
                                    GL_MULTISAMPLE,
                                    GL_FRAMEBUFFER_SRGB,
                                    GL_RASTERIZER_DISCARD,
                                    GL_CLIP_DISTANCE0,
                                    GL_PRIMITIVE_RESTART,
                                    GL_COLOR_LOGIC_OP,
                                    GL_COLOR_WRITEMASK,
                                    GL_COLOR_CLEAR_VALUE,
                                    GL_DEPTH_CLEAR_VALUE,
                                    GL_DEPTH_RANGE,
                                    GL_UNPACK_ALIGNMENT,
                                    GL_UNPACK_ROW_LENGTH,
                                    GL_UNPACK_SKIP_ROWS,
                                    GL_PACK_ALIGNMENT,
                                    GL_PACK_ROW_LENGTH};
    std::vector<GLint> state;
    const auto add = [&](GLenum name) {
        GLint values[4] = {};
        glGetIntegerv(name, values);
        state.insert(state.end(), values, values + 4);
    };
    for (const GLenum name : kIntegers) add(name);
    GLint unit = 0;
    glGetIntegerv(GL_ACTIVE_TEXTURE, &unit);
    for (GLenum i = 0; i < 4; ++i) {
        glActiveTexture(GL_TEXTURE0 + i);
        for (const GLenum name :
             {GL_TEXTURE_BINDING_2D, GL_TEXTURE_BINDING_BUFFER, GL_SAMPLER_BINDING}) {
            add(name);
        }
    }
    glActiveTexture(static_cast<GLenum>(unit));
    return state;
}

/// Sets much that would spoil a pass of ours.
void SetAwkwardState() {
    GLuint texture, buffer, array, framebuffer, sampler;
    glGenTextures(1, &texture);
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, texture);
    glGenSamplers(1, &sampler);
    glBindSampler(0, sampler);
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, buffer);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer);
    glGenVertexArrays(1, &array);
    glBindVertexArray(array);
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    for (const GLenum name : {GL_BLEND, GL_DEPTH_TEST, GL_CULL_FACE, GL_SCISSOR_TEST,
                              GL_STENCIL_TEST, GL_FRAMEBUFFER_SRGB, GL_RASTERIZER_DISCARD,
                              GL_COLOR_LOGIC_OP, GL_PRIMITIVE_RESTART, GL_CLIP_DISTANCE0}) {
        glEnable(name);
    }
    glScissor(1, 1, 1, 1);
    glViewport(1, 2, 3, 4);
    glBlendFuncSeparate(GL_ZERO, GL_SRC_COLOR, GL_DST_ALPHA, GL_ZERO);
    glBlendEquation(GL_FUNC_REVERSE_SUBTRACT);
    glColorMask(GL_TRUE, GL_FALSE, GL_TRUE, GL_FALSE);
    glClearColor(1, 0, 1, 0);
    glDepthFunc(GL_NEVER);
    glDepthMask(GL_FALSE);
    glDepthRange(0, 0);
    glClearDepth(0);
    glCullFace(GL_FRONT_AND_BACK);
    glFrontFace(GL_CW);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 77);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 5);
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    glPixelStorei(GL_PACK_ROW_LENGTH, 99);
}

TEST_F(EngineInHostContext, TheHostsStateNeitherSpoilsThePictureNorIsSpoiltByIt) {
    SetAwkwardState();
    ASSERT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    const std::vector<GLint> before = HostState();
    const Pixels picture = {kRed, kGreen, kBlue, kWhite};
    EffectPointer effect = MakeEffect(*engine, copyPath);
    EXPECT_EQ(HostState(), before) << "after CreateProgram";
    effect->SetUniformArrayVec4("unused", nullptr, 3);
    SetImage(effect, 0, picture, 2, 2);
    EXPECT_EQ(HostState(), before) << "after an upload";
    effect->SetDepthTest(true);
    EXPECT_EQ(RenderPixels(effect), picture);
    EXPECT_EQ(HostState(), before) << "after a pass";
    EXPECT_EQ(PixelsOf(effect, effect->GetResultFrame()), picture);
    EXPECT_EQ(HostState(), before) << "after reading a texture";
    EXPECT_FALSE(effect->RunOnGLThread([]() -> bool {
        glEnable(GL_BLEND);
        glEnable(GL_CLIP_DISTANCE0);
        glUseProgram(0);
        glViewport(0, 0, 9, 9);
        glActiveTexture(GL_TEXTURE3);
        GLuint texture = 0;
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_2D, texture);
        throw std::runtime_error("a task that fails half way");
    }));
    EXPECT_EQ(HostState(), before) << "after a task";
    EXPECT_EQ(RenderPixels(effect), picture);
    effect.reset();
    EXPECT_EQ(HostState(), before) << "after the end of the effect";
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_F(EngineInHostContext, AnErrorOfTheHostIsNotTakenForOurs) {
    const EffectPointer effect = MakeEffect(*engine, copyPath);
    glEnable(0xDEAD);
    RenderInside(effect);
}

TEST_F(EngineInHostContext, WithoutACurrentContextOperationsFailClearly) {
    EffectPointer effect = MakeEffect(*engine, copyPath);
    context.Release();
    EngineLogLines::Take();
    FrameRecord target = FrameRecord::TargetLess(2, 2, 8);
    EXPECT_NE(effect->Render(target, effect, 0), 0);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("no OpenGL context is current"));
    EXPECT_NE(effect->Resize(3, 3, 12, effect), 0);
    EXPECT_NE(effect->CreateProgram(effect), 0);
    EXPECT_FALSE(effect->RunOnGLThread([] { return true; }));
    EXPECT_FALSE(effect->GetResultFrame().HasTexture());
    SetImage(effect, 0, {kRed}, 1, 1);
    EffectPointer another;
    engine->CreateEngineEffect(2, 2, 8, false, copyPath.c_str(), another, 0, "", {}, {});
    EXPECT_FALSE(another);
    effect.reset();  // its objects wait for the context
    context.MakeCurrent();
    EXPECT_TRUE(MakeEffect(*engine, copyPath));
}

TEST_F(EngineInHostContext, ObjectsOfAnEffectThatEndedWithoutAContextAreDeletedLater) {
    EffectPointer effect = MakeEffect(*engine, copyPath);
    const auto texture = static_cast<GLuint>(effect->GetResultFrame().texture);
    context.Release();
    effect.reset();
    context.MakeCurrent();
    EXPECT_TRUE(glIsTexture(texture));
    EffectPointer next = MakeEffect(*engine, copyPath);
    EXPECT_FALSE(glIsTexture(texture));
}

TEST_F(EngineInHostContext, EachContextHasItsOwnEffects) {
    const EffectPointer here = MakeEffect(*engine, copyPath);
    SetImage(here, 0, {kRed, kGreen, kBlue, kWhite}, 2, 2);
    for (int i = 0; i < 2; ++i) {
        const EglTestContext second;
        EngineLogLines::Take();
        FrameRecord target = FrameRecord::TargetLess(2, 2, 8);
        EXPECT_NE(here->Render(target, here, 0), 0);
        EXPECT_THAT(EngineLogLines::Take(), HasSubstr("another one than the effect was made in"));
        const EffectPointer there = MakeEffect(*engine, copyPath);
        SetImage(there, 0, {kWhite, kBlue, kGreen, kRed}, 2, 2);
        EXPECT_EQ(RenderPixels(there), (Pixels{kWhite, kBlue, kGreen, kRed}));
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    }
    context.MakeCurrent();
    EXPECT_EQ(RenderPixels(here), (Pixels{kRed, kGreen, kBlue, kWhite}));
}

TEST_F(EngineInHostContext, TwoContextsWorkOnTwoThreads) {
    const EffectPointer here = MakeEffect(*engine, copyPath);
    std::thread other([&] {
        const EglTestContext second;
        const EffectPointer there = MakeEffect(*engine, copyPath);
        for (int i = 0; i < 20; ++i) {
            SetImage(there, 0, {kWhite, kBlue, kGreen, kRed}, 2, 2);
            EXPECT_EQ(RenderPixels(there), (Pixels{kWhite, kBlue, kGreen, kRed}));
        }
    });
    for (int i = 0; i < 20; ++i) {
        SetImage(here, 0, {kRed, kGreen, kBlue, kWhite}, 2, 2);
        EXPECT_EQ(RenderPixels(here), (Pixels{kRed, kGreen, kBlue, kWhite}));
    }
    other.join();
}

TEST(EngineInAnEsContext, RefusesItWithAWord) {
    const EglTestContext context(EglTestContext::Api::kEs);
    if (!context.IsValid()) GTEST_SKIP() << "no OpenGL ES on this machine";
    EngineLogLines::Take();
    EXPECT_FALSE(MakeHostContextEngine(EngineLogLines::Callback));
    EXPECT_THAT(EngineLogLines::Take(),
                HasSubstr("OpenGL 3.3 is needed, the context has OpenGL ES"));
}

TEST_F(EngineInHostContext, AnEffectMayOutliveTheEngine) {
    const EffectPointer effect = MakeEffect(*engine, copyPath);
    engine.reset();
    const Pixels picture = {kRed, kGreen, kBlue, kWhite};
    SetImage(effect, 0, picture, 2, 2);
    EXPECT_EQ(RenderPixels(effect), picture);
}

}  // namespace
}  // namespace kelmo::test
