// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/filter_pass.h"
#include "contract/param_value.h"

/// What is known about a filter before any effect of it exists.
namespace kelmo {

/// How a host shows a parameter. Every other text of a description is kUiPlain.
enum ParamUiType : int32_t {
    kUiPlain = 0,
    kUiColor = 1,
    kUiCheckBox = 2,
    kUi9Palaces = 3,
    kUiNoShow = 9,
    kUiListMask = 13,
    kUiGradientColor = 14,
    kUiListMosaic = 21,
    kUiColorStart = 22,
    kUiColorEnd = 23,
    kUiMult100 = 25,
};

/// "Color", "CheckBox", ... of a description; exact and case-sensitive, 0 for anything else.
int32_t UiTypeOf(std::string_view text);
/// "float", "double", "int", "point", "string", "pointer" as a ParamType; kParamNone for the rest.
int32_t ParamTypeOf(std::string_view text);

/// Longest texts in bytes, set by the fixed buffers that they are copied into.
inline constexpr std::size_t kMaxGuidLength = 127;
inline constexpr std::size_t kMaxNameLength = 127;
/// Longest path of a file, as long as the systems take one.
inline constexpr std::size_t kMaxPathLength = 4095;
inline constexpr std::size_t kMaxParamNameLength = 37;

/// One parameter of a filter. A plain record: whoever shares one between threads guards it.
/// Descriptions keep the pristine one, every effect works on its own clones.
struct NLEFilterParams {
    /// Display name.
    std::string alias;
    /// Key for host and effects, and the name of the shader's uniform. Up to 37 bytes.
    std::string name;
    /// ParamType.
    int32_t type = kParamNone;
    /// ParamUiType.
    int32_t uiType = kUiPlain;
    NLEParamValue minValue;
    NLEParamValue maxValue;
    NLEParamValue defaultValue;
    /// Current value; written by SetValue.
    NLEParamValue value;

    /// Stores the current value. A parameter of type text loses the first "file:/" of the text,
    /// wherever it stands, in `value.data`; `value.text` keeps what was given.
    void SetValue(const NLEParamValue& newValue);
    NLEParamValue ParamValue() const { return value; }
    void ParamLimits(NLEParamValue& minimum, NLEParamValue& maximum) const;
};

/// A new parameter with the same field values.
std::shared_ptr<NLEFilterParams> CloneParam(const NLEFilterParams& param);

/// One filter. Shared by the catalogue and every effect built from it.
///
/// Thread rule: scalars and texts are written while loading, before the description is shared.
/// `textures` and `params` are guarded by `lock`, which the four operations below take; it is never
/// held across a call out of this file. The maps are public for reading; write them through the
/// operations alone, which keep the index beside them.
class NLEFilterInfo {
public:
    NLEFilterInfo() = default;
    NLEFilterInfo(const NLEFilterInfo&) = delete;
    NLEFilterInfo& operator=(const NLEFilterInfo&) = delete;

    /// Files, each with `dataPath` in front. The OpenGL one is the fragment shader.
    std::string openclPath;
    std::string openglPath;
    std::string vertexPath;
    /// Groups of alternative sources that complete the shaders, each file with its path.
    std::vector<std::vector<std::string>> fragmentExterns;
    std::vector<std::vector<std::string>> vertexExterns;
    std::string entry = "MAIN";
    /// Passes that are drawn before the OpenGL source, and what that reads; mostly none.
    std::vector<FilterPass> passes;
    std::vector<PassInput> ownReads;
    /// Primary key of the catalogue.
    std::string guid;
    /// Display name.
    std::string name;
    /// The host's resource folder, written when the filter is published.
    std::string resourcePath;
    /// Class keys of the effect registry.
    std::string typeName;
    std::string subGuid;
    const char* textureKeyPrefix = "Texture[";
    /// 0 or 1: the file above is given. A description without OpenGL source is never built.
    int32_t hasOpencl = 0;
    int32_t hasAudio = 0;
    int32_t hasOpengl = 0;
    int32_t hasVertex = 0;
    /// 1: works on two inputs.
    int32_t transition = 0;
    int32_t function = 0;
    int32_t innerRoi = 0;
    int32_t ignoreDefault = 0;
    /// Set by the reader, not by AddTexture and AddParam.
    int32_t textureCount = 0;
    int32_t paramCount = 0;
    /// Goes to the engine unread.
    int32_t encrypt = 0;
    int32_t dynamic = 0;
    int32_t blankFrameRender = 0;
    mutable std::mutex lock;
    /// "Texture[0]" -> path text.
    std::map<std::string, std::string> textures;
    /// "Param[0]" -> parameter.
    std::map<std::string, std::shared_ptr<NLEFilterParams>> params;
    /// Folder of the filter with its trailing separator.
    std::string dataPath;

    /// Stores a parameter under "Param[index]", replacing what stood there.
    void AddParam(int32_t index, std::shared_ptr<NLEFilterParams> param);
    /// The parameter, or empty. Neither builds a key nor allocates for the first 4096 indices.
    std::shared_ptr<NLEFilterParams> GetParam(int32_t index) const;

    /// Stores a path text under "Texture[index]", replacing what stood there.
    void AddTexture(int32_t index, std::string_view path);
    /// The text, empty when the slot is missing.
    std::string GetTexture(int32_t index) const;

private:
    std::string TextureKey(int32_t index) const;

    // The values of `params` by index, so that a frame's walk over the parameters stays free of
    // text work.
    std::vector<std::shared_ptr<NLEFilterParams>> paramsByIndex;
};

}  // namespace kelmo
