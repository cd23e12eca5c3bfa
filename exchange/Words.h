// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_WORDS_H
#define TARVELL_EXCHANGE_WORDS_H

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

/// The words by which captions and header lines of certificates are recognised.
namespace tarvell {

/// `text` in small letters, those with accents included; blanks and underscores in a row become
/// one blank.
[[nodiscard]] std::string Folded(std::string_view text);

/// Folded words of captions of a column that names models, or members of a set, in English, German,
/// French, Spanish and Italian.
inline constexpr std::array<std::string_view, 10> kMemberWords = {
    "model",  "member", "standard", "type",   "modèle",
    "modelo", "normal", "étalon",   "patrón", "campione"};

/// Whether a folded text has one of these words or beginnings of words.
[[nodiscard]] bool HasWord(std::string_view folded, std::span<const std::string_view> words);

/// What a key line of a certificate names.
enum class KeyField {
  Model,
  SerialNumber,
  CalibrationNumber,
  CalDate,
  DueDate,
  Comment,
  Option,
  Format,
  Page,
  MemberSerial
};

/// The field that a key such as "Serial number:" names in English, German, French, Spanish or
/// Italian.
[[nodiscard]] std::optional<KeyField> KeyFieldOf(std::string_view key);

/// Whether every word of a folded key of a date is about calibrations and dates. "Payment due" has
/// another one.
[[nodiscard]] bool IsOnlyOfDates(std::string_view folded);

/// The key and the value of a cell such as "Serial no. 4711", with a blank between them; nothing
/// for any other one.
[[nodiscard]] std::optional<std::pair<std::string_view, std::string_view>> KeyAndValueIn(
    std::string_view cell);

/// Whether a folded key says that its value is a number: "certificate no.", "Zertifikatsnummer".
[[nodiscard]] bool NamesNumber(std::string_view folded);

/// Whether a folded text names an instrument that measures others: "power meter", "Messbrücke".
[[nodiscard]] bool NamesMeasuringDevice(std::string_view folded);

/// Whether a folded text names instruments that others were calibrated with: "standards used",
/// "Referenznormal", "power meter" ...
[[nodiscard]] bool NamesStandardUsed(std::string_view folded);

/// Whether a folded text is the heading of a list of such instruments.
[[nodiscard]] bool IsHeadingOfStandards(std::string_view folded);

/// Whether what a certificate calls its model is this model code, perhaps with the maker's name
/// before it or an option after it, and with other blanks and hyphens.
[[nodiscard]] bool NamesModel(std::string_view named, std::string_view code);

/// Whether a folded caption of a column says that it has serial numbers. "Série 1" names a series.
[[nodiscard]] bool NamesSerialNumber(std::string_view folded);

/// Whether a folded caption of a column says that it has serial numbers, dates, remarks or names,
/// not values.
[[nodiscard]] bool NamesNoValue(std::string_view folded);

}  // namespace tarvell

#endif
