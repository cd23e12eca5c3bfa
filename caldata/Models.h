// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CALDATA_MODELS_H
#define TARVELL_CALDATA_MODELS_H

#include <array>
#include <memory>
#include <string_view>

#include "caldata/cInstrPX11A.h"
#include "caldata/cInstrPX11D.h"
#include "caldata/cInstrPX12A.h"
#include "caldata/cInstrPX13A.h"
#include "caldata/cInstrPX60G.h"
#include "caldata/cInstrPX60H.h"
#include "caldata/cInstrRT520A.h"
#include "caldata/cInstrRT520C.h"
#include "caldata/cInstrRT730A.h"
#include "caldata/cifCaldata.h"

namespace tarvell {

enum class ModelFamily { TestKit, CapacitorSet, ResistorSet, PowerSensor, StepAttenuator };

/// What the program knows of a model before it creates its class.
struct Model {
  std::string_view code;  ///< model code, name of the model folder and caption of the Add entry
  ModelFamily family;
  std::string_view frequencyUnit;    ///< of a power sensor's table, "" elsewhere
  std::string_view presetFrequency;  ///< of a step attenuator's new point, "" elsewhere
  /// Creates the model's class; nullptr where the program cannot edit the model's data.
  std::unique_ptr<cifCaldata> (*create)();
  bool hasOption = false;  ///< whether the kOptionPage of a set comes with an option only
};

template <typename Class>
[[nodiscard]] std::unique_ptr<cifCaldata> CreateModel() {
  return std::make_unique<Class>();
}

template <typename Class>
[[nodiscard]] constexpr Model SensorModel() {
  return {Class::kTraits.modelCode, ModelFamily::PowerSensor, Class::kTraits.frequencyUnit, "",
          &CreateModel<Class>};
}

template <typename Class>
[[nodiscard]] constexpr Model AttenuatorModel() {
  return {Class::kTraits.modelCode, ModelFamily::StepAttenuator, "", Class::kTraits.presetFrequency,
          &CreateModel<Class>};
}

template <typename Class>
[[nodiscard]] constexpr Model CapacitorModel() {
  return {Class::kTraits.modelCode, ModelFamily::CapacitorSet, "", "",
          &CreateModel<Class>,      Class::kTraits.hasOption};
}

/// Every model, in the order of the Add menu. Adding a model is a row here and its class.
inline constexpr std::array<Model, 11> kModels = {{
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

/// Whether the program can add data of a model: create it, or take in a test kit's file.
[[nodiscard]] constexpr bool CanAdd(const Model& model) {
  return model.create != nullptr || model.family == ModelFamily::TestKit;
}

/// Whether a model's data are edited page by page.
[[nodiscard]] constexpr bool HasPages(const Model& model) {
  return model.family == ModelFamily::CapacitorSet || model.family == ModelFamily::ResistorSet;
}

/// The model of exactly this code, nullptr when there is none.
[[nodiscard]] const Model* FindModel(std::string_view code);

}  // namespace tarvell

#endif
