// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <sys/utsname.h>
#include <vector>

#include "core/platform/ForwardingPlatform.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/session/mOSVersion.h"

namespace tarvell {
namespace {

struct Version {
  int family;
  int major;
  int minor;
  int build;
  const char* name;  ///< without the version in parentheses
};

// The texts of the versions that need no further record.
TEST(OSVersion, NamesEveryPlainVersion) {
  for (const Version& version :
       std::vector<Version>{{1, 3, 10, 103, "Windows(R) 3.1"},
                            {1, 3, 0, 1111, "Windows(R) 3.1"},
                            {1, 4, 0, 950, "Windows(R) 95"},
                            {1, 4, 0, 1111, "Windows(R) 95 OSR2.0"},
                            {1, 4, 0, 1212, "Windows(R) 95 OSR2.1"},
                            {1, 4, 0, 1214, "Windows(R) 95 OSR2.5"},
                            {1, 4, 0, 2222, "Windows(R) 95"},
                            {1, 4, 10, 1998, "Windows(R) 98"},
                            {1, 4, 10, 2222, "Windows(R) 98 Second Edition"},
                            {1, 4, 10, 1111, "Windows(R) 98"},
                            {1, 4, 90, 3000, "Windows(R) Millenium Edition"},
                            {1, 4, 50, 1111, ""},
                            {1, 5, 0, 1, "Windows"},
                            {1, 2, 90, 1, "Windows"},
                            {2, 3, 51, 1057, "Windows(R) NT 3.5"},
                            {2, 0, 0, 0, "Windows(R) NT 3.5"},
                            {2, 5, 1, 2600, "Windows(R) 2000"},
                            {2, 6, 0, 6000, "Windows(R) NT(R) Unknown"},
                            {2, 10, 0, 19045, "Windows(R) NT(R) Unknown"},
                            {3, 4, 10, 2222, "Windows(R) 3.1"},
                            {7, 1, 2, 3, "Windows(R) 3.1"}}) {
    OSVersionRecord record;
    record.family = version.family;
    record.major = version.major;
    record.minor = version.minor;
    record.build = version.build;
    const OSVersionTexts texts = DescribeOSVersion(record);
    const std::string number = std::to_string(version.major) + "." + std::to_string(version.minor) +
                               "." + std::to_string(version.build);
    EXPECT_EQ(texts.platform, version.family == 2 ? "NT" : "95") << number;
    EXPECT_EQ(texts.version, number);
    EXPECT_EQ(texts.name, version.name + ("(" + number + ")"));
  }
}

std::string TextOf2000(bool known, int productType, int servicePackMajor) {
  OSVersionRecord record;
  record.family = 2;
  record.major = 5;
  record.build = 2195;
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
  EXPECT_EQ(TextOf2000(true, 0, 0), "Windows(R) 2000(5.0.2195)");
  EXPECT_EQ(TextOf2000(true, 4, 0), "Windows(R) 2000(5.0.2195)");
  EXPECT_EQ(TextOf2000(true, 1, 1), "Windows(R) 2000 Proffessional 1(5.0.2195)");
  EXPECT_EQ(TextOf2000(true, 3, 4), "Windows(R) 2000 Server 4(5.0.2195)");
  EXPECT_EQ(TextOf2000(true, 9, 4), "Windows(R) 2000 4(5.0.2195)");
  EXPECT_EQ(TextOf2000(false, 1, 4), "Windows(R) 2000(5.0.2195)");
}

std::string TextOfNT4(const std::string& servicePack) {
  OSVersionRecord record;
  record.family = 2;
  record.major = 4;
  record.build = 1381;
  record.servicePack = servicePack;
  record.hasProductType = true;
  record.productType = 1;
  record.servicePackMajor = 6;
  return DescribeOSVersion(record).name;
}

TEST(OSVersion, TheServicePackTextFillsItsField) {
  const std::string head = "Windows(R) NT 4.0 Service Pack ";
  const std::string tail = "(4.0.1381)";
  EXPECT_EQ(TextOfNT4("Service Pack 6"), head + "Service Pack 6" + std::string(113, ' ') + tail);
  EXPECT_EQ(TextOfNT4("  Service Pack 6  "),
            head + "Service Pack 6" + std::string(113, ' ') + tail);
  EXPECT_EQ(TextOfNT4(""), head + std::string(127, ' ') + tail);
  EXPECT_EQ(TextOfNT4(std::string(127, 'x')), head + std::string(127, 'x') + tail);
  EXPECT_EQ(TextOfNT4(std::string(128, 'x')), head + std::string(127, 'x') + tail);
  // Characters count, not bytes.
  EXPECT_EQ(TextOfNT4("\u00C4\u00D6"), head + "\u00C4\u00D6" + std::string(125, ' ') + tail);
  const std::string x126(126, 'x');
  EXPECT_EQ(TextOfNT4(x126 + "\u00DF"), head + x126 + "\u00DF" + tail);
  EXPECT_EQ(TextOfNT4(x126 + "\u00DFy"), head + x126 + "\u00DF" + tail);
}

TEST(OSVersion, ASystemWithoutFamiliesHasItsOwnName) {
  OSVersionRecord record;
  record.systemName = "Linux";
  record.major = 6;
  record.minor = 1;
  record.build = 42;
  const OSVersionTexts texts = DescribeOSVersion(record);
  EXPECT_EQ(texts.platform, "Linux");
  EXPECT_EQ(texts.version, "6.1.42");
  EXPECT_EQ(texts.name, "Linux(6.1.42)");
}

class VersionPlatform : public ForwardingPlatform {
 public:
  [[nodiscard]] bool QueryOSVersion(OSVersionRecord& record) override {
    if (reportsVersion) {
      record.family = 1;
      record.major = 4;
      record.minor = 10;
      record.build = 2222;
    }
    return reportsVersion;
  }

  bool reportsVersion = true;
};

class OSVersionGlobals : public testing::Test {
 public:
  OSVersionGlobals() : before_(SetCurrentPlatform(&platform)) {}
  OSVersionGlobals(const OSVersionGlobals&) = delete;
  OSVersionGlobals& operator=(const OSVersionGlobals&) = delete;
  ~OSVersionGlobals() override {
    SetCurrentPlatform(before_);
    gOSPlatform.clear();
    gOSVersion.clear();
    gOSName.clear();
  }

  VersionPlatform platform;

 private:
  Platform* before_;
};

TEST_F(OSVersionGlobals, ComeFromTheRecord) {
  GetOSVersion();
  EXPECT_EQ(gOSPlatform, "95");
  EXPECT_EQ(gOSVersion, "4.10.2222");
  EXPECT_EQ(gOSName, "Windows(R) 98 Second Edition(4.10.2222)");
}

TEST_F(OSVersionGlobals, SayFailAfterAFailedQueryAndKeepThePlatform) {
  GetOSVersion();
  platform.reportsVersion = false;
  GetOSVersion();
  EXPECT_EQ(gOSPlatform, "95");
  EXPECT_EQ(gOSVersion, "FAIL");
  EXPECT_EQ(gOSName, "FAIL");
}

TEST_F(OSVersionGlobals, DescribeTheRunningSystem) {
  SetCurrentPlatform(nullptr);
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

}  // namespace
}  // namespace tarvell
