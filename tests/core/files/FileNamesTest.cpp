// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/files/FileNames.h"
#include "support/ErrorOf.h"

namespace tarvell {
namespace {

using test::Contains;
using test::ErrorOf;

void ExpectRefused(std::string_view name) {
  SCOPED_TRACE(testing::PrintToString(name));
  const Error error = ErrorOf([&] { CheckFileName(name, "station name"); });
  EXPECT_EQ(error.Kind(), ErrorKind::Name);
  EXPECT_TRUE(Contains(error.Text(), "station name")) << error.Text();
}

TEST(CheckFileName, ACharacterThatNoNameMayHoldIsRefusedByName) {
  for (const char character : std::string_view("\\/:*?\"<>|")) {
    const std::string one(1, character);
    for (const std::string& name : {one, "a" + one, one + "a", "a" + one + "b"}) {
      ExpectRefused(name);
      const Error error = ErrorOf([&] { CheckFileName(name, "name"); });
      EXPECT_TRUE(Contains(error.Text(), one)) << error.Text();
    }
  }
}

TEST(CheckFileName, ControlCharactersAreRefused) {
  for (char character = 0; character < 32; ++character) {
    ExpectRefused("a" + std::string(1, character) + "b");
    ExpectRefused("ab" + std::string(1, character));
  }
  ExpectRefused(
      "a\x7F"
      "b");
}

TEST(CheckFileName, TheNamesOfFoldersThemselvesAreRefused) {
  ExpectRefused(".");
  ExpectRefused("..");
  ExpectRefused("...");
}

TEST(CheckFileName, NoNameAtAllIsRefused) {
  ExpectRefused("");
  ExpectRefused(" ");
}

TEST(CheckFileName, ATrailingDotOrBlankIsRefused) {
  ExpectRefused("station.");
  ExpectRefused("station ");
  ExpectRefused("station..");
  ExpectRefused("station. ");
  const Error error = ErrorOf([] { CheckFileName("station.", "name"); });
  EXPECT_TRUE(Contains(error.Text(), "\".\"")) << error.Text();
}

TEST(CheckFileName, TheNamesOfDevicesAreRefusedInEitherCaseAndWithAnExtension) {
  std::vector<std::string> devices = {"CON",       "PRN",       "AUX",       "NUL",
                                      "CONIN$",    "CONOUT$",   "COM\u00B9", "COM\u00B2",
                                      "COM\u00B3", "LPT\u00B9", "LPT\u00B2", "LPT\u00B3"};
  for (char digit = '0'; digit <= '9'; ++digit) {
    devices.push_back(std::string("COM") + digit);
    devices.push_back(std::string("LPT") + digit);
  }
  for (const std::string& device : devices) {
    ExpectRefused(device);
    std::string lower = device;
    for (char& letter : lower) {
      letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    ExpectRefused(lower);
    ExpectRefused(std::string(1, device[0]) + lower.substr(1));
    ExpectRefused(device + ".txt");
    ExpectRefused(device + ".a.b");
    const Error error = ErrorOf([&] { CheckFileName(device, "name"); });
    EXPECT_TRUE(Contains(error.Text(), device)) << error.Text();
  }
}

TEST(CheckFileName, ARaisedDigitCountsAsTheDigitOfADevice) {
  for (const char* digit : {"\xC2\xB9", "\xC2\xB2", "\xC2\xB3"}) {
    ExpectRefused(std::string("COM") + digit);
    ExpectRefused(std::string("lpt") + digit + ".txt");
    EXPECT_NO_THROW(CheckFileName(std::string("COM1") + digit, "name"));
    EXPECT_NO_THROW(CheckFileName(std::string("CO") + digit, "name"));
  }
}

TEST(CheckFileName, EveryOtherNameIsTaken) {
  for (const std::string_view name : {"PX12A",
                                      "SN12345",
                                      "a",
                                      "station one",
                                      " station",
                                      ".hidden",
                                      "a.b",
                                      "a..b",
                                      "CONX",
                                      "XCON",
                                      "CO",
                                      "COM",
                                      "LPT",
                                      "COM10",
                                      "LPT12",
                                      "NULL",
                                      "AUXILIARY",
                                      "a.CON",
                                      "CON-1",
                                      "a+b",
                                      "100%",
                                      "[a]",
                                      "(a)",
                                      "{a}",
                                      "a;b",
                                      "a,b",
                                      "a=b",
                                      "a&b",
                                      "#1",
                                      "~a",
                                      "a'b",
                                      "a`b",
                                      "$",
                                      "!",
                                      "@",
                                      "^",
                                      "_",
                                      "-",
                                      "1 \xC2\xB5H",
                                      "\xE2\x82\xAC",
                                      "Pr\xC3\xBCzision"}) {
    SCOPED_TRACE(name);
    EXPECT_NO_THROW(CheckFileName(name, "name"));
  }
}

TEST(DataFileName, KeepsTheLastFiveCharactersOfTheSerialNumber) {
  const std::vector<std::pair<std::string_view, std::string_view>> names = {
      {"12", "SN12"},
      {"1", "SN1"},
      {"12345", "SN12345"},
      {"ABC12345", "SN12345"},
      {"3318A12345", "SN12345"},
      {"3318A00001", "SN00001"},
      {"abcde", "SNabcde"},
      {"A 123", "SNA 123"},
      {"AB 1234", "SN 1234"},
  };
  for (const auto& [serial, name] : names) {
    SCOPED_TRACE(serial);
    EXPECT_EQ(DataFileName(serial), name);
  }
}

TEST(DataFileName, CountsCharactersAndNotBytes) {
  EXPECT_EQ(DataFileName("\xC2\xB5\xC2\xB5\xC2\xB5"), "SN\xC2\xB5\xC2\xB5\xC2\xB5");
  EXPECT_EQ(DataFileName("12\xE2\x82\xAC"
                         "4567"),
            "SN\xE2\x82\xAC"
            "4567");
  EXPECT_EQ(DataFileName("1\xE2\x82\xAC"
                         "34567"),
            "SN34567");
}

TEST(DataFileName, ADotThatComesIntoTheNameIsRefused) {
  for (const std::string_view serial :
       {"1.345", "ABC1.345", ".2345", "123.5", "1234.", "A.1234", "12.34567.9", "."}) {
    SCOPED_TRACE(serial);
    const Error error = ErrorOf([&] { (void)DataFileName(serial); });
    EXPECT_EQ(error.Kind(), ErrorKind::Name);
    EXPECT_TRUE(Contains(error.Text(), "\".\"")) << error.Text();
  }
}

TEST(DataFileName, ADotThatIsCutOffIsTaken) {
  EXPECT_EQ(DataFileName("A.12345"), "SN12345");
  EXPECT_EQ(DataFileName("..12345"), "SN12345");
}

TEST(DataFileName, WhatNoFileNameMayHoldIsRefused) {
  for (const std::string_view serial : {"12/45", "12\\45", "1:345", "123*5", "?2345", "123\"5",
                                        "<2345", "1234>", "12|45", "1\t345", "1\n345", "1234 "}) {
    SCOPED_TRACE(serial);
    EXPECT_EQ(ErrorOf([&] { (void)DataFileName(serial); }).Kind(), ErrorKind::Name);
  }
}

TEST(DataFileName, IsNeverTheNameOfADevice) {
  EXPECT_EQ(DataFileName("NUL"), "SNNUL");
  EXPECT_EQ(DataFileName("COM1"), "SNCOM1");
}

}  // namespace
}  // namespace tarvell
