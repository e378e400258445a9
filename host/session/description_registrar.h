// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contract/qor_host.h"
#include "host/session/effect_description.h"

namespace kelmo::host {

/// Takes down what `RegisterQorEffect` says about one effect.
///
/// A parameter whose name is already there is left out: values travel by name, so that the second
/// could never be told from the first.
class DescriptionRegistrar final : public QorEffectRegistrar {
public:
    EffectDescription Take() { return std::move(effect); }

    void SetIdentity(const char* guid, const char* displayName) override;
    void SetFlags(uint32_t flags) override { effect.flags = flags; }
    void SetReserved(int32_t) override {}
    void SetTextKind(int32_t kind) override { effect.textKind = kind; }
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

private:
    /// The parameter to fill; a spare one that is dropped when the name is missing or taken.
    ParameterDescription& Add(int32_t index, const char* name, const char* display,
                              ParameterKind kind);
    void AddNumber(int32_t index, const char* name, const char* display, ParameterKind kind,
                   double min, double max, double def, int32_t vis);

    EffectDescription effect;
    ParameterDescription dropped;
};

}  // namespace kelmo::host
