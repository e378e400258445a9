// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/shader/shader_program.h"

#include <algorithm>
#include <cstring>

#include "engine/shader/program_build.h"
#include "engine/shader/reserved_names.h"

namespace kelmo {
namespace {

enum class Base { Float, Int, Matrix };

/// The uniform types that can be set.
struct TypeRow {
    GLenum type;
    int words;
    Base base;
};
constexpr TypeRow kTypes[] = {
    {GL_FLOAT, 1, Base::Float},
    {GL_FLOAT_VEC2, 2, Base::Float},
    {GL_FLOAT_VEC3, 3, Base::Float},
    {GL_FLOAT_VEC4, 4, Base::Float},
    {GL_INT, 1, Base::Int},
    {GL_INT_VEC2, 2, Base::Int},
    {GL_INT_VEC3, 3, Base::Int},
    {GL_INT_VEC4, 4, Base::Int},
    {GL_UNSIGNED_INT, 1, Base::Int},
    {GL_UNSIGNED_INT_VEC2, 2, Base::Int},
    {GL_UNSIGNED_INT_VEC3, 3, Base::Int},
    {GL_UNSIGNED_INT_VEC4, 4, Base::Int},
    {GL_BOOL, 1, Base::Int},
    {GL_BOOL_VEC2, 2, Base::Int},
    {GL_BOOL_VEC3, 3, Base::Int},
    {GL_BOOL_VEC4, 4, Base::Int},
    {GL_FLOAT_MAT3, 9, Base::Matrix},
    {GL_FLOAT_MAT4, 16, Base::Matrix},
};

const TypeRow* RowOf(GLenum type) {
    const auto* row = std::find_if(std::begin(kTypes), std::end(kTypes),
                                   [type](const TypeRow& each) { return each.type == type; });
    return row == std::end(kTypes) ? nullptr : row;
}

/// Those that pictures and arrays are bound to.
bool IsSampler(GLenum type) {
    return type == GL_SAMPLER_2D || type == GL_SAMPLER_BUFFER;
}

bool IsUnsigned(GLenum type) {
    return type >= GL_UNSIGNED_INT_VEC2 ? type <= GL_UNSIGNED_INT_VEC4 : type == GL_UNSIGNED_INT;
}

/// Cut towards zero and kept in range; not-a-number is 0.
int32_t ToInt(float value) {
    if (!(value > -2147483648.0f)) return value <= -2147483648.0f ? INT32_MIN : 0;
    return value >= 2147483648.0f ? INT32_MAX : static_cast<int32_t>(value);
}

}  // namespace

std::shared_ptr<ShaderProgram> ShaderProgram::Build(GlDevice& device, const ShaderSource& fragment,
                                                    const ShaderSource& vertex, int audioBuffers,
                                                    std::string& error) {
    std::shared_ptr<ShaderProgram> built(new ShaderProgram);
    built->program = LinkShaders(device, fragment, vertex, audioBuffers, error);
    if (!built->program || !built->Introspect(device, error)) return nullptr;
    return built;
}

std::shared_ptr<ShaderProgram> ShaderProgram::Obtain(GlDevice& device, const ShaderSource& fragment,
                                                     const ShaderSource& vertex, int audioBuffers,
                                                     std::string& error) {
    const std::string key =
        std::to_string(audioBuffers) + '\n' + fragment.text + '\0' + vertex.text;
    auto& known = device.Programs();
    const auto found = known.find(key);
    if (found != known.end()) {
        if (auto program = found->second.lock()) return program;
    }
    auto program = Build(device, fragment, vertex, audioBuffers, error);
    std::erase_if(known, [](const auto& entry) { return entry.second.expired(); });
    if (program) known[key] = program;
    return program;
}

bool ShaderProgram::Introspect(GlDevice& device, std::string& error) {
    GLint count = 0;
    glGetProgramiv(program.Id(), GL_ACTIVE_UNIFORMS, &count);
    glUseProgram(program.Id());
    char name[256];
    for (GLint i = 0; i < count; ++i) {
        GLint size = 0;
        GLenum type = 0;
        glGetActiveUniform(program.Id(), static_cast<GLuint>(i), sizeof name, nullptr, &size, &type,
                           name);
        const GLint location = glGetUniformLocation(program.Id(), name);
        if (location < 0) continue;  // built in
        const std::string plain(PlainUniformName(name));
        if (size > 1 || plain.ends_with("[0]")) {
            error = std::string("uniform array '") + name +
                    "': arrays are declared as samplerBuffer and read with ArrayAt";
            return false;
        }
        if (!RowOf(type) && !IsSampler(type)) {
            error = "uniform '" + plain + "' has a type that nothing can be given to: use " +
                    "numbers, vectors, mat3, mat4, sampler2D or samplerBuffer";
            return false;
        }
        AddUniform(plain, type, location);
    }
    if (static_cast<int>(samplers.size()) > device.Limits().textureUnits) {
        error = "the program reads " + std::to_string(samplers.size()) +
                " pictures and arrays; this device has " +
                std::to_string(device.Limits().textureUnits) + " units";
        return false;
    }
    GLint attributeCount = 0;
    glGetProgramiv(program.Id(), GL_ACTIVE_ATTRIBUTES, &attributeCount);
    for (GLint i = 0; i < attributeCount; ++i) {
        GLint size = 0;
        GLenum type = 0;
        glGetActiveAttrib(program.Id(), static_cast<GLuint>(i), sizeof name, nullptr, &size, &type,
                          name);
        const GLint location = glGetAttribLocation(program.Id(), name);
        if (location >= 0) attributes.push_back({name, location});
    }
    glUseProgram(0);
    return true;
}

void ShaderProgram::AddUniform(const std::string& name, GLenum type, GLint location) {
    const TypeRow* row = RowOf(type);
    if (!row) {
        // Each sampler has its own unit, because samplers of different kinds must not meet on one.
        const int unit = static_cast<int>(samplers.size());
        glUniform1i(location, unit);
        samplers.push_back({name, type, unit});
        return;
    }
    Uniform uniform;
    uniform.name = name;
    uniform.location = location;
    uniform.type = type;
    uniform.words = row->words;
    if (row->base == Base::Int) {
        GLint values[16] = {};
        glGetUniformiv(program.Id(), location, values);
        std::memcpy(uniform.initial, values, sizeof uniform.initial);
    } else {
        GLfloat values[16] = {};
        glGetUniformfv(program.Id(), location, values);
        std::memcpy(uniform.initial, values, sizeof uniform.initial);
    }
    std::memcpy(uniform.uploaded, uniform.initial, sizeof uniform.uploaded);
    uniforms.push_back(uniform);
}

bool ShaderProgram::Accepts(int index, ValueKind kind) const {
    const Uniform& uniform = uniforms[static_cast<size_t>(index)];
    const bool isMatrix = IsMatrix(kind);
    const bool wantsMatrix = RowOf(uniform.type)->base == Base::Matrix;
    return isMatrix == wantsMatrix && (!isMatrix || WordsOf(kind) == uniform.words);
}

void ShaderProgram::Upload(int index, const UniformValue& value) {
    if (value.kind == ValueKind::Int) {
        UploadInt(index, value.integer);
    } else {
        UploadFloats(index, value.floats, WordsOf(value.kind));
    }
}

void ShaderProgram::UploadFloats(int index, const float* values, int count) {
    Uniform& uniform = uniforms[static_cast<size_t>(index)];
    uint32_t words[16] = {};
    const auto used = static_cast<size_t>(std::min(count, uniform.words));
    if (RowOf(uniform.type)->base == Base::Int) {
        for (size_t i = 0; i < used; ++i) words[i] = static_cast<uint32_t>(ToInt(values[i]));
    } else {
        std::memcpy(words, values, used * sizeof(float));
    }
    UploadWords(uniform, words);
}

void ShaderProgram::UploadInt(int index, int32_t value) {
    Uniform& uniform = uniforms[static_cast<size_t>(index)];
    uint32_t words[16] = {};
    if (RowOf(uniform.type)->base == Base::Int) {
        words[0] = static_cast<uint32_t>(value);
    } else {
        const auto converted = static_cast<float>(value);
        std::memcpy(words, &converted, sizeof converted);
    }
    UploadWords(uniform, words);
}

void ShaderProgram::Reset(int index) {
    Uniform& uniform = uniforms[static_cast<size_t>(index)];
    uint32_t words[16];
    std::memcpy(words, uniform.initial, sizeof words);
    UploadWords(uniform, words);
}

void ShaderProgram::UploadWords(Uniform& uniform, const uint32_t* words) {
    const size_t bytes = static_cast<size_t>(uniform.words) * sizeof(uint32_t);
    if (std::memcmp(uniform.uploaded, words, bytes) == 0) return;
    std::memcpy(uniform.uploaded, words, bytes);
    const auto* floats = reinterpret_cast<const GLfloat*>(uniform.uploaded);
    const auto* integers = reinterpret_cast<const GLint*>(uniform.uploaded);
    const bool isInt = RowOf(uniform.type)->base == Base::Int;
    if (isInt && IsUnsigned(uniform.type)) {
        switch (uniform.words) {
            case 1:
                glUniform1uiv(uniform.location, 1, uniform.uploaded);
                break;
            case 2:
                glUniform2uiv(uniform.location, 1, uniform.uploaded);
                break;
            case 3:
                glUniform3uiv(uniform.location, 1, uniform.uploaded);
                break;
            default:
                glUniform4uiv(uniform.location, 1, uniform.uploaded);
                break;
        }
        return;
    }
    switch (uniform.words) {
        case 1:
            isInt ? glUniform1iv(uniform.location, 1, integers)
                  : glUniform1fv(uniform.location, 1, floats);
            break;
        case 2:
            isInt ? glUniform2iv(uniform.location, 1, integers)
                  : glUniform2fv(uniform.location, 1, floats);
            break;
        case 3:
            isInt ? glUniform3iv(uniform.location, 1, integers)
                  : glUniform3fv(uniform.location, 1, floats);
            break;
        case 4:
            isInt ? glUniform4iv(uniform.location, 1, integers)
                  : glUniform4fv(uniform.location, 1, floats);
            break;
        case 9:
            glUniformMatrix3fv(uniform.location, 1, GL_FALSE, floats);
            break;
        default:
            glUniformMatrix4fv(uniform.location, 1, GL_FALSE, floats);
            break;
    }
}

}  // namespace kelmo
