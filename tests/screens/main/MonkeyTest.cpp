// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QRegularExpression>

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
#include "support/DesktopTestPlatform.h"
#include "support/Monkey.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

constexpr int kDefaultSeeds = 65;
constexpr int kDefaultActions = 600;

int NumberFrom(const char* variable, int otherwise) {
  bool isNumber = false;
  const int number = qEnvironmentVariableIntValue(variable, &isNumber);
  return isNumber ? number : otherwise;
}

/// A pattern for the whole text of every message that random input may cause. Errors that only a
/// fault of the program can cause (a row, page or column that a table does not have, a model that
/// the editors do not know) are missing on purpose, as are those of a failing disk.
const std::array kKnownMessages = {
    // The main menu.
    "(Station|Calibration data) directory does not set\\.",
    "(Input station folder does|Select calibration data folder is) not exist\\.\r\nIf you want to "
    "create new folder, then press Ok button\\.(\n\nIt would be the folder\n.*)?",
    "On this computer, a share is reached through .*",
    "Morrand Tarvell\nVersion A\\.02\\.61\n.*",  // About
    // The calibration data.
    "Are you (sure (you |to )?want to|want) delete.*\\?.*",
    "Please input serial number",
    "The data of .+ cannot be edited\\. Use Add or Update to copy a finished file\\.",
    "Cannot add to same calibration point",
    "A calibration point cannot be below zero\\.",
    "\"[*/]\" cannot be the serial number of a member\\. .*",
    "A table holds at most 51 rows\\. .*",
    ".*\n\nThe file is as it was\\. Check the data before you save them with OK\\.",
    "The file holds no serial number where its second line should\\. .*",
    "The chosen file is the kit's data file itself\\. Nothing was changed\\..*",
    // The stations.
    "(Station name is no input|This (station name was|instrment is) already exist)\\.",
    "This action is current station instrment data be all lost\\.\r\nDo you wish to continue\\?",
    "Current station data delete completed\\.",
    "Instruemnt Data was changed\\. Do you want to save it\\?(\n\nThese instruments were added "
    "but not saved: .*)?",
    "Error: Invailed Input Date",
    "There is no equipment calibration data\\.\r\nIt's not possible to add it\\.",
    // What is chosen, and files that are replaced.
    "(No (calibration data|stations?|model)|Model number or serial number) is (no )?selected\\.",
    "The chosen (data set|instrument) is not in the .+ any more\\. .*",
    "The file .+ (holds data without a serial number|holds the data of another serial number, "
    "\".+\"|has changed since it was opened here|with this serial number already exists)\\. Do you "
    "want to replace it\\?\n\n.*",
    // Names, numbers and characters.
    "The (model number|data file name|serial number) \".*\" cannot be used.*",
    "The station name \".*\" (cannot be used|holds the character|is the name of the list).*",
    "The .+ holds (a comma[.,]|the character \".\" after a comma,|more than 20 words,) .*",
    "(The character \".+\"|The control character number \\d+|A line end) cannot be stored in a "
    "data file\\. .*",
    ".+: \".*\" is not a number\\. .*",
    "(.+: |(.+: )?The number ).* is (too large to be calculated with|outside the range -32768 to "
    "32767)\\. .*",
    // The clipboard.
    "The (column \".+\" cannot be edited|table has no current cell)\\. .*",
    "(There is no text to paste\\.|The copied text has \\d+ lines, and the table has \\d+ "
    "rows) .*",
    "(There are no numbers to paste\\.|What is to be pasted has \\d+ points\\.) .*",
    "\".+\" can be read as .+ or as .+\\.\n\nIs the (point|comma) in it a decimal "
    "(point|comma)\\?.*",
    "Line \\d+.*\n\nCorrect them in the spreadsheet, then copy and paste again\\.",
    "Line \\d+: (It has \\d+ columns, and the table has \\d+|The table has no value in this "
    "place\\.|There is no value\\.|The character \".+\" in \".+\" cannot be stored in a data "
    "file\\.|\".+\" is not a number|.+ is too large to be calculated with\\.).*",
    // Files and folders that are damaged, missing or not permitted.
    "The file ends too early: more lines were expected .*",
    "\\d+ entries of the folder cannot be read as a data file:.*",
    "Cannot (list the folder|make the folder|delete it|read the file|save the file): (it, or the "
    "folder it belongs in, does not exist \\(any more\\)|you have no permission to do so|it is a "
    "folder, not a file|its name is too long|there already is one with this name)[.,] .*",
    // Messages of the toolkit's file dialog.
    ".*\n(File|Directory) not found\\.\nPlease verify the correct (file|directory) name was "
    "given\\.",
};

/// What is said above the reason for it.
constexpr const char* kFailures =
    "((Can't make a new station|Cannot make folder!|Error: Cannot save |Nothing was pasted, and "
    "the "
    "table is as it was\\.)\n\n)?";

bool IsKnownMessage(const QString& text) {
  static const std::vector<QRegularExpression> patterns = [] {
    std::vector<QRegularExpression> made;
    for (const char* pattern : kKnownMessages) {
      made.emplace_back(QRegularExpression::anchoredPattern(kFailures + QString(pattern)),
                        QRegularExpression::DotMatchesEverythingOption);
    }
    return made;
  }();
  // The trash takes every file, so no message may mention it.
  return !text.contains("Trash") && std::ranges::any_of(patterns, [&](const auto& pattern) {
    return pattern.match(text).hasMatch();
  });
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
  [[nodiscard]] bool MayUse(const std::string& path) const {
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
    qputenv("XDG_DATA_HOME", DataHome().c_str());
    gStationDir.clear();
    gCalibrationDir.clear();
    gCalFiles = {};
    DialogResult.clear();
    PlaceDataSets();
    PlaceStations();
    RememberFiles(tree_.Root());
    std::filesystem::create_directory_symlink(TARVELL_HANDBOOK_FOLDER,
                                              tree_.ProgramFolder() / "handbook");
  }
  ~MonkeyTest() override { qputenv("XDG_DATA_HOME", dataHome_); }
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
    tree_.Write(R"(c:\calfactors\PX13A\SN00006)", "");
    tree_.Write(R"(c:\calfactors\PX60G\SN00006)", "#MODEL_NO : PX60G\r\n#SER_NO");
    tree_.Write(R"(c:\calfactors\RT520A\SN00006)", std::string("\0\x81\xFF\"\1\r,,,", 9));
    tree_.Write(R"(c:\calfactors\OLD\SN00001)", Lines({"QZPX99Z Opt001", "2211J", "01JAN2002"}));
    tree_.MakeFolders(R"(c:\calfactors\EMPTY)");
    tree_.Write(R"(c:\kits\empty.dat)", "");
    kits_.push_back(tree_.Native(R"(c:\kits\empty.dat)").string());
    kits_.push_back(tree_.Native(R"(c:\kits\missing.dat)").string());
  }

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
      if (entry.path() == DataHome()) {
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

  TestTree tree_;
  ConfinedPlatform platform_;
  QByteArray dataHome_;
  std::vector<std::string> kits_;             ///< the files for the file dialog
  std::map<std::string, std::string> first_;  ///< the original bytes of every file
};

TEST_P(MonkeyTest, MeetsKnownMessagesAndLeavesFilesThatCanBeRead) {
  const int actions = NumberFrom("TARVELL_MONKEY_ACTIONS", kDefaultActions);
  const MonkeyPlaces places = {.calibrationDir = "c:\\calfactors",
                               .stationDir = "c:\\stations",
                               .files = kits_,
                               .folders = {tree_.Native("c:\\").string()}};
  EXPECT_EQ(Monkey(static_cast<unsigned>(GetParam()), actions, places, &IsKnownMessage).Run(),
            std::vector<std::string>{});
  CheckFiles();
  CheckTrash();
}

INSTANTIATE_TEST_SUITE_P(Seeds, MonkeyTest,
                         testing::Range(NumberFrom("TARVELL_MONKEY_FIRST", 1),
                                        NumberFrom("TARVELL_MONKEY_FIRST", 1) +
                                            NumberFrom("TARVELL_MONKEY_SEEDS", kDefaultSeeds)));

}  // namespace
}  // namespace tarvell
