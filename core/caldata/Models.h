// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_MODELS_H
#define TARVELL_CORE_CALDATA_MODELS_H

#include <memory>
#include <span>
#include <string_view>

#include "core/caldata/cifCaldata.h"

namespace tarvell {

enum class ModelFamily { TestKit, CapacitorSet, ResistorSet, PowerSensor, StepAttenuator };

/// What is fixed for a model.
struct Model {
  std::string_view code;  ///< model code, name of the model folder and caption of the Add entry
  ModelFamily family;
  std::string_view frequencyUnit;    ///< of a power sensor's table, "" elsewhere
  std::string_view presetFrequency;  ///< of a step attenuator's new point, "" elsewhere
  /// Creates the model's class; nullptr where the program cannot edit the model's data.
  std::unique_ptr<cifCaldata> (*create)();
  bool hasOption = false;  ///< whether the page kOptionPage of a set exists only with its option
};

/// Every model, in the order of the Add menu. A new model needs a row in Models.cpp and a class.
extern const std::span<const Model> kModels;

/// Whether the program can add data of a model: create them, or import a test kit's file.
[[nodiscard]] constexpr bool CanAdd(const Model& model) {
  return model.create != nullptr || model.family == ModelFamily::TestKit;
}

/// Whether a model's data are edited page by page.
[[nodiscard]] constexpr bool HasPages(const Model& model) {
  return model.family == ModelFamily::CapacitorSet || model.family == ModelFamily::ResistorSet;
}

/// The model of exactly this code, nullptr if none exists.
[[nodiscard]] const Model* FindModel(std::string_view code);

}  // namespace tarvell

#endif
