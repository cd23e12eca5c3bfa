// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <random>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

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

  [[nodiscard]] pid_t Start(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(),
                     {TARVELL_TYPIST, tree_.Root().string(), Model(), File(), Begin()});
    std::vector<char*> words;
    for (std::string& argument : arguments) {
      words.push_back(argument.data());
    }
    words.push_back(nullptr);
    const std::string output = Output().string();
    const pid_t program = ::fork();
    if (program == 0) {
      const int file = ::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
      ::dup2(file, STDOUT_FILENO);
      ::execv(words[0], words.data());
      ::_exit(127);
    }
    return program;
  }
  /// Waits for the end of a program, which must have been killed.
  static void Await(pid_t program) {
    int status = 0;
    EXPECT_EQ(::waitpid(program, &status, 0), program);
    EXPECT_TRUE(WIFSIGNALED(status)) << "the typist has ended";
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
  [[nodiscard]] std::string Restored() const {
    Await(Start({"restore"}));
    const std::vector<Look> looks = Looks();
    EXPECT_EQ(looks.size(), 1U);
    return looks.empty() ? "" : looks[0].shown;
  }

  TestTree tree_;
};

TEST_P(KilledEditor, ShowsAllThatWasTypedWhenItIsRestored) {
  Await(Start({"type", std::to_string(GetParam()), "40"}));
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
  const pid_t program = Start({"type", std::to_string(GetParam()), "100000"});
  for (int wait = 0; wait < 6000 && Looks().empty(); ++wait) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(random() % 3000));
  const std::int64_t killed = Now();
  ASSERT_EQ(::kill(program, SIGKILL), 0);
  Await(program);
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
