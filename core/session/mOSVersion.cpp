// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/session/mOSVersion.h"

#include "core/session/Tarvell_MainModule.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr int kWindows95Family = 1;
constexpr int kWindowsNTFamily = 2;
constexpr std::size_t kServicePackWidth = 127;

std::string TextOf95Family(const OSVersionRecord& record) {
  if (record.major == 3) {
    return "Windows(R) 3.1";
  }
  if (record.major != 4) {
    return "Windows";
  }
  switch (record.minor) {
    case 0:
      return std::string("Windows(R) 95") + (record.build == 1111   ? " OSR2.0"
                                             : record.build == 1212 ? " OSR2.1"
                                             : record.build == 1214 ? " OSR2.5"
                                                                    : "");
    case 10:
      return std::string("Windows(R) 98") + (record.build == 2222 ? " Second Edition" : "");
    case 90:
      return "Windows(R) Millenium Edition";
    default:
      return "";
  }
}

std::string TextOfWindows2000(const OSVersionRecord& record) {
  std::string name = "Windows(R) 2000";
  if (!record.hasProductType) {
    return name;
  }
  switch (record.productType) {
    case 1:
      name += " Proffessional";
      break;
    case 2:
      name += " Domain Controller";
      break;
    case 3:
      name += " Server";
      break;
    default:
      break;
  }
  if (record.servicePackMajor >= 1) {
    name += " " + std::to_string(record.servicePackMajor);
  }
  return name;
}

std::string TextOfNTFamily(const OSVersionRecord& record) {
  if (record.major >= 6) {
    return "Windows(R) NT(R) Unknown";
  }
  if (record.major == 5) {
    return TextOfWindows2000(record);
  }
  if (record.major < 4) {
    return "Windows(R) NT 3.5";
  }
  std::string servicePack(FirstCharacters(Trim(record.servicePack), kServicePackWidth));
  servicePack.append(kServicePackWidth - CharacterCount(servicePack), ' ');
  return "Windows(R) NT 4.0 Service Pack " + servicePack;
}

}  // namespace

OSVersionTexts DescribeOSVersion(const OSVersionRecord& record) {
  OSVersionTexts texts;
  std::string name;
  if (record.family == kWindows95Family) {
    texts.platform = "95";
    name = TextOf95Family(record);
  } else if (record.family == kWindowsNTFamily) {
    texts.platform = "NT";
    name = TextOfNTFamily(record);
  } else if (record.systemName.empty()) {
    texts.platform = "95";
    name = "Windows(R) 3.1";
  } else {
    texts.platform = record.systemName;
    name = record.systemName;
  }
  texts.version = std::to_string(record.major) + "." + std::to_string(record.minor) + "." +
                  std::to_string(record.build);
  texts.name = name + "(" + texts.version + ")";
  return texts;
}

void GetOSVersion() {
  OSVersionRecord record;
  if (!CurrentPlatform().QueryOSVersion(record)) {
    gOSVersion = "FAIL";
    gOSName = "FAIL";
    return;
  }
  OSVersionTexts texts = DescribeOSVersion(record);
  gOSPlatform = texts.platform;
  gOSVersion = texts.version;
  gOSName = texts.name;
}

}  // namespace tarvell
