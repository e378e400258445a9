// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/mesh/shape_parameters.h"

#include <charconv>
#include <functional>
#include <map>
#include <stdexcept>

namespace kelmo::tools {
namespace {

using Setter = std::function<void(MeshParameters&, double)>;

Setter Float(float MeshShape::*field) {
    return [field](MeshParameters& p, double value) { p.shape.*field = static_cast<float>(value); };
}

Setter Int(int32_t MeshShape::*field, int32_t added = 0) {
    return [field, added](MeshParameters& p, double value) {
        p.shape.*field = static_cast<int32_t>(value) + added;
    };
}

const std::map<std::string, Setter>& Setters() {
    static const std::map<std::string, Setter> setters = {
        {"HiddenFillingSurface", Int(&MeshShape::hiddenFillingSurface)},
        {"ModelType", Int(&MeshShape::modelType)},
        {"BevelSize", Float(&MeshShape::bevelSize)},
        {"BorderThickness", Float(&MeshShape::borderThickness)},
        {"BevelDepth", Float(&MeshShape::bevelDepth)},
        {"BevelCurve", Float(&MeshShape::bevelCurve)},
        {"BaseBevelSegments", Int(&MeshShape::baseBevelSegments)},
        {"UpperBevelSegments", Int(&MeshShape::upperBevelSegments)},
        {"BevelSegments", Int(&MeshShape::bevelSegments, 1)},
        {"UpperDoubleExtrude", Int(&MeshShape::upperDoubleExtrude)},
        {"BorderBevelSize", Float(&MeshShape::borderBevelSize)},
        {"UpperBevelSize", Float(&MeshShape::upperBevelSize)},
        {"BaseBevelSize", Float(&MeshShape::baseBevelSize)},
        {"EdgeExtrusionDepth", Float(&MeshShape::edgeExtrusionDepth)},
        {"ExtrusionType", Int(&MeshShape::extrusionType)},
        {"UVMapMode", Int(&MeshShape::uvMapMode)},
        {"Wireframe", Int(&MeshShape::wireframe)},
        {"enable_subdivision",
         [](MeshParameters& p, double value) { p.shape.enableSubdivision = value != 0; }},
        {"level_subdivision", Int(&MeshShape::levelSubdivision)},
        {"segment",
         [](MeshParameters& p, double value) { p.segment = static_cast<float>(value / 1000); }},
        {"Extrude", [](MeshParameters& p, double value) { p.extrude = static_cast<float>(value); }},
    };
    return setters;
}

}  // namespace

void SetParameter(MeshParameters& parameters, const std::string& assignment) {
    const size_t sign = assignment.find('=');
    const std::string name = assignment.substr(0, sign);
    const auto setter = Setters().find(name);
    if (sign == std::string::npos || setter == Setters().end()) {
        throw std::invalid_argument("\"" + assignment + "\" is not NAME=VALUE of a parameter");
    }
    double value = 0;
    const char* end = assignment.data() + assignment.size();
    const auto result = std::from_chars(assignment.data() + sign + 1, end, value);
    if (result.ec != std::errc() || result.ptr != end || !(value >= -1e6 && value <= 1e6)) {
        throw std::invalid_argument("\"" + assignment + "\": the value is not a usable number");
    }
    setter->second(parameters, value);
}

std::vector<std::string> ParameterNames() {
    std::vector<std::string> names;
    for (const auto& [name, setter] : Setters()) names.push_back(name);
    return names;
}

}  // namespace kelmo::tools
