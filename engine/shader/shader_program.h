// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/device/gl_device.h"
#include "engine/effect/uniform_values.h"
#include "engine/shader/shader_source.h"

namespace kelmo {

/// A linked program and what it asks for.
///
/// Shared by all effects whose sources are equal. It remembers the values that it holds, so that an
/// upload happens only when a value differs, whichever effect set the last one. Used inside a
/// scope of the device.
class ShaderProgram {
public:
    /// A uniform that is no sampler.
    struct Uniform {
        std::string name;
        GLint location = -1;
        GLenum type = GL_FLOAT;
        int words = 1;            ///< 32-bit words of the value
        uint32_t initial[16]{};   ///< what the shader itself starts it with
        uint32_t uploaded[16]{};  ///< what the program holds now
    };
    /// Sampler `name` reads texture unit `unit`, for the life of the program.
    struct Sampler {
        std::string name;
        GLenum type = GL_SAMPLER_2D;
        int unit = 0;
    };
    struct Attribute {
        std::string name;
        GLint location = 0;
    };

    /// Compiles and links. Null on failure, with `error` naming the author's files and lines.
    static std::shared_ptr<ShaderProgram> Build(GlDevice& device, const ShaderSource& fragment,
                                                const ShaderSource& vertex, int audioBuffers,
                                                std::string& error);
    /// As Build, but gives the program of equal sources if there is one.
    static std::shared_ptr<ShaderProgram> Obtain(GlDevice& device, const ShaderSource& fragment,
                                                 const ShaderSource& vertex, int audioBuffers,
                                                 std::string& error);

    GLuint Id() const { return program.Id(); }
    const std::vector<Uniform>& Uniforms() const { return uniforms; }
    const std::vector<Sampler>& Samplers() const { return samplers; }
    const std::vector<Attribute>& Attributes() const { return attributes; }

    /// Whether a value of `kind` can be given to uniform `index`: matrices want the same size,
    /// everything else is converted.
    bool Accepts(int index, ValueKind kind) const;
    /// Gives the uniform the value; the program is current. Integers become floats and back
    /// (cut towards zero), missing components are 0.
    void Upload(int index, const UniformValue& value);
    void UploadFloats(int index, const float* values, int count);
    void UploadInt(int index, int32_t value);
    /// Gives the uniform back what the shader starts it with.
    void Reset(int index);

private:
    ShaderProgram() = default;

    bool Introspect(GlDevice& device, std::string& error);
    void AddUniform(const std::string& name, GLenum type, GLint location);
    void UploadWords(Uniform& uniform, const uint32_t* words);

    GlObject program;
    std::vector<Uniform> uniforms;
    std::vector<Sampler> samplers;
    std::vector<Attribute> attributes;
};

}  // namespace kelmo
