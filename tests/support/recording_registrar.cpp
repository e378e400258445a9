// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/recording_registrar.h"

#include <sstream>

namespace kelmo::test {

namespace {

template <typename... Parts>
std::string Line(const char* operation, const Parts&... parts) {
    std::ostringstream line;
    line << operation << '(';
    const char* separator = "";
    ((line << separator << parts, separator = ", "), ...);
    line << ')';
    return line.str();
}

const char* OrNull(const char* text) {
    return text ? text : "null";
}

}  // namespace

void RecordingRegistrar::SetIdentity(const char* guid, const char* displayName) {
    calls.push_back(Line("SetIdentity", guid, displayName));
}

void RecordingRegistrar::SetFlags(uint32_t flags) {
    calls.push_back(Line("SetFlags", flags));
}

void RecordingRegistrar::SetReserved(int32_t value) {
    calls.push_back(Line("SetReserved", value));
}

void RecordingRegistrar::SetTextKind(int32_t kind) {
    calls.push_back(Line("SetTextKind", kind));
}

void RecordingRegistrar::AddFloatParam(int32_t parent, int32_t index, const char* name,
                                       const char* display, float min, float max, float def,
                                       int32_t vis) {
    calls.push_back(Line("AddFloatParam", parent, index, name, display, min, max, def, vis));
}

void RecordingRegistrar::AddIntParam(int32_t parent, int32_t index, const char* name,
                                     const char* display, int32_t min, int32_t max, int32_t def,
                                     int32_t step, int32_t vis) {
    calls.push_back(Line("AddIntParam", parent, index, name, display, min, max, def, step, vis));
}

void RecordingRegistrar::AddColorParam(int32_t parent, int32_t index, const char* name,
                                       const char* display, int32_t def, int32_t min, int32_t max,
                                       int32_t vis) {
    calls.push_back(Line("AddColorParam", parent, index, name, display, def, min, max, vis));
}

void RecordingRegistrar::AddCheckBoxParam(int32_t parent, int32_t index, const char* name,
                                          const char* display, int32_t min, int32_t max,
                                          int32_t def, int32_t vis) {
    calls.push_back(Line("AddCheckBoxParam", parent, index, name, display, min, max, def, vis));
}

void RecordingRegistrar::AddStringParam(int32_t parent, int32_t index, const char* name,
                                        const char* display, const char* reserved, int32_t flag) {
    calls.push_back(Line("AddStringParam", parent, index, name, display, OrNull(reserved), flag));
}

void RecordingRegistrar::AddGradientColorParam(int32_t parent, int32_t index, const char* name,
                                               const char* display, const QorValue* def,
                                               int32_t flag) {
    const char* const text = def && def->type == 8 ? OrNull(def->s) : "no text";
    calls.push_back(Line("AddGradientColorParam", parent, index, name, display, text, flag));
}

void RecordingRegistrar::AddDoubleParam(int32_t parent, int32_t index, const char* name,
                                        const char* display, double min, double max, double def,
                                        int32_t vis) {
    calls.push_back(Line("AddDoubleParam", parent, index, name, display, min, max, def, vis));
}

void RecordingRegistrar::AddPalacesParam(int32_t parent, int32_t index, const char* name,
                                         const char* display, int32_t min, int32_t max, int32_t def,
                                         int32_t flag) {
    calls.push_back(Line("AddPalacesParam", parent, index, name, display, min, max, def, flag));
}

void RecordingRegistrar::AddListMaskParam(int32_t parent, int32_t index, const char* name,
                                          const char* display, const char* reserved, int32_t flag) {
    calls.push_back(Line("AddListMaskParam", parent, index, name, display, OrNull(reserved), flag));
}

void RecordingRegistrar::AddListMosaicParam(int32_t parent, int32_t index, const char* name,
                                            const char* display, int32_t min, int32_t max,
                                            int32_t def, int32_t flag) {
    calls.push_back(Line("AddListMosaicParam", parent, index, name, display, min, max, def, flag));
}

void RecordingRegistrar::AddColorStartParam(int32_t parent, int32_t index, const char* name,
                                            const char* display, int32_t min, int32_t max,
                                            int32_t def, int32_t vis) {
    calls.push_back(Line("AddColorStartParam", parent, index, name, display, min, max, def, vis));
}

void RecordingRegistrar::AddColorEndParam(int32_t parent, int32_t index, const char* name,
                                          const char* display, int32_t min, int32_t max,
                                          int32_t def, int32_t vis) {
    calls.push_back(Line("AddColorEndParam", parent, index, name, display, min, max, def, vis));
}

void RecordingRegistrar::AddMult100Param(int32_t parent, int32_t index, const char* name,
                                         const char* display, float min, float max, float def,
                                         int32_t vis) {
    calls.push_back(Line("AddMult100Param", parent, index, name, display, min, max, def, vis));
}

}  // namespace kelmo::test
