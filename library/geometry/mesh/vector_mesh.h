// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

namespace kelmo {

/// A triangle soup with six vertex attributes, three vertices a triangle, in the layout that the
/// engine draws. The mesh owns the arrays; whoever hands their pointers to the engine keeps the
/// mesh in place until the next `NewDataBuffer`, which makes them invalid. One thread at a time.
class VectorMesh {
public:
    static constexpr int32_t kPositionComponents = 4;
    static constexpr int32_t kTexcoordComponents = 3;
    static constexpr int32_t kNormalComponents = 3;
    static constexpr int32_t kTangentComponents = 3;
    static constexpr int32_t kMeshInfoComponents = 4;
    static constexpr int32_t kCenterComponents = 4;
    static constexpr int32_t kElementComponents = 2;

    /// More triangles are refused like a failed allocation: the arrays of these take 4.5 GB.
    static constexpr int32_t kMaxTriangles = 20'000'000;

    VectorMesh() = default;
    virtual ~VectorMesh() = default;
    VectorMesh(const VectorMesh&) = delete;
    VectorMesh& operator=(const VectorMesh&) = delete;

    /// Frees the old arrays and allocates those for `count` triangles; a failure frees all and
    /// leaves `triangleCount` at 0. A count of 0 or less changes nothing.
    void NewDataBuffer(int64_t count);

    /// All attribute arrays exist, and at least one triangle.
    bool IsValid() const;

    /// Makes the list of lines, three a triangle, when it does not exist. A failed allocation frees
    /// the whole mesh.
    void BuildElements();

    std::unique_ptr<float[]> position;  ///< x, y, z, height sample; normalised frame space
    std::unique_ptr<float[]> texcoord;  ///< u, v, kind: 0 face, 1 wall, 2 bevel, 1000 decoration
    std::unique_ptr<float[]> normals;   ///< outwards; averages, not of length 1
    std::unique_ptr<float[]> tangents;  ///< along u; decoration: its colour, 0..1
    std::unique_ptr<float[]> meshInfo;  ///< zero
    std::unique_ptr<float[]> centers;   ///< centre of the group x, y, z, and its number
    std::unique_ptr<uint32_t[]> elements;
    int32_t triangleCount = 0;

private:
    void Free();

    int64_t capacity = 0;  // triangles that the arrays hold
};

}  // namespace kelmo
