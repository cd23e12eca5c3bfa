// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/FileNames.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "core/platform/Error.h"
#include "core/platform/ProgramPath.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::string_view kDataFile = "SN";
constexpr std::size_t kSerialCharacters = 5;
constexpr std::size_t kPartCharacters = 64;
constexpr std::string_view kRefused = ":*?\"<>|";
constexpr std::array<std::string_view, 6> kDevices = {"CON", "PRN",    "AUX",
                                                      "NUL", "CONIN$", "CONOUT$"};
// The digits of device names such as COM1, superscripts included.
constexpr std::array<std::string_view, 13> kDeviceDigits = {
    "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "\u00B9", "\u00B2", "\u00B3"};

bool IsRefused(char c) {
  const auto code = static_cast<unsigned char>(c);
  return code < 0x20 || code == 0x7F || IsPathSeparator(c) ||
         kRefused.find(c) != std::string_view::npos;
}

bool CannotEndName(char c) {
  return c == '.' || c == ' ';
}

/// A device name is also reserved with an extension, and with blanks around it.
bool IsDeviceName(std::string_view name) {
  const std::string base = ToUpper(Trim(name.substr(0, name.find('.'))));
  if (std::find(kDevices.begin(), kDevices.end(), base) != kDevices.end()) {
    return true;
  }
  return (base.substr(0, 3) == "COM" || base.substr(0, 3) == "LPT") &&
         std::ranges::find(kDeviceDigits, std::string_view(base).substr(3)) != kDeviceDigits.end();
}

std::string DescribedCharacter(char c) {
  const auto code = static_cast<unsigned char>(c);
  if (code < 0x20 || code == 0x7F) {
    return "a control character (number " + std::to_string(code) + ")";
  }
  return std::string("the character ") +
         (c == '"' ? "\" (double quote)" : std::string("\"") + c + "\"");
}

[[noreturn]] void Refuse(std::string_view name, const std::string& what, const std::string& why) {
  throw Error(ErrorKind::Name, what + " \"" + std::string(name) +
                                   "\" cannot be used as a file or folder name: " + why +
                                   ". Change it, then try again.");
}

}  // namespace

void CheckFileName(std::string_view name, const std::string& what) {
  if (name.empty()) {
    Refuse(name, what, "it is empty");
  }
  const auto* refused = std::find_if(name.begin(), name.end(), &IsRefused);
  if (refused != name.end()) {
    Refuse(name, what, "it holds " + DescribedCharacter(*refused));
  }
  if (name == "." || name == "..") {
    Refuse(name, what, "it means a folder itself");
  }
  if (CannotEndName(name.back())) {
    Refuse(name, what,
           name.back() == '.' ? "it ends with the character \".\"" : "it ends with a blank");
  }
  if (IsDeviceName(name)) {
    Refuse(name, what, "it is the name of a device");
  }
}

std::string FileNamePart(std::string_view text) {
  const bool isText = IsUtf8(text);
  std::string part(isText ? FirstCharacters(text, kPartCharacters)
                          : text.substr(0, kPartCharacters));
  std::ranges::replace_if(
      part, [isText](char c) { return IsRefused(c) || (!isText && (c & '\x80') != 0); }, '_');
  if (!part.empty() && CannotEndName(part.back())) {
    part.back() = '_';
  }
  return part;
}

bool IsDataFileName(std::string_view name) {
  return name.starts_with(kDataFile) || name.starts_with("Sn") || name.starts_with("sn");
}

std::string UncheckedDataFileName(std::string_view serialNumber) {
  return std::string(kDataFile) + std::string(LastCharacters(serialNumber, kSerialCharacters));
}

std::string DataFileName(std::string_view serialNumber) {
  std::string name = UncheckedDataFileName(serialNumber);
  if (name.find('.') != std::string::npos) {
    throw Error(ErrorKind::Name,
                "The serial number \"" + std::string(serialNumber) +
                    "\" cannot be used: its last five characters, which name the data file, hold "
                    "the character \".\". Change it, then try again.");
  }
  CheckFileName(name, "The data file name");
  return name;
}

}  // namespace tarvell
