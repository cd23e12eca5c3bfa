// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/CaptionWords.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <utility>

#include "core/numbers/Numbers.h"
#include "exchange/CaptionUnit.h"
#include "exchange/Certificate.h"
#include "exchange/Units.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

using Words = std::span<const std::string_view>;

// Whole folded words: "factory" is not a factor.
constexpr std::array<std::string_view, 24> kFrequency = {"f",
                                                         "freq",
                                                         "frequency",
                                                         "frequencies",
                                                         "frequenz",
                                                         "frequenzen",
                                                         "messfrequenz",
                                                         "prüffrequenz",
                                                         "kalibrierfrequenz",
                                                         "nennfrequenz",
                                                         "sollfrequenz",
                                                         "fréq",
                                                         "fréquence",
                                                         "fréquences",
                                                         "frec",
                                                         "frecuencia",
                                                         "frecuencias",
                                                         "frequenza",
                                                         "frequenze",
                                                         "nominal",
                                                         "nominale",
                                                         "soll",
                                                         "set",
                                                         "setting"};
constexpr std::array<std::string_view, 22> kFactor = {"factor",
                                                      "factors",
                                                      "fac",
                                                      "faktor",
                                                      "faktoren",
                                                      "facteur",
                                                      "facteurs",
                                                      "fattore",
                                                      "fattori",
                                                      "factores",
                                                      "kalibrierfaktor",
                                                      "kalibrierfaktoren",
                                                      "kalibrierungsfaktor",
                                                      "kf",
                                                      "cf",
                                                      "calfac",
                                                      "calfactor",
                                                      "plane",
                                                      "reference",
                                                      "k",
                                                      "kb",
                                                      "kalibrierfaktors"};
constexpr std::array<std::string_view, 16> kAttenuation = {"a",
                                                           "att",
                                                           "attenuation",
                                                           "dämpfung",
                                                           "einfügedämpfung",
                                                           "atténuation",
                                                           "atténuations",
                                                           "atenuación",
                                                           "attenuazione",
                                                           "affaiblissement",
                                                           "s21",
                                                           "|s21|",
                                                           "s12",
                                                           "|s12|",
                                                           "data",
                                                           "dämpfungswert"};
constexpr std::array<std::string_view, 31> kSetting = {
    "setting",      "settings",     "nominal",
    "nominale",     "nennwert",     "nenndämpfung",
    "nenn",         "soll",         "sollwert",
    "solldämpfung", "einstellung",  "einstellwert",
    "eingestellt",  "eingestellte", "position",
    "step",         "réglage",      "ajuste",
    "impostazione", "impostato",    "impostata",
    "attenuation",  "dämpfung",     "atténuation",
    "atenuación",   "attenuazione", "affaiblissement",
    "attenuator",   "att",          "a",
    "set"};
constexpr std::array<std::string_view, 20> kCapacitance = {"c",
                                                           "cp",
                                                           "cs",
                                                           "cx",
                                                           "capacitance",
                                                           "kapazität",
                                                           "capacité",
                                                           "capacidad",
                                                           "capacità",
                                                           "parallelkapazität",
                                                           "serienkapazität",
                                                           "parallel",
                                                           "parallèle",
                                                           "paralelo",
                                                           "parallelo",
                                                           "series",
                                                           "serie",
                                                           "kapazitätswert",
                                                           "kapazitätswerte",
                                                           "série"};
constexpr std::array<std::string_view, 27> kDissipation = {"d",
                                                           "df",
                                                           "dissipation",
                                                           "factor",
                                                           "faktor",
                                                           "facteur",
                                                           "fattore",
                                                           "verlustfaktor",
                                                           "verlust",
                                                           "pertes",
                                                           "perte",
                                                           "tan",
                                                           "tanδ",
                                                           "tand",
                                                           "δ",
                                                           "delta",
                                                           "tangens",
                                                           "loss",
                                                           "pérdidas",
                                                           "pérdida",
                                                           "perdita",
                                                           "perdite",
                                                           "dissipazione",
                                                           "disipación",
                                                           "tangent",
                                                           "verlustfaktors",
                                                           "tangente"};
constexpr std::array<std::string_view, 23> kResistance = {"r",
                                                          "rs",
                                                          "rp",
                                                          "rdc",
                                                          "dc",
                                                          "ac",
                                                          "hf",
                                                          "resistance",
                                                          "résistance",
                                                          "resistencia",
                                                          "resistenza",
                                                          "widerstand",
                                                          "wirkwiderstand",
                                                          "serienwiderstand",
                                                          "parallelwiderstand",
                                                          "gleichstromwiderstand",
                                                          "parallel",
                                                          "series",
                                                          "serie",
                                                          "widerstands",
                                                          "widerstandswert",
                                                          "widerstandswerte",
                                                          "série"};
constexpr std::array<std::string_view, 23> kInductance = {"l",
                                                          "ls",
                                                          "lp",
                                                          "inductance",
                                                          "induktivität",
                                                          "inductancia",
                                                          "induttanza",
                                                          "c",
                                                          "cp",
                                                          "cs",
                                                          "capacitance",
                                                          "kapazität",
                                                          "capacité",
                                                          "capacidad",
                                                          "capacità",
                                                          "or",
                                                          "oder",
                                                          "ou",
                                                          "parallel",
                                                          "series",
                                                          "parallelkapazität",
                                                          "serieninduktivität",
                                                          "serie"};
constexpr std::array<std::string_view, 13> kReactance = {
    "x",          "xs",        "xp",
    "reactance",  "reaktanz",  "réactance",
    "reactancia", "reattanza", "blindwiderstand",
    "series",     "parallel",  "blindwiderstands",
    "série"};
constexpr std::array<std::string_view, 9> kSusceptance = {"b",
                                                          "bp",
                                                          "susceptance",
                                                          "suszeptanz",
                                                          "susceptancia",
                                                          "suscettanza",
                                                          "blindleitwert",
                                                          "parallel",
                                                          "series"};

/// The words of a quantity.
struct QuantityWords {
  std::string_view quantity;
  Words words;
};
constexpr std::array<QuantityWords, 10> kQuantities = {{{kFrequencyName, kFrequency},
                                                        {kFactorName, kFactor},
                                                        {kSettingName, kSetting},
                                                        {kAttenuationName, kAttenuation},
                                                        {kCapacitanceName, kCapacitance},
                                                        {kDissipationName, kDissipation},
                                                        {kResistanceName, kResistance},
                                                        {kInductanceName, kInductance},
                                                        {kReactanceName, kReactance},
                                                        {kSusceptanceName, kSusceptance}}};

/// They say nothing about what was measured, and nothing about when or where.
constexpr std::array<std::string_view, 109> kNeutral = {"the",
                                                        "of",
                                                        "in",
                                                        "at",
                                                        "for",
                                                        "and",
                                                        "der",
                                                        "die",
                                                        "das",
                                                        "des",
                                                        "dem",
                                                        "den",
                                                        "von",
                                                        "im",
                                                        "bei",
                                                        "für",
                                                        "und",
                                                        "de",
                                                        "du",
                                                        "la",
                                                        "le",
                                                        "les",
                                                        "et",
                                                        "en",
                                                        "à",
                                                        "del",
                                                        "el",
                                                        "los",
                                                        "las",
                                                        "della",
                                                        "di",
                                                        "il",
                                                        "lo",
                                                        "per",
                                                        "value",
                                                        "values",
                                                        "result",
                                                        "results",
                                                        "measured",
                                                        "measurement",
                                                        "measurements",
                                                        "measuring",
                                                        "meas",
                                                        "test",
                                                        "actual",
                                                        "calibrated",
                                                        "calibration",
                                                        "cal",
                                                        "point",
                                                        "points",
                                                        "wert",
                                                        "werte",
                                                        "messwert",
                                                        "messwerte",
                                                        "gemessen",
                                                        "gemessene",
                                                        "gemessener",
                                                        "gemessenes",
                                                        "messung",
                                                        "messergebnis",
                                                        "messpunkt",
                                                        "ergebnis",
                                                        "ergebnisse",
                                                        "ist",
                                                        "istwert",
                                                        "kalibriert",
                                                        "kalibrierte",
                                                        "kalibrierter",
                                                        "kalibrierung",
                                                        "kalibrierwert",
                                                        "kalibrierergebnis",
                                                        "valeur",
                                                        "valeurs",
                                                        "mesuré",
                                                        "mesurée",
                                                        "mesurés",
                                                        "mesurées",
                                                        "mesure",
                                                        "mesures",
                                                        "résultat",
                                                        "résultats",
                                                        "étalonnage",
                                                        "étalonné",
                                                        "étalonnée",
                                                        "valor",
                                                        "valores",
                                                        "medido",
                                                        "medida",
                                                        "medición",
                                                        "resultado",
                                                        "resultados",
                                                        "calibración",
                                                        "calibrado",
                                                        "calibrada",
                                                        "punto",
                                                        "valore",
                                                        "valori",
                                                        "misurato",
                                                        "misurata",
                                                        "misura",
                                                        "risultato",
                                                        "risultati",
                                                        "taratura",
                                                        "instrument",
                                                        "on",
                                                        "sur",
                                                        "dut",
                                                        "uut",
                                                        "reading"};

constexpr std::array<std::string_view, 43> kUncertainty = {"u",
                                                           "u95",
                                                           "unc",
                                                           "uncert",
                                                           "uncertainty",
                                                           "uncertainties",
                                                           "unsicherheit",
                                                           "messunsicherheit",
                                                           "incertitude",
                                                           "incertitudes",
                                                           "incertidumbre",
                                                           "incertezza",
                                                           "expanded",
                                                           "extended",
                                                           "erweitert",
                                                           "erweiterte",
                                                           "erweiterter",
                                                           "élargie",
                                                           "expandida",
                                                           "estesa",
                                                           "k",
                                                           "coverage",
                                                           "factor",
                                                           "faktor",
                                                           "erweiterungsfaktor",
                                                           "facteur",
                                                           "élargissement",
                                                           "cobertura",
                                                           "copertura",
                                                           "confidence",
                                                           "level",
                                                           "probability",
                                                           "niveau",
                                                           "confiance",
                                                           "p",
                                                           "approx",
                                                           "ca",
                                                           "überdeckungswahrscheinlichkeit",
                                                           "reading",
                                                           "abs",
                                                           "absolute",
                                                           "exp",
                                                           "erw"};
constexpr std::array<std::string_view, 7> kRelative = {
    "rel", "relative", "relativ", "relativer", "relativa", "ppm", "percent"};
/// Words of an expanded uncertainty. A small "u" without them is the symbol of a standard one.
constexpr std::array<std::string_view, 15> kExpanded = {
    "expanded",  "extended", "erweitert", "erweiterte", "erweiterter",        "élargie",
    "expandida", "estesa",   "k",         "coverage",   "erweiterungsfaktor", "confidence",
    "u95",       "exp",      "erw"};

bool Has(Words words, std::string_view word) {
  return std::ranges::find(words, word) != words.end();
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsNumber(std::string_view word) {
  return !word.empty() && word.find_first_not_of("0123456789.,%") == std::string_view::npos &&
         IsDigit(word.front());
}

/// The number of bytes of what separates words at the beginning of a text, 0 for none. A point
/// between digits separates nothing.
std::size_t SeparatorAt(std::string_view text, bool isAfterDigit) {
  constexpr std::string_view kSingle = " ()[]{};:/=\"*_-+<>\t\r\n";
  constexpr std::array<std::string_view, 7> kLonger = {"\u00B1", "\u2013", "\u2014", "\u00D7",
                                                       "\u00B7", "\u2212", "\u00A0"};
  if (text.front() == '.' || text.front() == ',') {
    return isAfterDigit && text.size() > 1 && IsDigit(text[1]) ? 0 : 1;
  }
  if (kSingle.find(text.front()) != std::string_view::npos) {
    return 1;
  }
  const auto* found = std::ranges::find_if(
      kLonger, [&](std::string_view separator) { return text.starts_with(separator); });
  return found == kLonger.end() ? 0 : found->size();
}

/// The bytes of an apostrophe at the beginning of a text, 0 for none.
std::size_t ApostropheAt(std::string_view text) {
  constexpr std::string_view kTypographic = "\u2019";
  return text.front() == '\'' ? 1 : text.starts_with(kTypographic) ? kTypographic.size() : 0;
}

/// The words of a caption as they are written. Articles such as "d'" are none.
std::vector<std::string> WordsOf(std::string_view caption) {
  std::vector<std::string> words;
  std::string word;
  const auto finish = [&] {
    if (!word.empty()) {
      words.push_back(std::exchange(word, {}));
    }
  };
  while (!caption.empty()) {
    if (const std::size_t apostrophe = ApostropheAt(caption); apostrophe > 0) {
      word.clear();
      caption.remove_prefix(apostrophe);
    } else if (const std::size_t bytes =
                   SeparatorAt(caption, !word.empty() && IsDigit(word.back()));
               bytes > 0) {
      finish();
      caption.remove_prefix(bytes);
    } else {
      word += caption.front();
      caption.remove_prefix(1);
    }
  }
  finish();
  return words;
}

/// A caption without its unit, which has been judged with the values.
std::string WithoutUnit(std::string_view caption) {
  std::string text(caption);
  const std::string known = UnitOfCaption(caption);
  const std::string unit = known.empty() ? UnknownUnitOf(caption) : known;
  if (const std::size_t at = text.rfind(unit); !unit.empty() && at != std::string::npos) {
    text.replace(at, unit.size(), " ");
  }
  return text;
}

class Reader {
 public:
  Reader(std::string_view caption, const ModelColumn& column)
      : column_(column), written_(WordsOf(WithoutUnit(caption))) {
    for (const std::string& word : written_) {
      folded_.push_back(Folded(word));
    }
    const auto* found = std::ranges::find(kQuantities, column.quantity, &QuantityWords::quantity);
    quantity_ = found == kQuantities.end() ? Words() : found->words;
  }

  [[nodiscard]] CaptionReading Run() const {
    CaptionReading reading;
    bool isAfterUnknown = false;
    for (std::size_t i = 0; i < written_.size(); ++i) {
      reading.hasWords = true;
      reading.isNamed = reading.isNamed || Has(quantity_, folded_[i]);
      const bool isUnknown = !IsKnown(i);
      if (isUnknown && isAfterUnknown) {
        reading.unknown.back() += " " + written_[i];
      } else if (isUnknown) {
        reading.unknown.push_back(written_[i]);
      }
      isAfterUnknown = isUnknown;
    }
    return reading;
  }

 private:
  [[nodiscard]] bool IsKnown(std::size_t at) const {
    const std::string& word = folded_[at];
    if (column_.IsUncertainty() && (IsCoverage(at) || IsOfUncertainty(at))) {
      return true;
    }
    const std::optional<Unit> unit = UnitFrom(written_[at]);
    return Has(quantity_, word) || Has(kNeutral, word) ||
           (!IsNumber(word) && unit && column_.Takes(*unit));
  }

  [[nodiscard]] bool IsOfUncertainty(std::size_t at) const {
    const bool isSmall = written_[at] == "u" && std::ranges::none_of(folded_, [](const auto& word) {
                           return Has(kExpanded, word);
                         });
    return !isSmall && (Has(kUncertainty, folded_[at]) ||
                        (column_.role == ColumnRole::Relative && Has(kRelative, folded_[at])));
  }

  /// "2" after "k", and "95 %".
  [[nodiscard]] bool IsCoverage(std::size_t at) const {
    constexpr double kLeastProbability = 94;
    constexpr double kLargestProbability = 96;
    const std::string& word = folded_[at];
    if (word == "%") {
      return at > 0 && IsNumber(folded_[at - 1]);
    }
    std::string number = word.substr(0, word.find('%'));
    std::ranges::replace(number, ',', '.');
    const double value = NumericValueOrInfinity(number);
    return IsNumber(word) && ((at > 0 && folded_[at - 1] == "k") ||
                              (value >= kLeastProbability && value < kLargestProbability));
  }

  const ModelColumn& column_;
  std::vector<std::string> written_;
  std::vector<std::string> folded_;
  Words quantity_;
};

}  // namespace

CaptionReading ReadingOf(std::string_view caption, const ModelColumn& column) {
  return Reader(WithSingleBlanks(caption), column).Run();
}

}  // namespace tarvell
