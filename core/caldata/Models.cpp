// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/Models.h"

#include <algorithm>
#include <array>

#include "core/caldata/cInstrPX11A.h"
#include "core/caldata/cInstrPX11D.h"
#include "core/caldata/cInstrPX12A.h"
#include "core/caldata/cInstrPX13A.h"
#include "core/caldata/cInstrPX60G.h"
#include "core/caldata/cInstrPX60H.h"
#include "core/caldata/cInstrRT520A.h"
#include "core/caldata/cInstrRT520C.h"
#include "core/caldata/cInstrRT730A.h"

namespace tarvell {

namespace {

template <typename Class>
std::unique_ptr<cifCaldata> CreateModel() {
  return std::make_unique<Class>();
}

template <typename Class>
constexpr Model SensorModel() {
  return {Class::kTraits.modelCode, ModelFamily::PowerSensor, Class::kTraits.frequencyUnit, "",
          &CreateModel<Class>};
}

template <typename Class>
constexpr Model AttenuatorModel() {
  return {Class::kTraits.modelCode, ModelFamily::StepAttenuator, "", Class::kTraits.presetFrequency,
          &CreateModel<Class>};
}

template <typename Class>
constexpr Model CapacitorModel() {
  return {Class::kTraits.modelCode, ModelFamily::CapacitorSet, "", "",
          &CreateModel<Class>,      Class::kTraits.hasOption};
}

constexpr std::array<Model, 11> kEveryModel = {{
    {"RT410A", ModelFamily::TestKit, "", "", nullptr},
    {"RT410B", ModelFamily::TestKit, "", "", nullptr},
    CapacitorModel<cInstrRT520A>(),
    CapacitorModel<cInstrRT520C>(),
    {"RT730A", ModelFamily::ResistorSet, "", "", &CreateModel<cInstrRT730A>},
    SensorModel<cInstrPX11D>(),
    SensorModel<cInstrPX12A>(),
    SensorModel<cInstrPX13A>(),
    SensorModel<cInstrPX11A>(),
    AttenuatorModel<cInstrPX60G>(),
    AttenuatorModel<cInstrPX60H>(),
}};

}  // namespace

const std::span<const Model> kModels = kEveryModel;

const Model* FindModel(std::string_view code) {
  const auto found = std::ranges::find(kModels, code, &Model::code);
  return found == kModels.end() ? nullptr : &*found;
}

}  // namespace tarvell
