// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/ModelColumns.h"

#include <algorithm>
#include <array>

#include "core/caldata/MemoryGrid.h"
#include "core/numbers/WrittenNumber.h"
#include "exchange/Certificate.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

using Words = std::span<const std::string_view>;

// Folded words in English, German, French, Spanish and Italian, and those of a DCC's refType.
// German joins words: the word "frequenz" does not find "messfrequenz".
constexpr std::array<std::string_view, 6> kFrequency = {"freq",     "fréq",     "frec",
                                                        "messfreq", "prüffreq", "kalibrierfreq"};
constexpr std::array<std::string_view, 12> kFactor = {
    "factor", "faktor", "facteur", "fattore",  "kalibrierfaktor", "kalibrierungsfaktor",
    "kf",     "cf",     "cal fac", "cal. fac", "calfac",          "calibration"};
constexpr std::array<std::string_view, 16> kNotFactor = {
    "reflect", "reflex", "réflex",   "gamma", "vswr",    "swr",    "magnitude", "phase",
    "rho",     "linear", "mismatch", "diss",  "verlust", "pertes", "pérdida",   "loss"};
constexpr std::array<std::string_view, 11> kSetting = {
    "setting",  "nominal", "nennwert", "nenndämpf", "soll",  "einstell",
    "position", "step",    "réglage",  "ajuste",    "impost"};
constexpr std::array<std::string_view, 11> kNotSetting = {
    "ist [",   "ist (", "actual", "measured", "cal data", "messwert",
    "istwert", "mesur", "misur",  "medid",    "gemessen"};
constexpr std::array<std::string_view, 8> kAttenuation = {"cal data",     "attenuation", "dämpfung",
                                                          "einfügedämpf", "atténu",      "atenua",
                                                          "attenuaz",     "affaibl"};
constexpr std::array<std::string_view, 2> kNotAttenuation = {"vswr", "return loss"};
constexpr std::array<std::string_view, 7> kCapacitance = {
    "capacit", "kapazit", "capacid", "parallelkapaz", "serienkapaz", "cp", "cs"};
constexpr std::array<std::string_view, 11> kDissipation = {"diss", "verlust", "pertes", "tan",
                                                           "loss", "pérdida", "perdit", "d-factor",
                                                           "df",   "d [",     "d ("};
constexpr std::array<std::string_view, 6> kCalibrated = {"calibr", "kalibriert", "étalonn",
                                                         "resist", "résist",     "widerstand"};
constexpr std::array<std::string_view, 6> kInductance = {"induct",  "indukt",  "indutt",
                                                         "capacit", "kapazit", "capacid"};
constexpr std::array<std::string_view, 8> kResistance = {
    "resist",        "résist",          "widerstand", "wirkwiderst",
    "serienwiderst", "parallelwiderst", "rs",         "rp"};
constexpr std::array<std::string_view, 8> kReactance = {"react",   "reakt",   "réact",   "reatt",
                                                        "suscept", "suszept", "suscett", "blind"};
// Words that say of any quantity what kind of value it is, or that it is none.
constexpr std::array<std::string_view, 10> kMeasured = {"measured", "actual", "messwert", "istwert",
                                                        "ist [",    "ist (",  "gemessen", "mesur",
                                                        "misur",    "medid"};
constexpr std::array<std::string_view, 6> kNominal = {"nomin",   "nenn",     "soll",
                                                      "setting", "setpoint", "einstell"};
constexpr std::array<std::string_view, 57> kOther = {
    "1/",         "reciproc",   "kehrwert",
    "inverse",    "deviation",  "correction",
    "korrektur",  "correzione", "correcci",
    "dev.",       "abweich",    "messabweich",
    "error",      "écart",      "desviaci",
    "scart",      "erreur",     "fehler",
    "messfehler", "diff",       "basic measurementerror",
    "toler",      "tolér",      "toll",
    "limit",      "grenz",      "spec",
    "spezif",     "coverage",   "erweiterungsf",
    "überdeck",   "élargiss",   "cobertura",
    "copertura",  "k-fac",      "k [",
    "k (",        "probab",     "confidence",
    "humid",      "feucht",     "luftfeucht",
    "humed",      "umid",       "rh ",
    "rh[",        "rh(",        "hr [",
    "temp",       "raumtemp",   "umgebung",
    "ambient",    "pressure",   "druck",
    "luftdruck",  "pression",   "presión"};
// A blank at the end of a word is also the end of a caption.
constexpr std::array<std::string_view, 23> kEarlier = {
    "last ",   "previous", "prev ",   "prior",  "old ",    "former", "earlier", "letzte",
    "vorige",  "vorher",   "vorjahr", "bisher", "frühere", "alt ",   "alte ",   "dernier",
    "dernièr", "précéd",   "ancien",  "ultim",  "preced",  "vecchi", "anterior"};
constexpr std::array<std::string_view, 19> kUnlikely = {
    "refer",   "referenz", "référ",  "rifer", "ref ",    "min ",  "minim",
    "max ",    "maxim",    "massim", "mínim", "máxim",   "upper", "lower",
    "typical", "typisch",  "target", "drift", "expected"};
constexpr std::array<std::string_view, 18> kUncertainty = {"unc",
                                                           "unsicherheit",
                                                           "messunsich",
                                                           "standardunsich",
                                                           "standardmessunsich",
                                                           "incertitude",
                                                           "incertidumbre",
                                                           "incertezza",
                                                           "u(",
                                                           "u (",
                                                           "u[",
                                                           "u [",
                                                           "u/",
                                                           "u /",
                                                           "u in ",
                                                           "u95",
                                                           "u 95",
                                                           "basic measurementuncertainty"};
constexpr std::array<std::string_view, 7> kExpanded = {
    "expanded", "erweitert", "élargi", "expandida", "estesa", "k=2", "k = 2"};
constexpr std::array<std::string_view, 13> kStandard = {"standard unc",
                                                        "basic standarduncertainty",
                                                        "standardunsich",
                                                        "standardmessunsich",
                                                        "incertitude type",
                                                        "incertitude-type",
                                                        "incertidumbre típica",
                                                        "incertezza tipo",
                                                        "k=1)",
                                                        "k=1]",
                                                        "k=1 ",
                                                        "k = 1)",
                                                        "k = 1]"};

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
  return {{}, role, unit, otherUnit, words, others, false};
}

ModelColumn Of(std::string_view quantity, ModelColumn column) {
  column.quantity = quantity;
  return column;
}

/// Many quantities have its unit.
ModelColumn Named(ModelColumn column) {
  column.needsName = true;
  return column;
}

Unit WithPower(Unit unit, int power) {
  unit.power = power;
  return unit;
}

std::vector<ModelColumn> ResistorColumns(std::int16_t page) {
  switch (page) {
    case 0:
      return {Column(ColumnRole::Member, kNoUnit, kMemberWords),
              Named(Column(ColumnRole::Nominal, kOhm, kNominal, kNotSetting)),
              Of(kResistanceName, Column(ColumnRole::Value, kOhm, kCalibrated)),
              Column(ColumnRole::Relative, kPerCent, kUncertainty, {}, kOhm)};
    case 1:
      return {Column(ColumnRole::Member, kNoUnit, kMemberWords),
              Of(kInductanceName, Column(ColumnRole::Value, kHenry, kInductance, {}, kFarad)),
              Column(ColumnRole::Uncertainty, kHenry, kUncertainty, {}, kFarad)};
    default: {
      const Unit imaginary = page < 4 ? kOhm : kSiemens;
      return {Of(kFrequencyName, Column(ColumnRole::Frequency, WithPower(kHertz, 6), kFrequency)),
              Of(kResistanceName, Column(ColumnRole::Value, kOhm, kResistance, kReactance)),
              Column(ColumnRole::Relative, kPerCent, kUncertainty, {}, kOhm),
              Of(page < 4 ? kReactanceName : kSusceptanceName,
                 Column(ColumnRole::Value, imaginary, kReactance, kResistance)),
              Column(ColumnRole::Uncertainty, imaginary, kUncertainty)};
    }
  }
}

std::vector<ModelColumn> ColumnsOf(const Model& model, std::int16_t page) {
  switch (model.family) {
    case ModelFamily::PowerSensor:
      return {Of(kFrequencyName,
                 Column(ColumnRole::Frequency,
                        WithPower(kHertz, model.frequencyUnit == "GHz" ? 9 : 6), kFrequency)),
              Of(kFactorName, Column(ColumnRole::Value, kPerCent, kFactor, kNotFactor))};
    case ModelFamily::StepAttenuator:
      return {
          Of(kSettingName, Column(ColumnRole::Setting, kDecibel, kSetting, kNotSetting)),
          Of(kFrequencyName, Column(ColumnRole::Frequency, kHertz, kFrequency)),
          Of(kAttenuationName, Column(ColumnRole::Value, kDecibel, kAttenuation, kNotAttenuation))};
    case ModelFamily::CapacitorSet:
      return {Of(kFrequencyName, Column(ColumnRole::Frequency, kHertz, kFrequency)),
              Of(kCapacitanceName, Column(ColumnRole::Value, kFarad, kCapacitance, kDissipation)),
              Column(ColumnRole::Relative, kPerCent, kUncertainty, {}, kFarad),
              Named(Of(kDissipationName, Column(ColumnRole::Value, kOne, kDissipation))),
              Column(ColumnRole::Uncertainty, kOne, kUncertainty)};
    case ModelFamily::ResistorSet:
      return ResistorColumns(page);
    case ModelFamily::TestKit:
      break;
  }
  return {};
}

/// `folded` with a blank after each word, in place of what else may be there.
std::string InBlanks(std::string_view folded) {
  std::string text(folded);
  for (char& c : text) {
    c = std::string_view("()[],;:./-").find(c) == std::string_view::npos ? c : ' ';
  }
  return text + " ";
}

/// Whether a word is a year, as in "factor 2025". It may be that of another calibration.
bool HasYear(std::string_view text) {
  constexpr std::size_t kDigits = 4;
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    const bool isNumber = word.find_first_not_of("0123456789") == std::string_view::npos;
    if (isNumber && word.size() == kDigits && (word.starts_with("19") || word.starts_with("20"))) {
      return true;
    }
    text.remove_prefix(std::min(word.size() + 1, text.size()));
  }
  return false;
}

}  // namespace

std::vector<ModelColumn> ModelColumns(const Model& model, const cifCaldata& data,
                                      std::int16_t page) {
  constexpr std::int16_t kColumnLimit = 5;
  MemoryGrid grid(kColumnLimit);
  data.GetCalData(page, grid);
  std::vector<ModelColumn> columns = ColumnsOf(model, page);
  std::int16_t number = 0;
  std::string_view value;
  for (ModelColumn& column : columns) {
    column.caption = WithSingleBlanks(grid.CellText(0, number++));
    if (column.IsUncertainty()) {
      column.quantity = value;
    }
    value = column.quantity;
  }
  return columns;
}

bool NamesQuantity(std::string_view folded) {
  constexpr std::array<Words, 12> kQuantities = {
      kFrequency,   kFactor,      kNotFactor,  kSetting,    kAttenuation, kNotAttenuation,
      kCapacitance, kDissipation, kCalibrated, kInductance, kReactance,   kResistance};
  return NamesOther(folded) ||
         std::ranges::any_of(kQuantities, [&](Words words) { return HasWord(folded, words); });
}

bool NamesMeasured(std::string_view folded) {
  return HasWord(folded, kMeasured);
}

bool NamesNominal(std::string_view folded) {
  return HasWord(folded, kNominal);
}

bool NamesOther(std::string_view folded) {
  return WithoutBlanks(folded) == "k" || HasWord(folded, kOther);
}

bool NamesEarlier(std::string_view folded) {
  return HasWord(InBlanks(folded), kEarlier);
}

bool NamesUnlikely(std::string_view folded) {
  // A factor at the reference plane is a result.
  constexpr std::array<std::string_view, 6> kPlanes = {"plane",   "referenzebene", "bezugsebene",
                                                       "plan de", "piano di",      "plano de"};
  const std::string text = InBlanks(folded);
  return HasWord(text, kEarlier) || HasYear(text) ||
         (HasWord(text, kUnlikely) && !HasWord(text, kPlanes));
}

bool NamesUncertainty(std::string_view folded) {
  return WithoutBlanks(folded) == "u" || HasWord(folded, kUncertainty);
}

bool NamesStandard(std::string_view folded) {
  return HasWord(folded, kStandard);
}

std::string CoverageFactorIn(std::string_view folded) {
  const std::size_t equals = std::min(folded.find('='), folded.size());
  std::string_view rest = WithoutBlanks(folded.substr(std::min(equals + 1, folded.size())));
  rest = rest.substr(0, rest.find_first_not_of("0123456789.,"));
  const bool isFactor = WithoutBlanks(folded.substr(0, equals)).ends_with('k');
  const std::optional<std::string> number = PlainNumber(
      rest, rest.find(',') == std::string_view::npos ? DecimalSign::Point : DecimalSign::Comma);
  return isFactor ? number.value_or("") : std::string();
}

bool NamesExpanded(std::string_view folded) {
  return HasWord(folded, kExpanded);
}

}  // namespace tarvell
