// SPDX-License-Identifier: GPL-3.0-or-later
#include "beauty/retoucher.h"

#include <epoxy/gl.h>

#include <cstdio>
#include <utility>

#include "beauty/gl_state_scope.h"
#include "beauty/retouch_shader.h"

namespace kelmo::beauty {
namespace {

GLuint Compile(GLenum kind, const char* source) {
    const GLuint shader = glCreateShader(kind);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLint good = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &good);
    if (good) return shader;
    char text[1024] = "";
    glGetShaderInfoLog(shader, sizeof text, nullptr, text);
    std::fprintf(stderr, "st_mobile: %s\n", text);
    glDeleteShader(shader);
    return 0;
}

GLuint Link(const char* vertexSource, const char* fragmentSource) {
    const GLuint vertex = Compile(GL_VERTEX_SHADER, vertexSource);
    const GLuint fragment = Compile(GL_FRAGMENT_SHADER, fragmentSource);
    GLuint program = 0;
    if (vertex && fragment) {
        program = glCreateProgram();
        glAttachShader(program, vertex);
        glAttachShader(program, fragment);
        glLinkProgram(program);
        GLint good = 0;
        glGetProgramiv(program, GL_LINK_STATUS, &good);
        if (!good) {
            glDeleteProgram(program);
            program = 0;
        }
    }
    glDeleteShader(vertex);
    glDeleteShader(fragment);
    return program;
}

struct Upload {
    GLint inside;
    GLenum layout;
    GLenum type;
};

void Send(GLenum unit, GLuint texture, const cv::Mat& picture, const Upload& how) {
    glActiveTexture(GL_TEXTURE0 + unit);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexImage2D(GL_TEXTURE_2D, 0, how.inside, picture.cols, picture.rows, 0, how.layout, how.type,
                 picture.data);
}

/// What goes to the shader as it is.
constexpr std::pair<const char*, Beauty> kUniforms[] = {
    {"uSmooth", kSmooth},           {"uWhiten", kWhiten},         {"uRedden", kRedden},
    {"uSharpen", kSharpen},         {"uContrast", kContrast},     {"uSaturation", kSaturation},
    {"uBrightEyes", kBrightEyes},   {"uWhiteTeeth", kWhiteTeeth}, {"uDarkCircles", kDarkCircles},
    {"uFoldsOut", kNasolabialFolds}};

}  // namespace

bool Retoucher::Prepare() {
    if (program) return true;
    if (epoxy_gl_version() < 33 || !epoxy_is_desktop_gl()) return false;
    program = Link(kQuadVertexShader, kRetouchShader);
    if (!program) return false;
    glGenVertexArrays(1, &vertexArray);
    glGenFramebuffers(1, &framebuffer);
    glGenTextures(3, textures);
    return true;
}

void Retoucher::Release() {
    if (!program) return;
    glDeleteProgram(std::exchange(program, 0));
    glDeleteVertexArrays(1, &vertexArray);
    glDeleteFramebuffers(1, &framebuffer);
    glDeleteTextures(3, textures);
}

void Retoucher::SendStrengths(bool faces, bool moves) const {
    const auto place = [this](const char* name) { return glGetUniformLocation(program, name); };
    glUniform1i(place("uPicture"), 0);
    glUniform1i(place("uField"), 1);
    glUniform1i(place("uParts"), 2);
    glUniform1i(place("uFolds"), 3);
    glUniform1i(place("uMoves"), moves ? 1 : 0);
    glUniform1i(place("uFaces"), faces ? 1 : 0);
    glUniform1f(place("uFaceWidth"), masks.FaceWidth());
    for (const auto& [name, type] : kUniforms) glUniform1f(place(name), strengths.Of(type));
}

bool Retoucher::Draw(const FaceSdkResult& faces, const FaceSdkTexture& input,
                     const FaceSdkTexture& output) {
    const GLStateScope scope;
    if (!Prepare()) return false;
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D,
                           static_cast<GLuint>(output.id), 0);
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) return false;
    glViewport(0, 0, output.width, output.height);
    glUseProgram(program);
    glBindVertexArray(vertexArray);
    const bool asked = faces.faceCount > 0 && !strengths.AllZero();
    const bool moves = asked && warp.Make(faces, strengths);
    if (moves) Send(1, textures[0], warp.Field(), {GL_RG32F, GL_RG, GL_FLOAT});
    if (asked) {
        masks.Make(faces);
        Send(2, textures[1], masks.Parts(), {GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE});
        Send(3, textures[2], masks.Folds(), {GL_R8, GL_RED, GL_UNSIGNED_BYTE});
    }
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(input.id));
    SendStrengths(asked, moves);
    glDrawArrays(GL_TRIANGLES, 0, 3);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, 0, 0);
    return true;
}

}  // namespace kelmo::beauty
