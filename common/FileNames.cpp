// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "common/FileNames.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "common/Error.h"
#include "common/Text.h"

namespace tarvell {

namespace {

constexpr std::size_t kSerialCharacters = 5;
constexpr std::string_view kRefused = "\\/:*?\"<>|";
constexpr std::array<std::string_view, 4> kDevices = {"CON", "PRN", "AUX", "NUL"};
// 1, 2 and 3 raised count as digits of a device name.
constexpr std::array<std::string_view, 3> kSuperscripts = {"\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};

/// Device names are reserved with any extension, too.
bool IsDeviceName(std::string_view name) {
  const std::string base = ToUpper(Trim(name.substr(0, name.find('.'))));
  if (std::find(kDevices.begin(), kDevices.end(), base) != kDevices.end()) {
    return true;
  }
  if (base.substr(0, 3) != "COM" && base.substr(0, 3) != "LPT") {
    return false;
  }
  const std::string number = base.substr(3);
  return (number.size() == 1 && number[0] >= '1' && number[0] <= '9') ||
         std::find(kSuperscripts.begin(), kSuperscripts.end(), number) != kSuperscripts.end();
}

std::string NameOfCharacter(char c) {
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
  const auto* refused = std::find_if(name.begin(), name.end(), [](char c) {
    const auto code = static_cast<unsigned char>(c);
    return code < 0x20 || code == 0x7F || kRefused.find(c) != std::string_view::npos;
  });
  if (refused != name.end()) {
    Refuse(name, what, "it holds " + NameOfCharacter(*refused));
  }
  if (name == "." || name == "..") {
    Refuse(name, what, "it means a folder itself");
  }
  if (name.back() == '.' || name.back() == ' ') {
    Refuse(name, what,
           name.back() == '.' ? "it ends with the character \".\"" : "it ends with a blank");
  }
  if (IsDeviceName(name)) {
    Refuse(name, what, "it is the name of a device");
  }
}

std::string DataFileName(std::string_view serialNumber) {
  const std::string_view last = LastCharacters(serialNumber, kSerialCharacters);
  if (last.find('.') != std::string_view::npos) {
    throw Error(ErrorKind::Name,
                "The serial number \"" + std::string(serialNumber) +
                    "\" cannot be used: its last five characters, which name the data file, hold "
                    "the character \".\". Change it, then try again.");
  }
  std::string name = "SN" + std::string(last);
  CheckFileName(name, "The data file name");
  return name;
}

}  // namespace tarvell
