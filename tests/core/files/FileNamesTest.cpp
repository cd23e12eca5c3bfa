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

void ExpectRefused(const std::string& name, const std::string& why) {
  SCOPED_TRACE(testing::PrintToString(name));
  const Error error = ErrorOf([&] { CheckFileName(name, "The station name"); });
  EXPECT_EQ(error.Kind(), ErrorKind::Name);
  EXPECT_TRUE(Contains(error.Text(), "The station name \"")) << error.Text();
  EXPECT_TRUE(Contains(error.Text(), why)) << error.Text();
}

TEST(CheckFileName, RefusesCharactersThatNoNameMayHold) {
  for (const char character : std::string_view("\\/:*?\"<>|")) {
    const std::string one(1, character);
    for (const std::string& name : {one, "a" + one, one + "a"}) {
      ExpectRefused(name,
                    "it holds the character \"" + (one == "\"" ? " (double quote)" : one + "\""));
    }
  }
  for (int code = 0; code < 32; ++code) {
    ExpectRefused("a" + std::string(1, static_cast<char>(code)) + "b",
                  "it holds a control character (number " + std::to_string(code) + ")");
  }
  ExpectRefused("a\x7F", "it holds a control character (number 127)");
}

TEST(CheckFileName, RefusesEmptyNamesFoldersAndTrailingDotsOrBlanks) {
  ExpectRefused("", "it is empty");
  ExpectRefused(".", "it means a folder itself");
  ExpectRefused("..", "it means a folder itself");
  for (const char* name : {" ", "station ", "station. "}) {
    ExpectRefused(name, "it ends with a blank");
  }
  for (const char* name : {"...", "station.", "station.."}) {
    ExpectRefused(name, "it ends with the character \".\"");
  }
}

TEST(CheckFileName, RefusesDeviceNamesInAnyCaseWithBlanksAroundAndWithExtensions) {
  std::vector<std::string> devices = {"CON", "prn", "Aux", "NUL", "conin$", "CONOUT$"};
  for (const char* digit :
       {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "\u00B9", "\u00B2", "\u00B3"}) {
    devices.push_back(std::string("COM") + digit);
    devices.push_back(std::string("lpt") + digit);
  }
  for (const std::string& device : devices) {
    for (const std::string& name :
         {device, device + ".txt", device + ".a.b", device + " .txt", " " + device}) {
      ExpectRefused(name, "it is the name of a device");
    }
  }
}

TEST(CheckFileName, AcceptsEveryOtherName) {
  for (const std::string name : {"station one", " station", ".hidden", "a..b", "CONX", "XCON", "CO",
                                 "COM", "COM10", "LPT12", "CON-1", "a.CON", "COM1\u00B9", "100%",
                                 "[a]", "a;b,c=d", "#1~&'`", "$!@^_-+", "1 \u00B5H"}) {
    EXPECT_NO_THROW(CheckFileName(name, "name")) << name;
  }
}

TEST(DataFileName, KeepsTheLastFiveCharactersOfTheSerialNumber) {
  const std::vector<std::pair<std::string_view, std::string_view>> names = {
      {"1", "SN1"},
      {"3318A12345", "SN12345"},
      {"AB 1234", "SN 1234"},
      {"A.12345", "SN12345"},
      {"NUL", "SNNUL"},
      // Characters, not bytes.
      {"12\u20AC4567", "SN\u20AC4567"},
      {"1\u20AC34567", "SN34567"}};
  for (const auto& [serial, name] : names) {
    EXPECT_EQ(DataFileName(serial), name);
  }
}

TEST(DataFileName, RefusesWhatCannotBeTheNameOfAListedFile) {
  for (const std::string_view serial : {"ABC1.345", ".2345", "1234.", "A.1234"}) {
    const Error error = ErrorOf([&] { (void)DataFileName(serial); });
    EXPECT_EQ(error.Kind(), ErrorKind::Name) << serial;
    EXPECT_TRUE(Contains(error.Text(), "\".\"")) << error.Text();
  }
  for (const std::string_view serial : {"12/45", "12\\45", "1\t345", "1234 "}) {
    EXPECT_EQ(ErrorOf([&] { (void)DataFileName(serial); }).Kind(), ErrorKind::Name) << serial;
  }
}

}  // namespace
}  // namespace tarvell
