// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/shader/program_build.h"

#include "engine/shader/shader_prelude.h"

namespace kelmo {
namespace {

/// A shader object for the time of a link.
struct Shader {
    explicit Shader(GLenum kind) : id(glCreateShader(kind)) {}
    ~Shader() { glDeleteShader(id); }
    Shader(const Shader&) = delete;
    const GLuint id;
};

std::string InfoLog(GLuint id, bool isProgram) {
    GLint length = 0;
    isProgram ? glGetProgramiv(id, GL_INFO_LOG_LENGTH, &length)
              : glGetShaderiv(id, GL_INFO_LOG_LENGTH, &length);
    std::string log(static_cast<size_t>(length > 0 ? length : 0), '\0');
    GLsizei written = 0;
    if (length > 0) {
        isProgram ? glGetProgramInfoLog(id, length, &written, log.data())
                  : glGetShaderInfoLog(id, length, &written, log.data());
    }
    log.resize(static_cast<size_t>(written));
    return log;
}

bool Compile(const Shader& shader, const std::string& prelude, const std::string& text) {
    const char* parts[] = {prelude.c_str(), text.c_str()};
    glShaderSource(shader.id, 2, parts, nullptr);
    glCompileShader(shader.id);
    GLint compiled = GL_FALSE;
    glGetShaderiv(shader.id, GL_COMPILE_STATUS, &compiled);
    return compiled == GL_TRUE;
}

/// Drivers differ in whether the line behind "#line 100" is 100 or 101: what to add to their
/// numbers, found with a shader that is wrong in line 100.
int LineOffset() {
    const Shader probe(GL_FRAGMENT_SHADER);
    Compile(probe, "#version 330 core\n", "#line 100100\nwrong\n");
    const std::string log = MapCompileLog(InfoLog(probe.id, false), {"probe"}, 0);
    if (log.find("probe:101:") != std::string::npos) return -1;
    return log.find("probe:99:") != std::string::npos ? 1 : 0;
}

bool CompileAuthor(const Shader& shader, const std::string& prelude, const ShaderSource& source,
                   std::string& error) {
    if (Compile(shader, prelude, source.text)) return true;
    error = MapCompileLog(InfoLog(shader.id, false), source.files, LineOffset());
    return false;
}

}  // namespace

GlObject LinkShaders(GlDevice& device, const ShaderSource& fragment, const ShaderSource& vertex,
                     int audioBuffers, std::string& error) {
    const Shader vertexShader(GL_VERTEX_SHADER);
    const Shader fragmentShader(GL_FRAGMENT_SHADER);
    if (!CompileAuthor(vertexShader, VertexPrelude(vertex.text, audioBuffers), vertex, error) ||
        !CompileAuthor(fragmentShader, FragmentPrelude(fragment.text, audioBuffers), fragment,
                       error)) {
        return {};
    }
    GlObject program(device, GlKind::Program);
    glAttachShader(program.Id(), vertexShader.id);
    glAttachShader(program.Id(), fragmentShader.id);
    glBindAttribLocation(program.Id(), 0, "position");
    glBindAttribLocation(program.Id(), 1, "texcoord");
    glLinkProgram(program.Id());
    glDetachShader(program.Id(), vertexShader.id);
    glDetachShader(program.Id(), fragmentShader.id);
    GLint linked = GL_FALSE;
    glGetProgramiv(program.Id(), GL_LINK_STATUS, &linked);
    if (linked != GL_TRUE) {
        const std::string file = fragment.files.empty() ? "shader" : fragment.files.front();
        error = file + ": does not link: " + InfoLog(program.Id(), true);
        return {};
    }
    return program;
}

}  // namespace kelmo
