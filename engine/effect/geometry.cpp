// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect/geometry.h"

#include <algorithm>
#include <climits>

#include "contract/engine.h"

namespace kelmo {
namespace {

/// Corners of the built-in quad's strip.
constexpr int kQuadVertices = 4;

void UploadBuffer(GLenum target, const GlObject& buffer, size_t bytes, const void* data,
                  bool keep) {
    glBindBuffer(target, buffer.Id());
    glBufferData(target, static_cast<GLsizeiptr>(bytes), data,
                 keep ? GL_STATIC_DRAW : GL_STREAM_DRAW);
}

/// Points an attribute at the built-in quad, if it is one of the quad's.
bool BindQuad(const GlDevice& device, const ShaderProgram::Attribute& attribute) {
    const bool isPosition = attribute.name == "position";
    if (!isPosition && attribute.name != "texcoord") return false;
    const auto location = static_cast<GLuint>(attribute.location);
    const size_t offset = isPosition ? 0 : 4 * sizeof(float);
    glBindBuffer(GL_ARRAY_BUFFER, device.Commons().quadBuffer.Id());
    glVertexAttribPointer(location, isPosition ? 4 : 3, GL_FLOAT, GL_FALSE, kQuadStride,
                          reinterpret_cast<const void*>(offset));
    glEnableVertexAttribArray(location);
    return true;
}

size_t WordBytes(int count, int components) {
    return static_cast<size_t>(count) * static_cast<size_t>(components) * sizeof(float);
}

}  // namespace

Geometry::Stream& Geometry::Find(const char* name) {
    const auto index = static_cast<size_t>(names.FindOrAdd(name));
    if (index == streams.size()) streams.emplace_back();
    return streams[index];
}

void Geometry::SetAttribute(const char* name, int32_t components, const void* data, bool keep,
                            bool indexList) {
    if (!name || components < 1 || components > 4) return;
    if (indexList) {
        borrowedIndices = static_cast<const uint32_t*>(data);
        indexComponents = components;
        keepIndices = keep;
        if (!data) indexCount = 0;
        return;
    }
    Stream& stream = Find(name);
    stream.components = components;
    stream.perInstance = false;
    stream.keep = keep;
    stream.borrowed = data;
    if (!data) stream.uploaded = 0;
    hasAttributes = true;
}

void Geometry::SetInstances(const char* name, int32_t components, const float* data,
                            int32_t count) {
    if (!name) return;
    Stream& stream = Find(name);
    stream.components = components;
    stream.perInstance = true;
    stream.changed = true;
    const size_t floats = static_cast<size_t>(std::max(count, 0)) * static_cast<size_t>(components);
    if (data) {
        stream.instances.assign(data, data + floats);
    } else {
        stream.instances.assign(floats, 0.0f);
    }
}

bool Geometry::IsInstanced() const {
    return instanceCount > 1 || std::any_of(streams.begin(), streams.end(),
                                            [](const Stream& each) { return each.perInstance; });
}

void Geometry::Upload(GlDevice& device) {
    for (Stream& stream : streams) {
        const void* data = stream.perInstance ? stream.instances.data() : stream.borrowed;
        if (stream.perInstance ? !stream.changed : !data) continue;
        const int count = stream.perInstance
                              ? static_cast<int>(stream.instances.size()) / stream.components
                              : vertexCount;
        if (!stream.buffer) stream.buffer = GlObject(device, GlKind::Buffer);
        UploadBuffer(GL_ARRAY_BUFFER, stream.buffer, WordBytes(count, stream.components), data,
                     stream.keep);
        stream.uploaded = count;
        stream.changed = false;
        stream.borrowed = nullptr;
    }
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    UploadIndices(device);
}

void Geometry::UploadIndices(GlDevice& device) {
    if (!borrowedIndices) return;
    indexCount = vertexCount * indexComponents;
    largestIndex =
        indexCount > 0 ? *std::max_element(borrowedIndices, borrowedIndices + indexCount) : 0;
    if (!indexBuffer) indexBuffer = GlObject(device, GlKind::Buffer);
    // Not bound as an index buffer here: that binding belongs to whatever vertex array is current.
    UploadBuffer(GL_ARRAY_BUFFER, indexBuffer, WordBytes(vertexCount, indexComponents),
                 borrowedIndices, keepIndices);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    borrowedIndices = nullptr;
}

void Geometry::DropBorrowed() {
    borrowedIndices = nullptr;
    for (Stream& stream : streams) stream.borrowed = nullptr;
}

Geometry::Counts Geometry::BindStreams(const GlDevice& device, const ShaderProgram& program) {
    int vertices = hasAttributes ? vertexCount : kQuadVertices;
    int shortest = INT_MAX;
    for (const ShaderProgram::Attribute& attribute : program.Attributes()) {
        const auto location = static_cast<GLuint>(attribute.location);
        if (!hasAttributes && BindQuad(device, attribute)) continue;
        const int index = names.Find(attribute.name.c_str());
        if (index < 0) {
            glVertexAttrib4f(location, 0, 0, 0, 1);
            continue;
        }
        const Stream& stream = streams[static_cast<size_t>(index)];
        if (stream.perInstance) {
            shortest = std::min(shortest, stream.uploaded);
        } else {
            vertices = std::min(vertices, stream.uploaded);
        }
        if (!stream.buffer) continue;
        glBindBuffer(GL_ARRAY_BUFFER, stream.buffer.Id());
        glVertexAttribPointer(location, stream.components, GL_FLOAT, GL_FALSE, 0, nullptr);
        glVertexAttribDivisor(location, stream.perInstance ? 1 : 0);
        glEnableVertexAttribArray(location);
    }
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    const int wanted = instanceCount >= 0 ? instanceCount : (shortest == INT_MAX ? 1 : shortest);
    return {vertices, std::min(wanted, shortest)};
}

void Geometry::UnbindStreams(const ShaderProgram& program) {
    for (const ShaderProgram::Attribute& attribute : program.Attributes()) {
        const auto location = static_cast<GLuint>(attribute.location);
        glDisableVertexAttribArray(location);
        glVertexAttribDivisor(location, 0);
    }
}

bool Geometry::DrawLines(GlDevice& device, const Counts& counts) {
    if (!indexBuffer || indexCount == 0) {
        device.Log().Error("engine: indexed drawing without an index list");
        return false;
    }
    if (largestIndex >= static_cast<uint32_t>(counts.vertices)) {
        device.Log().Error("engine: the index list names vertex %u, there are %d", largestIndex,
                           counts.vertices);
        return false;
    }
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indexBuffer.Id());
    glDrawElementsInstanced(GL_LINES, indexCount, GL_UNSIGNED_INT, nullptr, counts.instances);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    return true;
}

bool Geometry::Draw(GlDevice& device, const ShaderProgram& program) {
    glBindVertexArray(device.Commons().vertexArray.Id());
    const Counts counts = BindStreams(device, program);
    bool drawn = true;
    if (counts.vertices > 0 && counts.instances > 0) {
        if (!hasAttributes) {
            glDrawArraysInstanced(GL_TRIANGLE_STRIP, 0, counts.vertices, counts.instances);
        } else if (drawType == kDrawIndexedLines) {
            drawn = DrawLines(device, counts);
        } else {
            glDrawArraysInstanced(GL_TRIANGLES, 0, counts.vertices, counts.instances);
        }
    }
    UnbindStreams(program);
    glBindVertexArray(0);
    return drawn;
}

}  // namespace kelmo
