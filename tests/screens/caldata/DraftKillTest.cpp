// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QtCore>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <random>
#include <sstream>
#include <string>
#include <thread>

#include "support/ErrorOf.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

/// What the editor showed, and when (ms).
struct Look {
  std::int64_t time = 0;
  std::string shown;
};

std::int64_t Now() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

/// Programs whose users type, that are killed and started again (DraftTypist.cpp).
class KilledEditor : public testing::TestWithParam<int> {
 protected:
  KilledEditor() {
    for (const char* model : {"PX12A", "RT520C"}) {
      tree_.InstallTemplate(model);
      tree_.Write(std::string("c:\\calfactors\\") + model + "\\SN12345",
                  ReadNative(tree_.ProgramFolder() / (std::string("Temp") + model)));
    }
    WriteNative(Output(), "");
  }

  static bool IsSet() { return GetParam() % 2 == 1; }
  static std::string Model() { return IsSet() ? "RT520C" : "PX12A"; }
  static std::string File() {
    return GetParam() % 4 < 2 ? "" : "c:\\calfactors\\" + Model() + "\\SN12345";
  }
  static std::string Begin() { return GetParam() % 8 < 6 ? "saved" : "new"; }

  [[nodiscard]] std::filesystem::path Output() const { return tree_.Root() / "output"; }

  void Start(const QStringList& arguments) {
    program_.setStandardOutputFile(QString::fromStdString(Output().string()));
    program_.start(
        TARVELL_TYPIST,
        QStringList{QString::fromStdString(tree_.Root().string()), QString::fromStdString(Model()),
                    QString::fromStdString(File()), QString::fromStdString(Begin())} +
            arguments);
    ASSERT_TRUE(program_.waitForStarted());
  }
  /// Waits for what `isPrinted` looks for.
  template <typename Condition>
  void Await(Condition isPrinted) const {
    for (int wait = 0; wait < 6000 && !isPrinted(); ++wait) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ASSERT_TRUE(isPrinted());
  }
  void AwaitEnd() const {
    Await([this] { return Contains(ReadNative(Output()), "\nend"); });
  }
  void Kill() {
    program_.kill();
    ASSERT_TRUE(program_.waitForFinished());
    EXPECT_EQ(program_.exitStatus(), QProcess::CrashExit) << "the typist has ended";
  }
  /// What the program has printed, without a line that is not finished.
  [[nodiscard]] std::vector<Look> Looks() const {
    std::istringstream lines(ReadNative(Output()));
    std::vector<Look> looks;
    Look look;
    while (lines >> look.time && std::getline(lines, look.shown) && !lines.eof()) {
      looks.push_back(look);
    }
    return looks;
  }
  [[nodiscard]] std::string Restored() {
    Start({"restore"});
    AwaitEnd();
    Kill();
    const std::vector<Look> looks = Looks();
    EXPECT_EQ(looks.size(), 1U);
    return looks.empty() ? "" : looks[0].shown;
  }

  TestTree tree_;
  QProcess program_;
};

TEST_P(KilledEditor, ShowsAllThatWasTypedWhenItIsRestored) {
  Start({"type", QString::number(GetParam()), "40"});
  AwaitEnd();
  Kill();
  const std::vector<Look> looks = Looks();
  ASSERT_EQ(looks.size(), 41U);
  EXPECT_NE(looks.front().shown, looks.back().shown);
  EXPECT_EQ(Restored(), looks.back().shown);
}

INSTANTIATE_TEST_SUITE_P(Hands, KilledEditor, testing::Values(1, 3, 4, 6));

/// Only when TARVELL_KILLS says how many: the program is killed while the user types.
class EditorKilledAtAnyTime : public KilledEditor {};

TEST_P(EditorKilledAtAnyTime, RestoresEverythingOlderThanASecond) {
  std::mt19937 random(static_cast<unsigned>(GetParam()));
  Start({"type", QString::number(GetParam()), "100000"});
  Await([this] { return !Looks().empty(); });
  std::this_thread::sleep_for(std::chrono::milliseconds(random() % 3000));
  const std::int64_t killed = Now();
  Kill();
  const std::vector<Look> looks = Looks();
  ASSERT_FALSE(looks.empty());
  const std::string restored = Restored();
  const auto firstNewer =
      std::ranges::find_if(looks, [&](const Look& look) { return look.time > killed - 1000; });
  const auto oldest = firstNewer == looks.begin() ? firstNewer : firstNewer - 1;
  EXPECT_TRUE(
      std::any_of(oldest, looks.end(), [&](const Look& look) { return look.shown == restored; }))
      << "a second before: " << oldest->shown << "\nat last: " << looks.back().shown
      << "\nrestored: " << restored;
}

int Kills() {
  const char* kills = std::getenv("TARVELL_KILLS");  // NOLINT(concurrency-mt-unsafe): one thread
  return kills == nullptr ? 0 : std::atoi(kills);
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(EditorKilledAtAnyTime);
INSTANTIATE_TEST_SUITE_P(Moments, EditorKilledAtAnyTime, testing::Range(0, Kills()));

}  // namespace
}  // namespace tarvell
