// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/ModelColumns.h"

#include <array>

#include "core/caldata/MemoryGrid.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

using Words = std::span<const std::string_view>;

// Folded words in English, German, French and Spanish, and those of a DCC's refType.
constexpr std::array<std::string_view, 3> kFrequency = {"freq", "fréq", "frec"};
constexpr std::array<std::string_view, 9> kFactor = {
    "factor",     "faktor", "facteur", "kf", "cf", "efficiency", "wirkungs", "basic_measuredvalue",
    "calibration"};
constexpr std::array<std::string_view, 20> kNotFactor = {
    "reflect",  "reflex", "réflex",  "gamma",     "vswr",    "swr",   "magnitude",
    "phase",    "rho",    "linear",  "deviation", "abweich", "écart", "basic_measurementerror",
    "mismatch", "diss",   "verlust", "pertes",    "pérdida", "loss"};
constexpr std::array<std::string_view, 9> kSetting = {"setting",  "nominal",  "nennwert",
                                                      "sollwert", "einstell", "position",
                                                      "step",     "réglage",  "basic_nominalvalue"};
constexpr std::array<std::string_view, 12> kAttenuation = {
    "cal data", "actual",   "measured", "attenuation", "dämpfung", "atténu",
    "atenua",   "messwert", "istwert",  "mesur",       "affaibl",  "basic_measuredvalue"};
constexpr std::array<std::string_view, 8> kNotAttenuation = {
    "deviation", "error",       "abweich", "écart",
    "vswr",      "return loss", "setting", "basic_measurementerror"};
constexpr std::array<std::string_view, 5> kCapacitance = {"capacit", "kapazit", "capacid", "cp",
                                                          "basic_measuredvalue"};
constexpr std::array<std::string_view, 8> kDissipation = {"diss", "verlust", "pertes",   "tan",
                                                          "loss", "pérdida", "d-factor", "df"};
constexpr std::array<std::string_view, 5> kMember = {"model", "member", "standard", "type",
                                                     "modell"};
constexpr std::array<std::string_view, 5> kNominal = {"nominal", "nennwert", "valeur nominale",
                                                      "sollwert", "basic_nominalvalue"};
constexpr std::array<std::string_view, 8> kCalibrated = {
    "calibrated", "measured", "actual",     "kalibriert",
    "messwert",   "istwert",  "resistance", "basic_measuredvalue"};
constexpr std::array<std::string_view, 6> kResistance = {"resistance",  "widerstand", "résistance",
                                                         "resistencia", "rs",         "rp"};
constexpr std::array<std::string_view, 6> kReactance = {"react",   "reakt",   "réact",
                                                        "suscept", "suszept", "blind"};
constexpr std::array<std::string_view, 4> kDeviations = {"deviation", "abweich", "error",
                                                         "basic_measurementerror"};
constexpr std::array<std::string_view, 8> kUncertainty = {
    "unc",         "uncertainty",   "unsicherheit", "messunsicherheit",
    "incertitude", "incertidumbre", "u(",           "basic_measurementuncertainty"};

constexpr Unit kHertz = {.bases = {0, 0, -1, 0, 0}};
constexpr Unit kDecibel = {.special = "decibel"};
constexpr Unit kOne = {};
constexpr Unit kPerCent = {.power = -2};
constexpr Unit kFarad = {.bases = {-2, -1, 4, 2, 0}};
constexpr Unit kHenry = {.bases = {2, 1, -2, -2, 0}};
constexpr Unit kOhm = {.bases = {2, 1, -3, -2, 0}};
constexpr Unit kSiemens = {.bases = {-2, -1, 3, 2, 0}};
/// No unit of a certificate is like it.
constexpr Unit kNoUnit = {.special = "none"};

ModelColumn Column(ColumnRole role, const Unit& unit, Words words, Words others = {},
                   const Unit& otherUnit = kNoUnit) {
  return {{}, role, unit, otherUnit, words, others};
}

Unit WithPower(Unit unit, int power) {
  unit.power = power;
  return unit;
}

std::vector<ModelColumn> ResistorColumns(std::int16_t page) {
  switch (page) {
    case 0:
      return {Column(ColumnRole::Member, kNoUnit, kMember),
              Column(ColumnRole::Value, kOhm, kNominal),
              Column(ColumnRole::Value, kOhm, kCalibrated, kDeviations),
              Column(ColumnRole::Relative, kPerCent, kUncertainty, {}, kOhm)};
    case 1:
      return {Column(ColumnRole::Member, kNoUnit, kMember),
              Column(ColumnRole::Value, kHenry, kCalibrated, kDeviations, kFarad),
              Column(ColumnRole::Uncertainty, kHenry, kUncertainty, {}, kFarad)};
    default: {
      const Unit imaginary = page < 4 ? kOhm : kSiemens;
      return {Column(ColumnRole::Frequency, WithPower(kHertz, 6), kFrequency),
              Column(ColumnRole::Value, kOhm, kResistance, kReactance),
              Column(ColumnRole::Relative, kPerCent, kUncertainty, {}, kOhm),
              Column(ColumnRole::Value, imaginary, kReactance, kResistance),
              Column(ColumnRole::Uncertainty, imaginary, kUncertainty)};
    }
  }
}

std::vector<ModelColumn> ColumnsOf(const Model& model, std::int16_t page) {
  switch (model.family) {
    case ModelFamily::PowerSensor:
      return {Column(ColumnRole::Frequency, WithPower(kHertz, model.frequencyUnit == "GHz" ? 9 : 6),
                     kFrequency),
              Column(ColumnRole::Value, kPerCent, kFactor, kNotFactor)};
    case ModelFamily::StepAttenuator:
      return {Column(ColumnRole::Setting, kDecibel, kSetting),
              Column(ColumnRole::Frequency, kHertz, kFrequency),
              Column(ColumnRole::Value, kDecibel, kAttenuation, kNotAttenuation)};
    case ModelFamily::CapacitorSet:
      return {Column(ColumnRole::Frequency, kHertz, kFrequency),
              Column(ColumnRole::Value, kFarad, kCapacitance, kDeviations),
              Column(ColumnRole::Relative, kPerCent, kUncertainty, {}, kFarad),
              Column(ColumnRole::Value, kOne, kDissipation),
              Column(ColumnRole::Uncertainty, kOne, kUncertainty)};
    case ModelFamily::ResistorSet:
      return ResistorColumns(page);
    case ModelFamily::TestKit:
      break;
  }
  return {};
}

}  // namespace

std::vector<ModelColumn> ModelColumns(const Model& model, const cifCaldata& data,
                                      std::int16_t page) {
  constexpr std::int16_t kColumnLimit = 5;
  MemoryGrid grid(kColumnLimit);
  data.GetCalData(page, grid);
  std::vector<ModelColumn> columns = ColumnsOf(model, page);
  std::int16_t number = 0;
  for (ModelColumn& column : columns) {
    column.caption = grid.CellText(0, number++);
  }
  return columns;
}

bool NamesUncertainty(std::string_view folded) {
  return HasWord(folded, kUncertainty);
}

}  // namespace tarvell
