// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "contract/qor_host.h"

namespace kelmo::test {

/// A registrar that writes each call down as a line: "AddIntParam(-1, 0, n, n, 0, 100, 50, 1, 2)".
class RecordingRegistrar : public QorEffectRegistrar {
public:
    std::vector<std::string> calls;

    void SetIdentity(const char* guid, const char* displayName) override;
    void SetFlags(uint32_t flags) override;
    void SetReserved(int32_t value) override;
    void SetTextKind(int32_t kind) override;
    void AddFloatParam(int32_t parent, int32_t index, const char* name, const char* display,
                       float min, float max, float def, int32_t vis) override;
    void AddIntParam(int32_t parent, int32_t index, const char* name, const char* display,
                     int32_t min, int32_t max, int32_t def, int32_t step, int32_t vis) override;
    void AddColorParam(int32_t parent, int32_t index, const char* name, const char* display,
                       int32_t def, int32_t min, int32_t max, int32_t vis) override;
    void AddCheckBoxParam(int32_t parent, int32_t index, const char* name, const char* display,
                          int32_t min, int32_t max, int32_t def, int32_t vis) override;
    void AddStringParam(int32_t parent, int32_t index, const char* name, const char* display,
                        const char* reserved, int32_t flag) override;
    void AddGradientColorParam(int32_t parent, int32_t index, const char* name, const char* display,
                               const QorValue* def, int32_t flag) override;
    void AddDoubleParam(int32_t parent, int32_t index, const char* name, const char* display,
                        double min, double max, double def, int32_t vis) override;
    void AddPalacesParam(int32_t parent, int32_t index, const char* name, const char* display,
                         int32_t min, int32_t max, int32_t def, int32_t flag) override;
    void AddListMaskParam(int32_t parent, int32_t index, const char* name, const char* display,
                          const char* reserved, int32_t flag) override;
    void AddListMosaicParam(int32_t parent, int32_t index, const char* name, const char* display,
                            int32_t min, int32_t max, int32_t def, int32_t flag) override;
    void AddColorStartParam(int32_t parent, int32_t index, const char* name, const char* display,
                            int32_t min, int32_t max, int32_t def, int32_t vis) override;
    void AddColorEndParam(int32_t parent, int32_t index, const char* name, const char* display,
                          int32_t min, int32_t max, int32_t def, int32_t vis) override;
    void AddMult100Param(int32_t parent, int32_t index, const char* name, const char* display,
                         float min, float max, float def, int32_t vis) override;
};

}  // namespace kelmo::test
