// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <sys/utsname.h>

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
  const char* platform;
  const char* version;
  const char* name;
};

std::ostream& operator<<(std::ostream& out, const Version& shown) {
  return out << shown.family << ": " << shown.major << '.' << shown.minor << '.' << shown.build;
}

class PlainVersion : public testing::TestWithParam<Version> {};

TEST_P(PlainVersion, HasItsTexts) {
  OSVersionRecord record;
  record.family = GetParam().family;
  record.major = GetParam().major;
  record.minor = GetParam().minor;
  record.build = GetParam().build;
  const OSVersionTexts texts = DescribeOSVersion(record);
  EXPECT_EQ(texts.platform, GetParam().platform);
  EXPECT_EQ(texts.version, GetParam().version);
  EXPECT_EQ(texts.name, GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    FirstFamily, PlainVersion,
    testing::ValuesIn<Version>({
        {1, 3, 10, 103, "95", "3.10.103", "Windows(R) 3.1(3.10.103)"},
        {1, 3, 0, 1111, "95", "3.0.1111", "Windows(R) 3.1(3.0.1111)"},
        {1, 4, 0, 950, "95", "4.0.950", "Windows(R) 95(4.0.950)"},
        {1, 4, 0, 1111, "95", "4.0.1111", "Windows(R) 95 OSR2.0(4.0.1111)"},
        {1, 4, 0, 1212, "95", "4.0.1212", "Windows(R) 95 OSR2.1(4.0.1212)"},
        {1, 4, 0, 1214, "95", "4.0.1214", "Windows(R) 95 OSR2.5(4.0.1214)"},
        {1, 4, 0, 1213, "95", "4.0.1213", "Windows(R) 95(4.0.1213)"},
        {1, 4, 0, 2222, "95", "4.0.2222", "Windows(R) 95(4.0.2222)"},
        {1, 4, 10, 1998, "95", "4.10.1998", "Windows(R) 98(4.10.1998)"},
        {1, 4, 10, 2222, "95", "4.10.2222", "Windows(R) 98 Second Edition(4.10.2222)"},
        {1, 4, 10, 1111, "95", "4.10.1111", "Windows(R) 98(4.10.1111)"},
        {1, 4, 90, 3000, "95", "4.90.3000", "Windows(R) Millenium Edition(4.90.3000)"},
        {1, 4, 1, 7, "95", "4.1.7", "(4.1.7)"},
        {1, 4, 50, 1111, "95", "4.50.1111", "(4.50.1111)"},
        {1, 5, 0, 1, "95", "5.0.1", "Windows(5.0.1)"},
        {1, 2, 90, 1, "95", "2.90.1", "Windows(2.90.1)"},
        {1, 0, 0, 0, "95", "0.0.0", "Windows(0.0.0)"},
    }));

INSTANTIATE_TEST_SUITE_P(
    SecondFamily, PlainVersion,
    testing::ValuesIn<Version>({
        {2, 3, 51, 1057, "NT", "3.51.1057", "Windows(R) NT 3.5(3.51.1057)"},
        {2, 0, 0, 0, "NT", "0.0.0", "Windows(R) NT 3.5(0.0.0)"},
        {2, 5, 0, 2195, "NT", "5.0.2195", "Windows(R) 2000(5.0.2195)"},
        {2, 5, 1, 2600, "NT", "5.1.2600", "Windows(R) 2000(5.1.2600)"},
        {2, 6, 0, 6000, "NT", "6.0.6000", "Windows(R) NT(R) Unknown(6.0.6000)"},
        {2, 10, 0, 19045, "NT", "10.0.19045", "Windows(R) NT(R) Unknown(10.0.19045)"},
    }));

INSTANTIATE_TEST_SUITE_P(AnyOtherFamily, PlainVersion,
                         testing::ValuesIn<Version>({
                             {3, 4, 10, 2222, "95", "4.10.2222", "Windows(R) 3.1(4.10.2222)"},
                             {7, 1, 2, 3, "95", "1.2.3", "Windows(R) 3.1(1.2.3)"},
                         }));

std::string NameOf5(bool known, int productType, int servicePackMajor) {
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
  EXPECT_EQ(NameOf5(true, 1, 0), "Windows(R) 2000 Proffessional(5.0.2195)");
  EXPECT_EQ(NameOf5(true, 2, 0), "Windows(R) 2000 Domain Controller(5.0.2195)");
  EXPECT_EQ(NameOf5(true, 3, 0), "Windows(R) 2000 Server(5.0.2195)");
  EXPECT_EQ(NameOf5(true, 0, 0), "Windows(R) 2000(5.0.2195)");
  EXPECT_EQ(NameOf5(true, 4, 0), "Windows(R) 2000(5.0.2195)");
  EXPECT_EQ(NameOf5(true, 1, 1), "Windows(R) 2000 Proffessional 1(5.0.2195)");
  EXPECT_EQ(NameOf5(true, 3, 4), "Windows(R) 2000 Server 4(5.0.2195)");
  EXPECT_EQ(NameOf5(true, 9, 4), "Windows(R) 2000 4(5.0.2195)");
}

TEST(OSVersion, WithoutTheExtendedRecordNothingIsAdded) {
  EXPECT_EQ(NameOf5(false, 1, 4), "Windows(R) 2000(5.0.2195)");
}

std::string NameOf4(const std::string& servicePack) {
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
  EXPECT_EQ(NameOf4("Service Pack 6"), head + "Service Pack 6" + std::string(113, ' ') + tail);
  EXPECT_EQ(NameOf4("  Service Pack 6  "), head + "Service Pack 6" + std::string(113, ' ') + tail);
  EXPECT_EQ(NameOf4(""), head + std::string(127, ' ') + tail);
  EXPECT_EQ(NameOf4(std::string(127, 'x')), head + std::string(127, 'x') + tail);
  EXPECT_EQ(NameOf4(std::string(128, 'x')), head + std::string(127, 'x') + tail);
  // Characters count, not bytes.
  EXPECT_EQ(NameOf4("\u00C4\u00D6"), head + "\u00C4\u00D6" + std::string(125, ' ') + tail);
  const std::string x126(126, 'x');
  EXPECT_EQ(NameOf4(x126 + "\u00DF"), head + x126 + "\u00DF" + tail);
  EXPECT_EQ(NameOf4(x126 + "\u00DFy"), head + x126 + "\u00DF" + tail);
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
    if (tells) {
      record.family = 1;
      record.major = 4;
      record.minor = 10;
      record.build = 2222;
    }
    return tells;
  }

  bool tells = true;
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

TEST_F(OSVersionGlobals, AreFilledFromTheRecord) {
  GetOSVersion();
  EXPECT_EQ(gOSPlatform, "95");
  EXPECT_EQ(gOSVersion, "4.10.2222");
  EXPECT_EQ(gOSName, "Windows(R) 98 Second Edition(4.10.2222)");
}

TEST_F(OSVersionGlobals, TellOfAQueryThatFailed) {
  platform.tells = false;
  gOSPlatform.clear();
  GetOSVersion();
  EXPECT_EQ(gOSPlatform, "");
  EXPECT_EQ(gOSVersion, "FAIL");
  EXPECT_EQ(gOSName, "FAIL");
}

TEST_F(OSVersionGlobals, KeepThePlatformOfAnEarlierQuery) {
  GetOSVersion();
  platform.tells = false;
  GetOSVersion();
  EXPECT_EQ(gOSPlatform, "95");
  EXPECT_EQ(gOSVersion, "FAIL");
  EXPECT_EQ(gOSName, "FAIL");
}

TEST_F(OSVersionGlobals, AreThoseOfTheSystemItself) {
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
