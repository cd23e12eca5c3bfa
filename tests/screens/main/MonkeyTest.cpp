// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <map>
#include <memory>

#include "core/caldata/Draft.h"
#include "core/caldata/Models.h"
#include "core/platform/Error.h"
#include "core/session/Profiles.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/station/StationFiles.h"
#include "core/text/Text.h"
#include "screens/station/StationFixture.h"
#include "screens/widgets/QtPath.h"
#include "screens/widgets/UserSettings.h"
#include "support/DesktopTestPlatform.h"
#include "support/Monkey.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr int kDefaultSeeds = TARVELL_DEFAULT_SEEDS;
constexpr int kDefaultActions = 600;

int NumberFrom(const char* variable, int otherwise) {
  bool isNumber = false;
  const int number = qEnvironmentVariableIntValue(variable, &isNumber);
  return isNumber ? number : otherwise;
}

/// The desktop's platform without the steps that read or change anything outside one folder. That
/// is the current folder while it lives. A save takes its first step in `ResolveLinks`.
class ConfinedPlatform final : public DesktopTestPlatform {
 public:
  ConfinedPlatform(const std::filesystem::path& root, const std::filesystem::path& programFolder)
      : DesktopTestPlatform(programFolder), root_(root), before_(std::filesystem::current_path()) {
    std::filesystem::current_path(root_);
  }
  ConfinedPlatform(const ConfinedPlatform&) = delete;
  ConfinedPlatform& operator=(const ConfinedPlatform&) = delete;
  ~ConfinedPlatform() override { std::filesystem::current_path(before_); }

  [[nodiscard]] std::error_code OpenForReading(const std::filesystem::path& path,
                                               std::unique_ptr<InputFile>& file) override {
    return MayUse(path) ? DesktopTestPlatform::OpenForReading(path, file) : Refusal();
  }
  [[nodiscard]] std::error_code Facts(const std::filesystem::path& path,
                                      EntryFacts& facts) override {
    return MayUse(path) ? DesktopTestPlatform::Facts(path, facts) : Refusal();
  }
  [[nodiscard]] std::error_code ResolveLinks(const std::filesystem::path& path,
                                             std::filesystem::path& resolved) override {
    return MayUse(path) ? DesktopTestPlatform::ResolveLinks(path, resolved) : Refusal();
  }
  [[nodiscard]] std::error_code MakeFolder(const std::filesystem::path& path) override {
    return MayUse(path) ? DesktopTestPlatform::MakeFolder(path) : Refusal();
  }
  [[nodiscard]] std::error_code Search(const std::filesystem::path& folder, SearchKind kind,
                                       const SearchVisitor& visit) override {
    return MayUse(folder) ? DesktopTestPlatform::Search(folder, kind, visit) : Refusal();
  }
  [[nodiscard]] std::error_code Recycle(const std::filesystem::path& path) override {
    return MayUse(path) ? DesktopTestPlatform::Recycle(path) : Refusal();
  }

 private:
  [[nodiscard]] bool MayUse(const std::filesystem::path& path) const {
    const std::filesystem::path whole = std::filesystem::absolute(path).lexically_normal();
    const std::filesystem::path relative = whole.lexically_relative(root_);
    return !relative.empty() && *relative.begin() != "..";
  }
  [[nodiscard]] static std::error_code Refusal() {
    return std::make_error_code(std::errc::permission_denied);
  }

  std::filesystem::path root_;
  std::filesystem::path before_;
};

/// The template's bytes with this serial number.
std::string DataFileBytes(const std::string& templateBytes, const std::string& serial) {
  const std::string keyword = "#SER_NO   : ";
  const std::size_t at = templateBytes.find(keyword) + keyword.size();
  std::string bytes = templateBytes;
  return bytes.replace(at, bytes.find("\r\n", at) - at, serial);
}

class MonkeyTest : public testing::TestWithParam<int> {
 protected:
  MonkeyTest()
      : platform_(tree_.Root(), tree_.ProgramFolder()), dataHome_(qgetenv("XDG_DATA_HOME")) {
    qputenv("XDG_DATA_HOME", DataHome().string().c_str());
    KeepUserSettingsIn(PathForQt(tree_.UserFolder() / "settings.ini"));
    gStationDir.clear();
    gCalibrationDir.clear();
    gCalFiles = {};
    DialogResult.clear();
    PlaceDataSets();
    PlaceStations();
    tree_.InstallHandbook(TARVELL_HANDBOOK_FOLDER);
    RememberFiles(tree_.Root());
  }
  ~MonkeyTest() override {
    KeepUserSettingsIn({});
    qputenv("XDG_DATA_HOME", dataHome_);
  }
  MonkeyTest(const MonkeyTest&) = delete;
  MonkeyTest& operator=(const MonkeyTest&) = delete;

  void PlaceDataSets() {
    for (const Model& model : kModels) {
      const std::string code(model.code);
      const std::string folder = "c:\\calfactors\\" + code;
      if (model.create == nullptr) {
        const std::string kit = Lines({code, "2211J" + code, "01JAN2002", "any text"});
        tree_.Write(folder + "\\SN" + code.substr(1), kit);
        tree_.Write("c:\\kits\\" + code + ".dat", Lines({code, "2211J0" + code, "02FEB2002"}));
        kits_.push_back(tree_.Native("c:\\kits\\" + code + ".dat").string());
        continue;
      }
      tree_.InstallTemplate(code);
      const std::string whole = ReadNative(tree_.ProgramFolder() / ("Temp" + code));
      tree_.Write(folder + "\\SN00001", DataFileBytes(whole, "3318A00001"));
      tree_.Write(folder + "\\SN00002", DataFileBytes(whole, "3318A00002"));
      tree_.Write(folder + "\\SN00003", DataFileBytes(whole, "another"));
      tree_.Write(folder + "\\SN00004",
                  DataFileBytes(whole.substr(0, whole.size() / 2), "3318A00004"));
      const std::string tooLarge = "*1E400 : 1E400 : 1E400 : 1E400 : 1E400 : 1E400\r\n";
      tree_.Write(folder + "\\SN00005", DataFileBytes(whole, "3318A00005") + tooLarge + "x\r\n");
    }
    std::string manyRows =
        Lines({"#MODEL_NO : PX12A", "#SER_NO   : 3318A00006", "#CAL_DATE : 20020101",
               "#CAL_NO   : ", "#DUE_DATE : 20030101", "#COMMENT  : too many rows"});
    for (int row = 1; row <= 60; ++row) {
      manyRows += "* " + std::to_string(row) + " : 99.5 : 0 : 0 : 0 : 0\r\n";
    }
    tree_.Write(R"(c:\calfactors\PX12A\SN00006)", manyRows + "!End\r\n");
    for (int number = 10; number < 70; ++number) {
      // More than a list shows, so that a filter decides which ones it reads.
      tree_.Write(R"(c:\calfactors\PX11A\SN000)" + std::to_string(number),
                  Lines({"#MODEL_NO : PX11A", "#SER_NO   : 3318A000" + std::to_string(number),
                         "#CAL_DATE : 20020101", "#CAL_NO   : ", "#DUE_DATE : 20030101",
                         "#COMMENT  : one of many", "!End"}));
    }
    tree_.Write(R"(c:\calfactors\PX13A\SN00006)", "");
    tree_.Write(R"(c:\calfactors\PX60G\SN00006)", "#MODEL_NO : PX60G\r\n#SER_NO");
    tree_.Write(R"(c:\calfactors\RT520A\SN00006)", std::string("\0\x81\xFF\"\1\r,,,", 9));
    tree_.Write(R"(c:\calfactors\OLD\SN00001)", Lines({"QZPX99Z Opt001", "2211J", "01JAN2002"}));
    tree_.MakeFolders(R"(c:\calfactors\EMPTY)");
    tree_.Write(R"(c:\kits\empty.dat)", "");
    kits_.push_back(tree_.Native(R"(c:\kits\empty.dat)").string());
    kits_.push_back(tree_.Native(R"(c:\kits\missing.dat)").string());
    PlaceCertificates();
  }

  /// Certificates that fit a model, in the folder of the kits' files.
  void PlaceCertificates() {
    const std::vector<std::pair<std::string, std::string>> certificates = {
        {"sensor.csv",
         "Serial number;3318A00001\r\nCalibration date;5.3.2026\r\nFrequency in "
         "MHz;Factor in %\r\n0,1;98,8\r\n50;100\r\n4000;97,5\r\n"},
        {"attenuator.csv",
         "Serial number,3318A00002\r\nModel,PX60H\r\nSetting (dB),Frequency "
         "(Hz),Attenuation (dB)\r\n0,5E7,0.01\r\n10,5E7,10.02\r\n"},
        {"damaged.xml", "<?xml version=\"1.0\"?><dcc:digitalCalibrationCertificate>"}};
    for (const auto& [name, text] : certificates) {
      tree_.Write("c:\\kits\\" + name, text);
      kits_.push_back(tree_.Native("c:\\kits\\" + name).string());
    }
    std::filesystem::create_directory(Exports());
  }
  /// What is exported is not among the data.
  [[nodiscard]] std::filesystem::path Exports() const { return tree_.Root() / "exports"; }

  void PlaceStations() const {
    tree_.Write(R"(c:\stations\ST1\PX12A)",
                InstrumentFile{.model = "PX12A", .dueDate = "5 MAR 2002"}.Bytes());
    tree_.Write(R"(c:\stations\ST1\PX60H)",
                InstrumentFile{.model = "PX60H", .dueDate = ""}.Bytes());
    tree_.Write(R"(c:\stations\ST1\large)",
                InstrumentFile{.model = "large", .dueDate = "5 MAR 1E999"}.Bytes());
    tree_.Write(R"(c:\stations\ST1\empty)", "");
    tree_.Write(R"(c:\stations\ST1\INDEX)", Lines({"PX12A", "PX60H", "large", "empty", "INDEX"}));
    tree_.MakeFolders(R"(c:\stations\ST2)");
    tree_.Write(R"(c:\stations\INDEX)", Lines({"ST1", "ST2"}));
  }

  void RememberFiles(const std::filesystem::path& folder) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
      if (entry.is_regular_file()) {
        first_[entry.path().string()] = ReadNative(entry.path());
      }
    }
  }

  [[nodiscard]] bool IsUnchanged(const std::filesystem::path& file) const {
    const auto found = first_.find(file.string());
    return found != first_.end() && found->second == ReadNative(file);
  }

  [[nodiscard]] std::filesystem::path DataHome() const { return tree_.Root() / "data home"; }

  /// Every entry of the trash has the information that restores it.
  void CheckTrash() const {
    const std::filesystem::path trash = DataHome() / "Trash";
    std::set<std::string> kept;
    std::set<std::string> described;
    if (std::filesystem::exists(trash)) {
      for (const auto& entry : std::filesystem::directory_iterator(trash / "files")) {
        kept.insert(entry.path().filename().string() + ".trashinfo");
      }
      for (const auto& entry : std::filesystem::directory_iterator(trash / "info")) {
        described.insert(entry.path().filename().string());
      }
    }
    EXPECT_EQ(kept, described);
  }

  /// Every file that the program wrote can be read again.
  void CheckFiles() const {
    for (auto entries = std::filesystem::recursive_directory_iterator(tree_.Root());
         const auto& entry : entries) {
      // What is kept there may be any file that was replaced.
      if (entry.path() == DataHome() || entry.path() == Exports() ||
          entry.path().filename() == "history.tarvell") {
        entries.disable_recursion_pending();
        continue;
      }
      if (entry.path() == tree_.UserFolder()) {
        CheckDrafts(entry.path() / "drafts");
        entries.disable_recursion_pending();
        continue;
      }
      const std::string name = entry.path().filename().string();
      EXPECT_FALSE(name.starts_with(".tarvell-") && name.ends_with(".tmp")) << entry.path();
      if (entry.is_regular_file() && !IsUnchanged(entry.path())) {
        CheckFile(entry.path());
      }
    }
    for (const auto& [path, bytes] : first_) {
      const bool isOurs = std::filesystem::path(path).parent_path() == tree_.ProgramFolder();
      EXPECT_TRUE(!isOurs || IsUnchanged(path)) << path;
    }
  }

  static void CheckDrafts(const std::filesystem::path& folder) {
    if (!std::filesystem::exists(folder)) {
      return;
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      const std::string bytes = ReadNative(entry.path());
      EXPECT_TRUE(entry.path().filename() == "locks" || DraftFrom(bytes)) << bytes;
    }
  }

  void CheckFile(const std::filesystem::path& file) const {
    const std::string folder = ToUpper(file.parent_path().filename().string());
    const std::string name = file.filename().string();
    const Model* model = FindModel(folder);
    const bool isData = model != nullptr && ToUpper(name).starts_with("SN");
    try {
      if (name == "tarvell.ini") {
        CheckIni(file);
      } else if (name == kIndexName) {
        CheckIndex(file);
      } else if (isData && model->create != nullptr) {
        model->create()->LoadCalibrationDataFromFile(file.string());
      } else if (isData) {
        const std::string bytes = ReadNative(file);
        EXPECT_TRUE(std::ranges::any_of(kits_, [&](const std::string& kit) {
          return std::filesystem::exists(kit) && ReadNative(kit) == bytes;
        })) << file;
      } else {
        StationInstrument instrument;
        StoredFile stored;
        EXPECT_TRUE(LoadInstrumentFile(file.string(), instrument, stored)) << file;
        EXPECT_EQ(instrument.ModelNumber.empty(), false) << file;
      }
    } catch (const Error& error) {
      ADD_FAILURE() << file << " cannot be read: " << error.what() << "\n" << ReadNative(file);
    }
  }

  static void CheckIni(const std::filesystem::path& file) {
    const std::string bytes = ReadNative(file);
    EXPECT_GE(std::ranges::count(bytes, '\n'), 11) << bytes;
    std::string calibrationDir;
    std::string stationDir;
    ReadProfile(calibrationDir, stationDir);
    EXPECT_FALSE(calibrationDir.empty() || stationDir.empty());
  }

  static void CheckIndex(const std::filesystem::path& file) {
    const std::string bytes = ReadNative(file);
    EXPECT_TRUE(bytes.empty() || bytes.ends_with("\r\n")) << file << "\n" << bytes;
    EXPECT_EQ(("\r\n" + bytes).find("\r\n\r\n"), std::string::npos) << file << "\n" << bytes;
  }

  [[nodiscard]] MonkeyPlaces Places() const {
    return {.calibrationDir = "c:\\calfactors",
            .stationDir = "c:\\stations",
            .files = kits_,
            .folders = {tree_.Native("c:\\").string()},
            .exports = Exports().string()};
  }

  TestTree tree_;
  ConfinedPlatform platform_;
  QByteArray dataHome_;
  std::vector<std::string> kits_;             ///< the files for the file dialog
  std::map<std::string, std::string> first_;  ///< the original bytes of every file
};

TEST_P(MonkeyTest, MeetsKnownMessagesAndLeavesFilesThatCanBeRead) {
  const int actions = NumberFrom("TARVELL_MONKEY_ACTIONS", kDefaultActions);
  Monkey monkey(static_cast<unsigned>(GetParam()), actions, Places());
  EXPECT_EQ(monkey.Run(), std::vector<std::string>{});
  CheckFiles();
  CheckTrash();
}

/// Only with TARVELL_MONKEY_REACH=1: it takes up to a minute.
class MonkeyReach : public MonkeyTest {};

// Otherwise random input would say nothing about them. One run reaches most, and few runs all.
TEST_P(MonkeyReach, HoldsEveryFeature) {
  constexpr int kRuns = 20;
  std::set<std::string> missing = {"LstInstrmentFilter",
                                   "lstSerialNumberFilter",
                                   "lstSerialNumberdue",
                                   "lstSerialNumbername",
                                   "mnuNewCalibration",
                                   "mnuAddAsCopy",
                                   "btnFile",
                                   "btnRestore",
                                   "btnDiscard",
                                   "mnuAbout",
                                   "LstInstrmentdue",
                                   "mnuHistory",
                                   "mnuImport",
                                   "mnuExport",
                                   "a file exported",
                                   "a step undone",
                                   "a step redone",
                                   " points)",  // the question about several points
                                   "F5",
                                   "Ctrl+F",
                                   "Ctrl+Tab",
                                   "tarvell::PastePreview",
                                   "tarvell::ImportPreview",
                                   "tarvell::frmHistory",
                                   "tarvell::HandbookWindow",
                                   "calendarOf_txtCalDay"};
  for (int seed = GetParam(); !missing.empty() && seed < GetParam() + kRuns; ++seed) {
    Monkey monkey(static_cast<unsigned>(seed), kDefaultActions, Places());
    EXPECT_EQ(monkey.Run(), std::vector<std::string>{});
    std::erase_if(missing, [&](const std::string& name) {
      return std::ranges::any_of(monkey.Used(), [&](const std::string& used) {
        return used.find(name) != std::string::npos;
      });
    });
  }
  EXPECT_EQ(missing, std::set<std::string>{});
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(MonkeyReach);
INSTANTIATE_TEST_SUITE_P(From, MonkeyReach,
                         testing::Range(0, NumberFrom("TARVELL_MONKEY_REACH", 0)));

INSTANTIATE_TEST_SUITE_P(Seeds, MonkeyTest,
                         testing::Range(NumberFrom("TARVELL_MONKEY_FIRST", 1),
                                        NumberFrom("TARVELL_MONKEY_FIRST", 1) +
                                            NumberFrom("TARVELL_MONKEY_SEEDS", kDefaultSeeds)));

}  // namespace
}  // namespace tarvell
