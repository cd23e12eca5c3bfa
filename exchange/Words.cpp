// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/Words.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "core/numbers/WrittenNumber.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

struct Key {
  std::string_view word;
  KeyField field;
  bool isWhole = false;  ///< whether a key with other words besides it names something else
};

/// In the order in which they are compared: "next calibration date" also holds "calibration date".
constexpr std::array<Key, 87> kKeys = {{{"member serial", KeyField::MemberSerial},
                                        {"serial", KeyField::SerialNumber},
                                        {"serien", KeyField::SerialNumber},
                                        {"série", KeyField::SerialNumber},
                                        {"serie", KeyField::SerialNumber},
                                        {"s/n", KeyField::SerialNumber},
                                        {"matricola", KeyField::SerialNumber},
                                        {"ser. n", KeyField::SerialNumber},
                                        {"ser.n", KeyField::SerialNumber},
                                        {"ser n", KeyField::SerialNumber},
                                        {"ser.-n", KeyField::SerialNumber},
                                        {"s.n.", KeyField::SerialNumber},
                                        {"sn.", KeyField::SerialNumber, true},
                                        {"matr.", KeyField::SerialNumber},
                                        {"fabr.-n", KeyField::SerialNumber},
                                        {"fabr. n", KeyField::SerialNumber},
                                        {"nr seryjny", KeyField::SerialNumber},
                                        {"nr. seryjny", KeyField::SerialNumber},
                                        {"gerätenummer", KeyField::SerialNumber},
                                        {"gerätenr", KeyField::SerialNumber},
                                        {"geräte-nr", KeyField::SerialNumber},
                                        {"fabriknummer", KeyField::SerialNumber},
                                        {"fabrik-nr", KeyField::SerialNumber},
                                        {"fabrikationsnummer", KeyField::SerialNumber},
                                        {"sn", KeyField::SerialNumber, true},
                                        {"due", KeyField::DueDate},
                                        {"next cal", KeyField::DueDate},
                                        {"recal", KeyField::DueDate},
                                        {"nächste", KeyField::DueDate},
                                        {"rekal", KeyField::DueDate},
                                        {"fällig", KeyField::DueDate},
                                        {"prochain", KeyField::DueDate},
                                        {"échéance", KeyField::DueDate},
                                        {"próxima", KeyField::DueDate},
                                        {"vencimiento", KeyField::DueDate},
                                        {"prossima", KeyField::DueDate},
                                        {"scadenza", KeyField::DueDate},
                                        {"calibration date", KeyField::CalDate},
                                        {"cal date", KeyField::CalDate},
                                        {"cal. date", KeyField::CalDate},
                                        {"date of cal", KeyField::CalDate},
                                        {"calibrated on", KeyField::CalDate},
                                        {"calibrated date", KeyField::CalDate},
                                        {"date calibrated", KeyField::CalDate},
                                        {"kalibrierdatum", KeyField::CalDate},
                                        {"datum der kalibrierung", KeyField::CalDate},
                                        {"kalibriert am", KeyField::CalDate},
                                        {"kal.-datum", KeyField::CalDate},
                                        {"kal.datum", KeyField::CalDate},
                                        {"kal. datum", KeyField::CalDate},
                                        {"date d'étalonnage", KeyField::CalDate},
                                        {"date d\u2019étalonnage", KeyField::CalDate},
                                        {"date de l'étalonnage", KeyField::CalDate},
                                        {"étalonné le", KeyField::CalDate},
                                        {"date of measurement", KeyField::CalDate},
                                        {"measurement date", KeyField::CalDate},
                                        {"messdatum", KeyField::CalDate},
                                        {"date de mesure", KeyField::CalDate},
                                        {"fecha de calib", KeyField::CalDate},
                                        {"data di taratura", KeyField::CalDate},
                                        {"certificate", KeyField::CalibrationNumber},
                                        {"calibration n", KeyField::CalibrationNumber},
                                        {"cal. n", KeyField::CalibrationNumber},
                                        {"cal no", KeyField::CalibrationNumber},
                                        {"cal. no", KeyField::CalibrationNumber},
                                        {"kalibrierschein", KeyField::CalibrationNumber},
                                        {"kalibriernummer", KeyField::CalibrationNumber},
                                        {"zertifikat", KeyField::CalibrationNumber},
                                        {"certificat", KeyField::CalibrationNumber},
                                        {"certificado", KeyField::CalibrationNumber},
                                        {"model", KeyField::Model},
                                        {"modèle", KeyField::Model},
                                        {"type", KeyField::Model},
                                        {"typ", KeyField::Model},
                                        {"tipo", KeyField::Model},
                                        {"comment", KeyField::Comment},
                                        {"remark", KeyField::Comment},
                                        {"bemerkung", KeyField::Comment},
                                        {"kommentar", KeyField::Comment},
                                        {"remarque", KeyField::Comment},
                                        {"observaci", KeyField::Comment},
                                        {"comentari", KeyField::Comment},
                                        {"option", KeyField::Option},
                                        {"format", KeyField::Format},
                                        {"page", KeyField::Page},
                                        {"seite", KeyField::Page},
                                        {"datum", KeyField::CalDate, true}}};

/// The certificate and the dates of a standard that was used are not those of the instrument.
constexpr std::array<std::string_view, 8> kStandards = {
    "reference", "referenz", "référence", "standard", "normal", "étalon ", "campione", "patrón"};

/// Certificates that are not the one of this calibration.
constexpr std::array<std::string_view, 12> kOtherCertificates = {
    "accred", "akkred",   "accréd", "acred",   "iso ",    "iso/",
    "iso-",   "supersed", "replac", "ersetzt", "remplac", "sostitu"};

/// What a certificate is called. Such a text is a key by itself; with other words, as in
/// "Certificate type", only if it also names a number.
constexpr std::array<std::string_view, 13> kCertificates = {"certificate",
                                                            "calibration certificate",
                                                            "certificate of calibration",
                                                            "kalibrierschein",
                                                            "kalibrierzertifikat",
                                                            "zertifikat",
                                                            "certificat",
                                                            "certificat d'étalonnage",
                                                            "certificat d\u2019étalonnage",
                                                            "certificado",
                                                            "certificado de calibración",
                                                            "certificato",
                                                            "certificato di taratura"};

/// A key is short; a sentence that holds one of the words is none.
constexpr std::size_t kLongestKey = 40;

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) > 0x7F;
}

/// Where a word begins in a folded text with `word`.
std::size_t FindWord(std::string_view folded, std::string_view word) {
  std::size_t at = folded.find(word);
  while (at != std::string_view::npos && at > 0 && IsLetter(folded[at - 1])) {
    at = folded.find(word, at + 1);
  }
  return at;
}

/// "Certificate date" is not a number. German joins words, as in "Zertifikatsdatum".
bool NamesDate(std::string_view folded) {
  constexpr std::array<std::string_view, 5> kWords = {"date", "datum", "fecha", "issued",
                                                      "ausgestellt"};
  return FindWord(folded, "data") != std::string_view::npos ||
         std::ranges::any_of(kWords, [&](std::string_view word) {
           return folded.find(word) != std::string_view::npos;
         });
}

/// Whether a folded key names the number of the certificate itself.
bool NamesCertificate(std::string_view folded) {
  const std::string_view whole =
      WithoutBlanks(folded.ends_with(':') ? folded.substr(0, folded.size() - 1) : folded);
  return (NamesNumber(folded) || std::ranges::find(kCertificates, whole) != kCertificates.end()) &&
         !NamesDate(folded) && !HasWord(folded, kOtherCertificates);
}

std::string WithoutGaps(std::string_view text) {
  std::string plain;
  for (const char c : text) {
    plain += c == ' ' || c == '-' || c == '_' ? "" : std::string(1, c);
  }
  return plain;
}

/// Whether `holds` is true of each word of a folded text, which is a run of letters.
template <typename Holds>
bool AllWords(std::string_view folded, const Holds& holds) {
  for (std::size_t at = 0; at < folded.size(); ++at) {
    const std::size_t begin = at;
    while (at < folded.size() && IsLetter(folded[at])) {
      ++at;
    }
    if (at > begin && !holds(folded.substr(begin, at - begin))) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::string Folded(std::string_view text) {
  constexpr unsigned char kLatin = 0xC3;  // the first byte of U+00C0 to U+00FF
  std::string folded;
  for (const char c : WithoutBlanks(text)) {
    const auto byte = static_cast<unsigned char>(c);
    if (c >= 'A' && c <= 'Z') {
      folded += static_cast<char>(c - 'A' + 'a');
    } else if (c == ' ' || c == '_' || c == '\t' || c == '\n' || c == '\r') {
      folded += folded.ends_with(' ') ? "" : " ";
    } else if (!folded.empty() && static_cast<unsigned char>(folded.back()) == kLatin &&
               byte >= 0x80 && byte <= 0x9E) {
      folded += static_cast<char>(byte + 0x20);
    } else {
      folded += c;
    }
  }
  return folded;
}

bool HasWord(std::string_view folded, std::span<const std::string_view> words) {
  return std::ranges::any_of(words, [&](std::string_view word) {
    return FindWord(folded, word) != std::string_view::npos;
  });
}

std::optional<KeyField> KeyFieldOf(std::string_view key) {
  const std::string folded = Folded(key);
  if (folded.size() > kLongestKey) {
    return std::nullopt;
  }
  for (const Key& known : kKeys) {
    const bool isFound = known.isWhole
                             ? folded == known.word || folded == std::string(known.word) + ":"
                             : FindWord(folded, known.word) != std::string_view::npos;
    if (isFound) {
      const bool isNumber = known.field == KeyField::CalibrationNumber;
      const bool isOfDate = known.field == KeyField::CalDate || known.field == KeyField::DueDate;
      const bool isOther = (isNumber && !NamesCertificate(folded)) ||
                           ((isNumber || isOfDate) && HasWord(folded, kStandards));
      return isOther ? std::nullopt : std::optional(known.field);
    }
  }
  return std::nullopt;
}

bool NamesNumber(std::string_view folded) {
  constexpr std::array<std::string_view, 5> kWords = {"no", "nr", "n", "id", "nro"};
  constexpr std::array<std::string_view, 5> kBeginnings = {"num", "núm", "n\u00B0", "n\u00BA", "#"};
  // German joins words, as in "Zertifikatsnummer".
  const bool isNone = AllWords(folded, [&](std::string_view word) {
    return std::ranges::find(kWords, word) == kWords.end() && !word.ends_with("nr") &&
           !word.ends_with("nummer");
  });
  return !isNone || HasWord(folded, kBeginnings);
}

bool IsOnlyOfDates(std::string_view folded) {
  constexpr std::array<std::string_view, 62> kBeginnings = {
      "cal",   "kal",    "recal", "rekal",  "étal",       "tarat",  "date",    "datum",   "data",
      "fecha", "due",    "next",  "recomm", "empf",       "nächst", "fällig",  "termin",  "proch",
      "échéa", "prévu",  "mesur", "meas",   "mess",       "próxim", "vencim",  "prossim", "scaden",
      "valid", "gültig", "of",    "on",     "the",        "by",     "until",   "for",     "der",
      "die",   "am",     "zum",   "bis",    "vom",        "le",     "la",      "du",      "de",
      "d",     "l",      "di",    "del",    "della",      "dd",     "mm",      "yy",      "tt",
      "jj",    "aa",     "iso",   "item",   "instrument", "gerät",  "perform", "durchf"};
  return AllWords(folded, [&](std::string_view word) {
    return std::ranges::any_of(kBeginnings, [&](std::string_view known) {
      return known.size() < 3 ? word == known || word == std::string(known).append(known)
                              : word.starts_with(known);
    });
  });
}

std::optional<std::pair<std::string_view, std::string_view>> KeyAndValueIn(std::string_view cell) {
  constexpr std::string_view kDigits = "0123456789";
  constexpr std::array<std::string_view, 4> kSerials = {"s/n", "sn", "s.n.", "matricola"};
  const std::size_t blank = std::min(cell.rfind(' '), cell.size());
  const std::string_view key = cell.substr(0, blank);
  const std::string_view value = cell.substr(std::min(blank + 1, cell.size()));
  const std::string folded = Folded(key);
  const std::optional<KeyField> field = KeyFieldOf(key);
  const bool isNumber =
      NamesNumber(folded) || std::ranges::find(kSerials, folded) != kSerials.end();
  const bool isKey = field == KeyField::SerialNumber || field == KeyField::CalibrationNumber;
  // "PX11A S/N 4711" has the model before the key.
  const bool isPlain =
      folded.ends_with(" s/n") || key.find_first_of(kDigits) == std::string_view::npos;
  const bool isPair =
      isKey && isNumber && isPlain && value.find_first_of(kDigits) != std::string_view::npos;
  return isPair ? std::optional(std::pair(key, value)) : std::nullopt;
}

bool NamesMeasuringDevice(std::string_view folded) {
  constexpr std::array<std::string_view, 20> kDevices = {
      "power meter", "powermeter",   "leistungsmess", "wattmètre",  "misuratore",
      "medidor",     "multimet",     "analyzer",      "analyser",   "analysator",
      "analyseur",   "analizzatore", "generator",     "générateur", "splitter",
      "bridge",      "messbrücke",   "thermomet",     "receiver",   "counter"};
  return HasWord(folded, kDevices);
}

bool NamesStandardUsed(std::string_view folded) {
  return HasWord(std::string(folded) + " ", kStandards) || NamesMeasuringDevice(folded) ||
         IsHeadingOfStandards(folded);
}

bool IsHeadingOfStandards(std::string_view folded) {
  constexpr std::array<std::string_view, 26> kHeadings = {"standards used",
                                                          "standard used",
                                                          "used standards",
                                                          "reference standard",
                                                          "reference equipment",
                                                          "reference instr",
                                                          "equipment used",
                                                          "test equipment",
                                                          "measuring equipment",
                                                          "instruments used",
                                                          "working standard",
                                                          "traceab",
                                                          "verwendete",
                                                          "referenznormal",
                                                          "gebrauchsnormal",
                                                          "messmittel",
                                                          "prüfmittel",
                                                          "rückführ",
                                                          "étalons utilisés",
                                                          "étalon utilisé",
                                                          "moyens",
                                                          "équipements utilis",
                                                          "instruments utilis",
                                                          "campioni",
                                                          "strumenti utilizzati",
                                                          "patrones"};
  return HasWord(folded, kHeadings);
}

bool NamesModel(std::string_view named, std::string_view code) {
  return ContainsIgnoringCase(WithoutGaps(named), code);
}

bool NamesSerialNumber(std::string_view folded) {
  constexpr std::array<std::string_view, 8> kWords = {
      "serial", "s/n", "seriennummer", "seriennr", "serien-n", "de série", "de serie", "matricola"};
  return folded.size() <= kLongestKey && HasWord(folded, kWords);
}

bool NamesNoValue(std::string_view folded) {
  constexpr std::array<std::string_view, 13> kWhole = {
      "no",   "no.", "nr",   "nr.",   "n\u00B0",  "#",   "pos",
      "pos.", "id",  "item", "index", "lfd. nr.", "data"};
  constexpr std::array<std::string_view, 31> kWords = {
      "note",      "hinweis",   "anmerk",    "nota",    "operator", "bearbeiter",  "prüfer",
      "opérat",    "operador",  "operatore", "name",    "nom ",     "time",        "uhrzeit",
      "zeit",      "heure",     "hora",      "asset",   "invent",   "order",       "auftrag",
      "lot",       "charge",    "batch",     "channel", "kanal",    "bezeichnung", "identif",
      "prüfdatum", "messdatum", "ordine"};
  return std::ranges::find(kWhole, folded) != kWhole.end() || HasWord(folded, kWords) ||
         KeyFieldOf(folded).has_value() ||
         (NamesDate(folded) && FindWord(folded, "data") == std::string_view::npos);
}

}  // namespace tarvell
