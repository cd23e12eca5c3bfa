// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "support/OrdinaryUser.h"
#include "support/SensorStage.h"

namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)
using Texts = std::vector<std::string>;

constexpr const char* kRoot = R"(c:\calfactors)";
constexpr const char* kFolder = R"(c:\calfactors\PX12A)";
constexpr const char* kPath = R"(c:\calfactors\PX12A\SN12345)";

/// What an operator, or the disk, does wrong: each time one message, the screen stays as it was,
/// and nothing is lost.
class BadInput : public SensorStage {
 protected:
  BadInput() { file_.rows = {{"0.10", "98.8"}, {"50.00", "100.0"}}; }

  /// Changes what can be changed in the editor.
  static void ChangeEverything(frmCalDataInput& editor) {
    Fill(editor, "txtCalNo", "C-7");
    Fill(editor, "txtCalYear", "2010");
    Choose(editor, "cmbCalMonth", "APR");
    Fill(editor, "txtCalDay", "6");
    Fill(editor, "txtDueYear", "2011");
    Choose(editor, "cmbDueMonth", "FEB");
    Fill(editor, "txtDueDay", "7");
    Fill(editor, "txtComment", "typed");
    ClickCell(GridOf(editor), 1, 1);
    Type("91.5");
    Press(Qt::Key_Return);
  }

  /// The file of what ChangeEverything typed.
  [[nodiscard]] SensorFile Changed() const {
    SensorFile changed = file_;
    changed.calNo = "C-7";
    changed.calDate = "20100406";
    changed.dueDate = "20110207";
    changed.comment = "typed";
    changed.rows.at(0).second = "91.5";
    return changed;
  }

  /// The editor is open and shows all that ChangeEverything typed.
  static void ExpectEverythingThere(frmCalDataInput& editor) {
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(TextOf(editor, "txtCalNo"), "C-7");
    EXPECT_EQ(TextOf(editor, "txtCalYear"), "2010");
    EXPECT_EQ(Find<QComboBox>(editor, "cmbCalMonth").currentText(), "APR");
    EXPECT_EQ(TextOf(editor, "txtCalDay"), "6");
    EXPECT_EQ(TextOf(editor, "txtDueYear"), "2011");
    EXPECT_EQ(Find<QComboBox>(editor, "cmbDueMonth").currentText(), "FEB");
    EXPECT_EQ(TextOf(editor, "txtDueDay"), "7");
    EXPECT_EQ(TextOf(editor, "txtComment"), "typed");
    EXPECT_EQ(ColumnOf(GridOf(editor), 0), (Texts{"0.10", "50.00"}));
    EXPECT_EQ(ColumnOf(GridOf(editor), 1), (Texts{"91.5", "100.0"}));
  }

  SensorFile file_;
};

// ---- Serial numbers.

TEST_F(BadInput, AnEmptySerialNumberIsTold) {
  file_.serial = "";
  ShowNew(file_, [&](frmCalDataInput& editor) {
    ChangeEverything(editor);
    questions_.ExpectNotice("Please input serial number");
    Click(editor, "btnOk");
    ExpectEverythingThere(editor);
    EXPECT_EQ(tree_.Names(kFolder), Texts{});
  });
}

struct Serial {
  const char* text;
  const char* named;  ///< what the message names
};

void PrintTo(const Serial& serial, std::ostream* stream) {
  *stream << serial.text;
}

class SerialThatNamesNoFile : public BadInput, public testing::WithParamInterface<Serial> {};

TEST_P(SerialThatNamesNoFile, IsRefused) {
  file_.serial = "";
  ShowNew(file_, [&](frmCalDataInput& editor) {
    ChangeEverything(editor);
    Fill(editor, "txtSerial", GetParam().text);
    questions_.ExpectError({GetParam().named});
    Click(editor, "btnOk");
    ExpectEverythingThere(editor);
    EXPECT_EQ(TextOf(editor, "txtSerial"), GetParam().text);
    EXPECT_EQ(tree_.Names(kFolder), Texts{});
    EXPECT_EQ(tree_.Names(kRoot), Texts{"PX12A"});
    // Corrected, it is saved with all the rest.
    Fill(editor, "txtSerial", "12");
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  SensorFile saved = Changed();
  saved.serial = "12";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN12)"), saved.Bytes());
  EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12"});
}

INSTANTIATE_TEST_SUITE_P(Characters, SerialThatNamesNoFile,
                         testing::Values(Serial{"AB/CD", "\"/\""}, Serial{R"(AB\CD)", R"("\")"},
                                         Serial{"AB:CD", "\":\""}, Serial{"AB*CD", "\"*\""},
                                         Serial{"AB?CD", "\"?\""}, Serial{"AB\"CD", "double quote"},
                                         Serial{"AB<CD", "\"<\""}, Serial{"AB>CD", "\">\""},
                                         Serial{"AB|CD", "\"|\""}, Serial{"/", "\"/\""},
                                         Serial{"AB,12", "comma"}));

INSTANTIATE_TEST_SUITE_P(DotsAndBlanks, SerialThatNamesNoFile,
                         testing::Values(Serial{"12.45", "\".\""}, Serial{"33181234.", "\".\""},
                                         Serial{".", "\".\""}, Serial{"..", "\".\""},
                                         Serial{"../..", "\".\""}, Serial{"1234 ", "blank"},
                                         Serial{"     ", "blank"}));

// ---- Days and years.

struct DateBox {
  const char* box;
  const char* named;
};

void PrintTo(const DateBox& date, std::ostream* stream) {
  *stream << date.box;
}

class DateThatIsNoNumber : public BadInput, public testing::WithParamInterface<DateBox> {};

TEST_P(DateThatIsNoNumber, IsRefused) {
  const QString box = GetParam().box;
  ShowFile(file_, [&](frmCalDataInput& editor) {
    ChangeEverything(editor);
    const QString good = Find<QLineEdit>(editor, box).text();
    for (const char* text : {"", " ", "abc", "5th", "O1", "1,5", "--1", "40000", "-40000", "1E9"}) {
      SCOPED_TRACE(text);
      Fill(editor, box, text);
      questions_.ExpectError({GetParam().named});
      Click(editor, "btnOk");
      EXPECT_EQ(TextOf(editor, box), text);
      Find<QLineEdit>(editor, box).setText(good);
      ExpectEverythingThere(editor);
      EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
    }
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(kPath), Changed().Bytes());
}

INSTANTIATE_TEST_SUITE_P(Boxes, DateThatIsNoNumber,
                         testing::Values(DateBox{"txtCalYear", "Year of the calibration date"},
                                         DateBox{"txtCalDay", "Day of the calibration date"},
                                         DateBox{"txtDueYear", "Year of the due date"},
                                         DateBox{"txtDueDay", "Day of the due date"}));

// ---- Templates.

class BadTemplate : public BadInput {
 protected:
  BadTemplate() : template_(file_) { template_.serial = ""; }

  void WriteBytes(const std::string& bytes) const {
    WriteNative(tree_.ProgramFolder() / "TempPX12A", bytes);
  }

  /// Adds a PX12A while the serial number of another one is chosen; the message holds `parts`.
  void ExpectRefused(const std::vector<std::string>& parts) {
    tree_.Write(kPath, file_.Bytes());
    questions_.ExpectError(parts);
    AtMenu([](frmCalibrationMain& menu) {
      ClickEntry(menu, "LstInstrment", "PX12A");
      ClickEntry(menu, "lstSerialNumber", "3318A12345");
    });
    ChooseAdd("PX12A");
    AtMenu([](frmCalibrationMain& menu) {
      EXPECT_EQ(EntriesOf(menu, "LstInstrment"), Texts{"PX12A"});
      EXPECT_EQ(EntriesOf(menu, "lstSerialNumber"), Texts{"3318A12345"});
      const QList<QListWidgetItem*> chosen =
          Find<QListWidget>(menu, "lstSerialNumber").selectedItems();
      ASSERT_EQ(chosen.size(), 1);
      EXPECT_EQ(chosen.first()->text(), "3318A12345");
    });
    RunMenu();
    EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
    EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12345"});
  }

  SensorFile template_;
};

TEST_F(BadTemplate, ThatIsMissingIsToldAndTheSelectionStays) {
  ExpectRefused({"TempPX12A", "missing"});
}

TEST_F(BadTemplate, ThatIsEmptyIsTold) {
  WriteBytes("");
  ExpectRefused({"TempPX12A"});
}

TEST_F(BadTemplate, CutWithinTheHeaderIsTold) {
  WriteBytes(template_.Bytes().substr(0, 50));
  ExpectRefused({"TempPX12A", "!End"});
}

TEST_F(BadTemplate, CutWithinARowIsTold) {
  const std::string bytes = template_.Bytes();
  WriteBytes(bytes.substr(0, bytes.find("50.00")));
  ExpectRefused({"TempPX12A", "!End"});
}

TEST_F(BadTemplate, CutBehindTheLastRowIsTold) {
  const std::string bytes = template_.Bytes();
  WriteBytes(bytes.substr(0, bytes.find("!End")));
  ExpectRefused({"TempPX12A", "!End"});
}

TEST_F(BadTemplate, OfAnotherModelIsTold) {
  template_.model = "PX11D";
  WriteBytes(template_.Bytes());
  ExpectRefused({"TempPX12A", "PX11D", "PX12A"});
}

TEST_F(BadTemplate, Of52RowsIsTold) {
  template_.rows = ManyRows(52);
  WriteBytes(template_.Bytes());
  ExpectRefused({"TempPX12A", "51"});
}

TEST_F(BadTemplate, ThatIsAFolderIsTold) {
  std::filesystem::create_directories(tree_.ProgramFolder() / "TempPX12A");
  ExpectRefused({"TempPX12A", "folder"});
}

TEST_F(BadTemplate, ThatMayNotBeReadIsTold) {
  WriteTemplate(template_);
  std::filesystem::permissions(tree_.ProgramFolder() / "TempPX12A", std::filesystem::perms(0));
  const OrdinaryUser user(tree_.Root());
  ExpectRefused({"TempPX12A", "permission"});
}

// The folder is made before the template is asked for, and holds nothing.
TEST_F(BadTemplate, OfAModelWithoutDataIsToldAndLeavesAnEmptyFolder) {
  tree_.MakeFolders(kRoot);
  questions_.ExpectError({"TempPX12A"});
  ChooseAdd("PX12A");
  AtMenu([](frmCalibrationMain& menu) {
    EXPECT_EQ(EntriesOf(menu, "LstInstrment"), Texts{});
    EXPECT_EQ(EntriesOf(menu, "lstSerialNumber"), Texts{});
  });
  RunMenu();
  EXPECT_EQ(tree_.Names(kRoot), Texts{"PX12A"});
}

// ---- Files in the folder.

TEST_F(BadInput, AFolderWith52DataFilesListsThe51ThatWereRead) {
  for (int i = 0; i < 52; ++i) {
    file_.serial = std::to_string(10000 + i);
    tree_.Write(std::string(kFolder) + R"(\SN)" + file_.serial, file_.Bytes());
  }
  questions_.ExpectError({"51", kFolder});
  std::string chosen;
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    const Texts listed = EntriesOf(menu, "lstSerialNumber");
    ASSERT_EQ(listed.size(), 51U);
    chosen = listed.back();
    ClickEntry(menu, "lstSerialNumber", QString::fromStdString(chosen));
    user_.At<frmCalDataInput>([&](frmCalDataInput& editor) {
      EXPECT_EQ(TextOf(editor, "txtSerial"), chosen);
      Click(editor, "btnCancel");
    });
    Click(menu, "btnEdit");
  });
  RunMenu();
}

class HeaderThatEnds : public BadInput, public testing::WithParamInterface<int> {};

TEST_P(HeaderThatEnds, IsNamedAndAllOtherFilesAreListed) {
  const std::string whole = file_.Bytes();
  std::size_t end = 0;
  for (int line = 0; line < GetParam(); ++line) {
    end = whole.find('\n', end) + 1;
  }
  const std::string broken = whole.substr(0, end);
  for (const char* serial : {"1", "2", "3"}) {
    file_.serial = serial;
    tree_.Write(std::string(kFolder) + R"(\SN)" + serial, file_.Bytes());
  }
  // In the platform's order.
  Texts order;
  EXPECT_FALSE(CurrentPlatform().Search(tree_.Native(kFolder).string(), SearchKind::EveryName,
                                        [&](const std::string& name, EntryKind) {
                                          order.push_back(name);
                                          return true;
                                        }));
  ASSERT_EQ(order.size(), 3U);
  tree_.Write(std::string(kFolder) + "\\" + order.at(1), broken);
  questions_.ExpectError({std::string(kFolder) + "\\" + order.at(1)});
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    EXPECT_EQ(EntriesOf(menu, "lstSerialNumber"),
              (Texts{order.at(0).substr(2), order.at(2).substr(2)}));
    EXPECT_EQ(EntriesOf(menu, "LstInstrment"), Texts{"PX12A"});
  });
  RunMenu();
  EXPECT_EQ(tree_.Read(std::string(kFolder) + "\\" + order.at(1)), broken);
}

INSTANTIATE_TEST_SUITE_P(AfterLine, HeaderThatEnds, testing::Values(0, 1, 2, 3, 4, 5));

TEST_F(BadInput, AFileThatVanishedIsToldAndTheListsStay) {
  tree_.Write(kPath, file_.Bytes());
  AtMenu([&](frmCalibrationMain& menu) {
    ClickEntry(menu, "LstInstrment", "PX12A");
    ClickEntry(menu, "lstSerialNumber", "3318A12345");
    std::filesystem::remove(tree_.Native(kPath));
    questions_.ExpectError({kPath});
    Click(menu, "btnEdit");
    EXPECT_EQ(EntriesOf(menu, "lstSerialNumber"), Texts{"3318A12345"});
  });
  RunMenu();
}

// ---- Saving.

/// A disk that is full, from one step of a save on.
class FullDisk : public DesktopTestPlatform {
 public:
  enum class Step { Create, Write, Sync, Close, Nothing };

  using DesktopTestPlatform::DesktopTestPlatform;

  [[nodiscard]] std::error_code CreateTemporary(const std::filesystem::path& folder,
                                                std::filesystem::path& path,
                                                std::unique_ptr<OutputFile>& file) override {
    if (failing == Step::Create) {
      return Full();
    }
    const std::error_code code = DesktopTestPlatform::CreateTemporary(folder, path, file);
    if (!code) {
      file = std::make_unique<File>(std::move(file), failing);
    }
    return code;
  }

  Step failing = Step::Write;

 private:
  static std::error_code Full() { return std::make_error_code(std::errc::no_space_on_device); }

  class File : public ForwardingOutputFile {
   public:
    File(std::unique_ptr<OutputFile> file, Step failing)
        : ForwardingOutputFile(std::move(file)), failing_(failing) {}

    std::error_code Write(std::string_view bytes, std::size_t& count) override {
      return failing_ == Step::Write ? Full() : ForwardingOutputFile::Write(bytes, count);
    }
    std::error_code Sync() override {
      return failing_ == Step::Sync ? Full() : ForwardingOutputFile::Sync();
    }
    std::error_code Close() override {
      return failing_ == Step::Close ? Full() : ForwardingOutputFile::Close();
    }

   private:
    Step failing_;
  };
};

class OnAFullDisk : public BadInput, public testing::WithParamInterface<FullDisk::Step> {};

TEST_P(OnAFullDisk, NothingIsLostAndOkCanBePressedAgain) {
  FullDisk disk(tree_.ProgramFolder());
  disk.failing = GetParam();
  ShowFile(file_, [&](frmCalDataInput& editor) {
    ChangeEverything(editor);
    for (int i = 0; i < 2; ++i) {
      questions_.ExpectError({"the disk is full", kPath});
      Click(editor, "btnOk");
      ExpectEverythingThere(editor);
      EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
      EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12345"});
    }
    disk.failing = FullDisk::Step::Nothing;
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(kPath), Changed().Bytes());
}

INSTANTIATE_TEST_SUITE_P(Steps, OnAFullDisk,
                         testing::Values(FullDisk::Step::Create, FullDisk::Step::Write,
                                         FullDisk::Step::Sync, FullDisk::Step::Close));

TEST_F(BadInput, AFolderThatVanishedWhileTheEditorIsOpenIsTold) {
  ShowFile(file_, [&](frmCalDataInput& editor) {
    ChangeEverything(editor);
    std::filesystem::remove_all(tree_.Native(kFolder));
    questions_.ExpectError({kPath});
    Click(editor, "btnOk");
    ExpectEverythingThere(editor);
    EXPECT_FALSE(tree_.Exists(kFolder)) << "a save makes no folder";
    tree_.MakeFolders(kFolder);
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Read(kPath), Changed().Bytes());
}

TEST_F(BadInput, AFolderThatTakesNoNewFileIsTold) {
  file_.serial = "";
  WriteTemplate(file_);
  tree_.MakeFolders(kFolder);
  const OrdinaryUser user(tree_.Root());
  auto locked = std::make_unique<LockedFolder>(tree_.Native(kFolder));
  ShowNew(file_, [&](frmCalDataInput& editor) {
    ChangeEverything(editor);
    Fill(editor, "txtSerial", "12");
    questions_.ExpectError({"permission", R"(c:\calfactors\PX12A\SN12)"});
    Click(editor, "btnOk");
    ExpectEverythingThere(editor);
    EXPECT_EQ(tree_.Names(kFolder), Texts{});
    locked.reset();
    Click(editor, "btnOk");
    EXPECT_FALSE(editor.isVisible());
  });
  EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12"});
}

TEST_F(BadInput, AReadOnlyFileInAReadOnlyFolderIsTold) {
  tree_.Write(kPath, file_.Bytes());
  gCalFiles[0].FilePath = kPath;
  std::filesystem::permissions(tree_.Native(kPath), std::filesystem::perms(0444));
  const OrdinaryUser user(tree_.Root());
  const LockedFolder locked(tree_.Native(kFolder));
  ShowAgain("PX12A", [&](frmCalDataInput& editor) {
    ChangeEverything(editor);
    questions_.ExpectError({"permission", kPath});
    Click(editor, "btnOk");
    ExpectEverythingThere(editor);
    EXPECT_EQ(tree_.Read(kPath), file_.Bytes());
  });
  EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12345"});
}

TEST_F(BadInput, AFolderInThePlaceOfTheFileIsTold) {
  file_.serial = "";
  ShowNew(file_, [&](frmCalDataInput& editor) {
    ChangeEverything(editor);
    Fill(editor, "txtSerial", "12345");
    tree_.MakeFolders(kPath);
    questions_.ExpectError({"folder", kPath});
    Click(editor, "btnOk");
    ExpectEverythingThere(editor);
    EXPECT_EQ(tree_.Names(kFolder), Texts{"SN12345"});
    EXPECT_EQ(tree_.Names(kPath), Texts{});
  });
}

// ---- Characters that the files cannot hold.

TEST_F(BadInput, ACharacterThatTheFileCannotHoldIsToldAndNotTaken) {
  file_.serial = "";
  ShowNew(file_, [&](frmCalDataInput& editor) {
    ChangeEverything(editor);
    Fill(editor, "txtSerial", "12");
    for (const char* box : {"txtSerial", "txtCalNo", "txtComment"}) {
      SCOPED_TRACE(box);
      const std::string before = TextOf(editor, box);
      questions_.ExpectError({"\u03a9"});
      Find<QLineEdit>(editor, box).setFocus();
      Find<QLineEdit>(editor, box).insert("5 k\u03a9");
      Settle();
      EXPECT_EQ(TextOf(editor, box), before);
    }
    ExpectEverythingThere(editor);
    Click(editor, "btnOk");
  });
  SensorFile saved = Changed();
  saved.serial = "12";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN12)"), saved.Bytes());
}

}  // namespace
}  // namespace tarvell
