// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/ModelColumns.h"

#include <array>

#include "core/caldata/MemoryGrid.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

using Words = std::span<const std::string_view>;

// Folded words in English, German, French, Spanish and Italian, and those of a DCC's refType.
// German joins words: the word "frequenz" does not find "messfrequenz".
constexpr std::array<std::string_view, 6> kFrequency = {"freq",     "fréq",     "frec",
                                                        "messfreq", "prüffreq", "kalibrierfreq"};
constexpr std::array<std::string_view, 12> kFactor = {
    "factor", "faktor", "facteur",    "fattore",  "kalibrierfaktor", "kalibrierungsfaktor",
    "kf",     "cf",     "efficiency", "wirkungs", "calibration",     "basic measuredvalue"};
constexpr std::array<std::string_view, 22> kNotFactor = {
    "reflect", "reflex",   "réflex",   "gamma",     "vswr",    "swr",    "magnitude",
    "phase",   "rho",      "linear",   "deviation", "abweich", "écart",  "basic measurementerror",
    "scart",   "mismatch", "desviaci", "diss",      "verlust", "pertes", "pérdida",
    "loss"};
constexpr std::array<std::string_view, 12> kSetting = {
    "setting",  "nominal", "nennwert", "nenndämpf", "sollwert", "einstell",
    "position", "step",    "réglage",  "ajuste",    "impost",   "basic nominalvalue"};
constexpr std::array<std::string_view, 14> kNotSetting = {
    "actual", "measured", "cal data", "messwert", "istwert",   "mesur", "misur",
    "medid",  "gemessen", "abweich",  "écart",    "deviation", "error", "basic measuredvalue"};
constexpr std::array<std::string_view, 17> kAttenuation = {"cal data",
                                                           "actual",
                                                           "measured",
                                                           "attenuation",
                                                           "dämpfung",
                                                           "einfügedämpf",
                                                           "atténu",
                                                           "atenua",
                                                           "attenuaz",
                                                           "messwert",
                                                           "istwert",
                                                           "gemessen",
                                                           "mesur",
                                                           "misur",
                                                           "medid",
                                                           "affaibl",
                                                           "basic measuredvalue"};
constexpr std::array<std::string_view, 10> kNotAttenuation = {
    "deviation", "error", "abweich",     "écart",   "desviaci",
    "scart",     "vswr",  "return loss", "setting", "basic measurementerror"};
constexpr std::array<std::string_view, 7> kCapacitance = {
    "capacit", "kapazit", "capacid", "parallelkapaz", "serienkapaz", "cp", "basic measuredvalue"};
constexpr std::array<std::string_view, 9> kDissipation = {
    "diss", "verlust", "pertes", "tan", "loss", "pérdida", "perdit", "d-factor", "df"};
constexpr std::array<std::string_view, 10> kMember = {"model",  "member",  "standard", "type",
                                                      "modèle", "modelo",  "normal",   "étalon",
                                                      "patrón", "campione"};
constexpr std::array<std::string_view, 6> kNominal = {"nominal",  "nennwert", "valeur nominale",
                                                      "sollwert", "nennwid",  "basic nominalvalue"};
constexpr std::array<std::string_view, 14> kCalibrated = {"calibrated", "measured",
                                                          "actual",     "kalibriert",
                                                          "messwert",   "istwert",
                                                          "gemessen",   "mesur",
                                                          "misur",      "medid",
                                                          "resist",     "résist",
                                                          "widerstand", "basic measuredvalue"};
constexpr std::array<std::string_view, 8> kResistance = {
    "resist",        "résist",          "widerstand", "wirkwiderst",
    "serienwiderst", "parallelwiderst", "rs",         "rp"};
constexpr std::array<std::string_view, 8> kReactance = {"react",   "reakt",   "réact",   "reatt",
                                                        "suscept", "suszept", "suscett", "blind"};
constexpr std::array<std::string_view, 8> kDeviations = {
    "deviation", "abweich", "error",  "écart",
    "desviaci",  "scart",   "erreur", "basic measurementerror"};
constexpr std::array<std::string_view, 12> kUncertainty = {
    "unc",         "unsicherheit",  "messunsicherheit",
    "incertitude", "incertidumbre", "incertezza",
    "u(",          "u (",           "u [",
    "u/",          "u in ",         "basic measurementuncertainty"};
constexpr std::array<std::string_view, 7> kExpanded = {
    "expanded", "erweitert", "élargi", "expandida", "estesa", "k=2", "k = 2"};

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
      return {Column(ColumnRole::Setting, kDecibel, kSetting, kNotSetting),
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

bool NamesExpanded(std::string_view folded) {
  return HasWord(folded, kExpanded);
}

}  // namespace tarvell
