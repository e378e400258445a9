// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "engine/device/gl_device.h"
#include "engine/effect/name_table.h"
#include "engine/shader/shader_program.h"

namespace kelmo {

/// Vertex attributes, index list and instance arrays of an effect.
///
/// Attribute data is borrowed: the next pass uploads it, at vertex count x components words, and
/// the pointer is not looked at again. Later passes draw what was uploaded, and never more
/// vertices or instances than that.
class Geometry {
public:
    void SetVertexCount(int32_t count) { vertexCount = count > 0 ? count : 0; }
    /// Until it is called, there are as many as the instance arrays have.
    void SetInstanceCount(int32_t count) { instanceCount = count > 0 ? count : 0; }
    void SetDrawType(int32_t type) { drawType = type; }
    void SetAttribute(const char* name, int32_t components, const void* data, bool keep,
                      bool indexList);
    /// Copies one element of `components` floats per instance; null `data` stands for zeros.
    void SetInstances(const char* name, int32_t components, const float* data, int32_t count);
    /// Brings what was handed over since the last pass to buffers. Inside a scope.
    void Upload(GlDevice& device);
    /// Forgets borrowed pointers, uploaded or not.
    void DropBorrowed();
    /// Draws with `program`, which is current. False, after a log line, when it cannot.
    bool Draw(GlDevice& device, const ShaderProgram& program);
    /// True when a pass without attributes draws the quad over the whole frame.
    bool IsQuad() const { return !hasAttributes; }
    /// True when a pass may draw its vertices more than once.
    bool IsInstanced() const;

private:
    struct Stream {
        int components = 4;
        bool perInstance = false;
        bool keep = false;
        bool changed = false;  ///< instance data that is not uploaded yet
        const void* borrowed = nullptr;
        std::vector<float> instances;
        int uploaded = 0;  ///< elements in the buffer
        GlObject buffer;
    };
    struct Counts {
        int vertices;
        int instances;
    };

    Stream& Find(const char* name);
    void UploadIndices(GlDevice& device);
    Counts BindStreams(const GlDevice& device, const ShaderProgram& program);
    static void UnbindStreams(const ShaderProgram& program);
    bool DrawLines(GlDevice& device, const Counts& counts);

    NameTable names;
    std::vector<Stream> streams;
    bool hasAttributes = false;
    int vertexCount = 0;
    int instanceCount = -1;
    int drawType = 1;
    const uint32_t* borrowedIndices = nullptr;
    int indexComponents = 2;
    bool keepIndices = false;
    int indexCount = 0;
    uint32_t largestIndex = 0;
    GlObject indexBuffer;
};

}  // namespace kelmo
