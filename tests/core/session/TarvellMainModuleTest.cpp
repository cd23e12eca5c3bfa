// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <sys/utsname.h>
#include <utility>
#include <vector>

#include "core/platform/ForwardingPlatform.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/session/mOSVersion.h"

namespace tarvell {
namespace {

OSVersionRecord RecordOf(int family, int major, int minor, int build) {
  OSVersionRecord record;
  record.family = family;
  record.major = major;
  record.minor = minor;
  record.build = build;
  return record;
}

TEST(OSVersion, NamesEveryPlainVersion) {
  // Each with its name, without the version in parentheses.
  const std::vector<std::pair<OSVersionRecord, std::string>> versions = {
      {RecordOf(1, 3, 10, 103), "Windows(R) 3.1"},
      {RecordOf(1, 4, 0, 950), "Windows(R) 95"},
      {RecordOf(1, 4, 0, 1111), "Windows(R) 95 OSR2.0"},
      {RecordOf(1, 4, 0, 1212), "Windows(R) 95 OSR2.1"},
      {RecordOf(1, 4, 0, 1214), "Windows(R) 95 OSR2.5"},
      {RecordOf(1, 4, 10, 2222), "Windows(R) 98 Second Edition"},
      {RecordOf(1, 4, 10, 1111), "Windows(R) 98"},
      {RecordOf(1, 4, 90, 3000), "Windows(R) Millenium Edition"},
      {RecordOf(1, 4, 50, 1111), ""},
      {RecordOf(1, 5, 0, 1), "Windows"},
      {RecordOf(2, 3, 51, 1057), "Windows(R) NT 3.5"},
      {RecordOf(2, 5, 1, 2600), "Windows(R) 2000"},
      {RecordOf(2, 6, 0, 6000), "Windows(R) NT(R) Unknown"},
      {RecordOf(3, 4, 10, 2222), "Windows(R) 3.1"},
      {RecordOf(7, 1, 2, 3), "Windows(R) 3.1"}};
  for (const auto& [record, name] : versions) {
    const OSVersionTexts texts = DescribeOSVersion(record);
    const std::string number = std::to_string(record.major) + "." + std::to_string(record.minor) +
                               "." + std::to_string(record.build);
    EXPECT_EQ(texts.platform, record.family == 2 ? "NT" : "95") << number;
    EXPECT_EQ(texts.version, number);
    EXPECT_EQ(texts.name, name + "(" + number + ")");
  }
}

std::string TextOf2000(bool known, int productType, int servicePackMajor) {
  OSVersionRecord record = RecordOf(2, 5, 0, 2195);
  record.hasProductType = known;
  record.productType = productType;
  record.servicePackMajor = servicePackMajor;
  record.servicePack = "Service Pack 9";
  return DescribeOSVersion(record).name;
}

TEST(OSVersion, TheExtendedRecordAddsProductAndServicePack) {
  EXPECT_EQ(TextOf2000(true, 1, 0), "Windows(R) 2000 Proffessional(5.0.2195)");
  EXPECT_EQ(TextOf2000(true, 2, 0), "Windows(R) 2000 Domain Controller(5.0.2195)");
  EXPECT_EQ(TextOf2000(true, 3, 0), "Windows(R) 2000 Server(5.0.2195)");
  EXPECT_EQ(TextOf2000(true, 4, 0), "Windows(R) 2000(5.0.2195)");
  EXPECT_EQ(TextOf2000(true, 1, 1), "Windows(R) 2000 Proffessional 1(5.0.2195)");
  EXPECT_EQ(TextOf2000(true, 3, 4), "Windows(R) 2000 Server 4(5.0.2195)");
  EXPECT_EQ(TextOf2000(false, 1, 4), "Windows(R) 2000(5.0.2195)");
}

std::string TextOfNT4(const std::string& servicePack) {
  OSVersionRecord record = RecordOf(2, 4, 0, 1381);
  record.servicePack = servicePack;
  record.hasProductType = true;
  record.productType = 1;
  record.servicePackMajor = 6;
  return DescribeOSVersion(record).name;
}

TEST(OSVersion, TheServicePackTextFillsItsField) {
  const std::string head = "Windows(R) NT 4.0 Service Pack ";
  const std::string tail = "(4.0.1381)";
  for (const auto& [servicePack, field] :
       {std::pair(std::string("  Service Pack 6  "), "Service Pack 6" + std::string(113, ' ')),
        std::pair(std::string(), std::string(127, ' ')),
        std::pair(std::string(127, 'x'), std::string(127, 'x')),
        std::pair(std::string(128, 'x'), std::string(127, 'x')),
        // Characters count, not bytes.
        std::pair(std::string("\u00C4\u00D6"), "\u00C4\u00D6" + std::string(125, ' ')),
        std::pair(std::string(126, 'x') + "\u00DFy", std::string(126, 'x') + "\u00DF")}) {
    EXPECT_EQ(TextOfNT4(servicePack), head + field + tail);
  }
}

class VersionPlatform : public ForwardingPlatform {
 public:
  [[nodiscard]] bool QueryOSVersion(OSVersionRecord& record) override {
    record = RecordOf(1, 4, 10, 2222);
    return reportsVersion;
  }

  bool reportsVersion = true;
};

TEST(OSVersionGlobals, SayFailAfterAFailedQueryAndKeepThePlatform) {
  VersionPlatform platform;
  Platform* const before = SetCurrentPlatform(&platform);
  GetOSVersion();
  EXPECT_EQ(gOSPlatform, "95");
  EXPECT_EQ(gOSVersion, "4.10.2222");
  EXPECT_EQ(gOSName, "Windows(R) 98 Second Edition(4.10.2222)");
  platform.reportsVersion = false;
  GetOSVersion();
  SetCurrentPlatform(before);
  EXPECT_EQ(gOSPlatform, "95");
  EXPECT_EQ(gOSVersion, "FAIL");
  EXPECT_EQ(gOSName, "FAIL");
}

// A system without families has its own name.
TEST(OSVersionGlobals, DescribeTheRunningSystem) {
  GetOSVersion();
  utsname system{};
  ASSERT_EQ(::uname(&system), 0);
  const std::string release = system.release;
  EXPECT_EQ(gOSPlatform, "Linux");
  ASSERT_EQ(std::count(gOSVersion.begin(), gOSVersion.end(), '.'), 2) << gOSVersion;
  EXPECT_EQ(gOSVersion.find_first_not_of("0123456789."), std::string::npos) << gOSVersion;
  EXPECT_TRUE(release.starts_with(gOSVersion.substr(0, gOSVersion.rfind('.'))))
      << gOSVersion << " of " << release;
  EXPECT_EQ(gOSName, "Linux(" + gOSVersion + ")");
}

TEST(RevisionText, HasTwoDigitsForEachNumber) {
  EXPECT_EQ(RevisionText(2, 61), "A.02.61");
  EXPECT_EQ(RevisionText(2, 5), "A.02.05");
  EXPECT_EQ(RevisionText(100, 250), "A.100.250");
}

TEST(FindCalFile, GivesTheRowOfTheFirstOfExactlyThatSerialNumber) {
  gCalFiles.fill({});
  gCalFiles[3].SerialNumber = "12345";
  gCalFiles[7].SerialNumber = "12345";
  gCalFiles[50].SerialNumber = "A1";
  EXPECT_EQ(FindCalFile("12345"), 3);
  EXPECT_EQ(FindCalFile("A1"), 50);
  for (const std::string_view none : {"a1", "A1 ", " A1", "1234", "A"}) {
    SCOPED_TRACE(none);
    EXPECT_EQ(FindCalFile(none), 51);
  }
  gCalFiles.fill({});
}

}  // namespace
}  // namespace tarvell
