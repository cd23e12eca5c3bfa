// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QFile>
#include <QUrl>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "core/files/FileIOCommonModule.h"
#include "support/DesktopTestPlatform.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

class Trash : public testing::Test {
 protected:
  Trash()
      : platform_(tree_.ProgramFolder()),
        dataHome_(QByteArray::fromStdString((tree_.Root() / "home").string())),
        before_(qgetenv("XDG_DATA_HOME")) {
    qputenv("XDG_DATA_HOME", dataHome_);
  }
  ~Trash() override { qputenv("XDG_DATA_HOME", before_); }
  Trash(const Trash&) = delete;
  Trash& operator=(const Trash&) = delete;

  test::TestTree tree_;
  test::DesktopTestPlatform platform_;
  QByteArray dataHome_;

 private:
  QByteArray before_;
};

TEST_F(Trash, TakesAFileAndAFolderWithAllItHolds) {
  tree_.Write(R"(c:\a\SN1)", "one");
  tree_.Write(R"(c:\a\station\PX12A)", "two");
  Recycle(R"(c:\a\SN1)");
  Recycle(R"(c:\a\station)");
  EXPECT_TRUE(tree_.Names(R"(c:\a)").empty());
  const std::string files = dataHome_.toStdString() + "/Trash/files";
  EXPECT_EQ(test::ReadNative(files + "/SN1"), "one");
  EXPECT_EQ(test::ReadNative(files + "/station/PX12A"), "two");
}

// The toolkit's own way into the trash loses the one name and never comes back from the other.
TEST_F(Trash, TakesWhatHasANameThatIsNoTextOrAsLongAsCanBe) {
  const std::string odd = "\xE9\xFF\xC3";
  const std::string longest(255, 'n');
  const std::filesystem::path folder = tree_.Native(R"(c:\a)");
  const std::filesystem::path trash = tree_.Root() / "data" / "Trash";
  qputenv("XDG_DATA_HOME", trash.parent_path().c_str());
  tree_.MakeFolders(R"(c:\a)");
  for (int time = 1; time <= 2; ++time) {
    test::WriteNative(folder / odd, "odd");
    std::filesystem::create_directory(folder / longest);
    test::WriteNative(folder / longest / "inside", "long");
    Recycle("c:\\a\\" + odd);
    Recycle("c:\\a\\" + longest);
    EXPECT_TRUE(tree_.Names(R"(c:\a)").empty());
    const std::string number = time == 1 ? "" : ".2";
    EXPECT_EQ(test::ReadNative(trash / "files" / ("\uFFFD\uFFFD\uFFFD" + number)), "odd");
    EXPECT_EQ(test::ReadNative(trash / "files" / (std::string(200, 'n') + number) / "inside"),
              "long");
    const std::string info =
        test::ReadNative(trash / "info" / ("\uFFFD\uFFFD\uFFFD" + number + ".trashinfo"));
    EXPECT_NE(info.find("\nPath=" + folder.string() + "/%E9%FF%C3\n"), std::string::npos) << info;
  }
}

TEST_F(Trash, OfALinkOnlyTheLinkIsDeleted) {
  tree_.Write(R"(c:\a\data)", "kept");
  std::filesystem::create_symlink(tree_.Native(R"(c:\a\data)"), tree_.Native(R"(c:\a\SN1)"));
  Recycle(R"(c:\a\SN1)");
  EXPECT_FALSE(tree_.Exists(R"(c:\a\SN1)"));
  EXPECT_EQ(tree_.Read(R"(c:\a\data)"), "kept");
}

TEST_F(Trash, WhereThereIsNoneTheFileIsDeletedAndNothingIsLeftElsewhere) {
  tree_.Write(R"(c:\a\SN1)", "one");
  tree_.Write(R"(c:\a\file)", "no folder");
  qputenv("XDG_DATA_HOME", tree_.Native(R"(c:\a\file)").string().c_str());
  tree_.MakeFolders(R"(c:\current)");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(tree_.Native(R"(c:\current)"));
  Recycle(R"(c:\a\SN1)");
  std::filesystem::current_path(before);
  EXPECT_EQ(tree_.Names(R"(c:\a)"), (std::vector<std::string>{"file"}));
  EXPECT_EQ(tree_.Names(R"(c:\current)"), std::vector<std::string>{});
}

TEST_F(Trash, ACopyCanBeRestoredToWhereTheFileStands) {
  tree_.Write(R"(c:\a\SN copy)", "earlier");
  std::filesystem::create_symlink("SN copy", tree_.Native(R"(c:\a\link)"));
  const std::string native = tree_.Native(R"(c:\a\SN copy)").string();
  const std::string trash = dataHome_.toStdString() + "/Trash";
  for (const auto& [path, name] : {std::pair(native, "SN copy"),
                                   std::pair(tree_.Native(R"(c:\a\link)").string(), "SN copy.2")}) {
    EXPECT_EQ(platform_.RecycleCopy(path), std::error_code());
    EXPECT_EQ(tree_.Read(R"(c:\a\SN copy)"), "earlier");
    EXPECT_EQ(test::ReadNative(trash + "/files/" + name), "earlier");
    const std::string info = test::ReadNative(trash + "/info/" + name + ".trashinfo");
    EXPECT_EQ(
        info.rfind("[Trash Info]\nPath=" +
                       QUrl::toPercentEncoding(QString::fromStdString(native), "/").toStdString() +
                       "\nDeletionDate=",
                   0),
        0U)
        << info;
  }
  EXPECT_EQ(tree_.Names(R"(c:\a)"), (std::vector<std::string>{"SN copy", "link"}));
}

TEST_F(Trash, ANameThatAnotherHasInOtherCaseGoesBackToItsOwnPlace) {
  tree_.Write(R"(c:\lower\snorder)", "lower");
  tree_.Write(R"(c:\upper\SNORDER)", "upper");
  const std::string lower = tree_.Native(R"(c:\lower\snorder)").string();
  const std::string upper = tree_.Native(R"(c:\upper\SNORDER)").string();
  EXPECT_EQ(platform_.RecycleCopy(lower), std::error_code());
  EXPECT_EQ(platform_.RecycleCopy(upper), std::error_code());
  const std::string trash = dataHome_.toStdString() + "/Trash";
  for (const auto& [name, path] : {std::pair("snorder", lower), std::pair("SNORDER", upper)}) {
    EXPECT_NE(
        test::ReadNative(trash + "/info/" + name + ".trashinfo").find("\nPath=" + path + "\n"),
        std::string::npos);
  }
  EXPECT_EQ(test::ReadNative(trash + "/files/snorder"), "lower");
  EXPECT_EQ(test::ReadNative(trash + "/files/SNORDER"), "upper");
}

TEST_F(Trash, WhereThereIsNoneNoCopyIsMade) {
  tree_.Write(R"(c:\a\SN1)", "one");
  tree_.Write(R"(c:\a\file)", "no folder");
  qputenv("XDG_DATA_HOME", tree_.Native(R"(c:\a\file)").string().c_str());
  EXPECT_EQ(platform_.RecycleCopy(tree_.Native(R"(c:\a\SN1)").string()), std::error_code());
  EXPECT_EQ(tree_.Names(R"(c:\a)"), (std::vector<std::string>{"SN1", "file"}));
}

/// The desktop with one folder that takes no new file, and one that cannot be synced.
class FullTrash : public test::DesktopTestPlatform {
 public:
  using DesktopTestPlatform::DesktopTestPlatform;

  [[nodiscard]] std::error_code CreateTemporary(const std::filesystem::path& folder,
                                                std::filesystem::path& path,
                                                std::unique_ptr<OutputFile>& file) override {
    return folder == full ? std::make_error_code(std::errc::no_space_on_device)
                          : DesktopTestPlatform::CreateTemporary(folder, path, file);
  }
  [[nodiscard]] std::error_code SyncFolder(const std::filesystem::path& folder) override {
    return folder == unsure ? std::make_error_code(std::errc::io_error)
                            : DesktopTestPlatform::SyncFolder(folder);
  }

  std::string full;
  std::string unsure;
};

TEST_F(Trash, ACopyThatMayNotBeOnTheDiskIsRefusedWithItsReasonAndTakenAway) {
  FullTrash desktop(tree_.ProgramFolder());
  tree_.Write(R"(c:\a\SNfull)", "earlier");
  const std::string native = tree_.Native(R"(c:\a\SNfull)").string();
  const std::string trash = dataHome_.toStdString() + "/Trash";
  for (const std::string& half : {trash + "/info", trash + "/files"}) {
    desktop.full = half;
    desktop.unsure.clear();
    EXPECT_EQ(desktop.RecycleCopy(native), std::errc::no_space_on_device);
    desktop.full.clear();
    desktop.unsure = half;
    EXPECT_EQ(desktop.RecycleCopy(native), std::errc::io_error);
    EXPECT_FALSE(std::filesystem::exists(trash + "/files/SNfull"));
    EXPECT_FALSE(std::filesystem::exists(trash + "/info/SNfull.trashinfo"));
    EXPECT_EQ(tree_.Read(R"(c:\a\SNfull)"), "earlier");
  }
}

TEST_F(Trash, ACopyIsAsClosedToOthersAsTheFile) {
  tree_.Write(R"(c:\a\SNclosed)", "earlier");
  const std::filesystem::path native = tree_.Native(R"(c:\a\SNclosed)");
  std::filesystem::permissions(native, std::filesystem::perms(0640));
  EXPECT_EQ(platform_.RecycleCopy(native.string()), std::error_code());
  EXPECT_EQ(
      std::filesystem::status(dataHome_.toStdString() + "/Trash/files/SNclosed").permissions(),
      std::filesystem::perms(0640));
}

/// The desktop with a folder from which nothing can be moved, as if it were another disk.
class OtherDisk : public test::DesktopTestPlatform {
 public:
  using DesktopTestPlatform::DesktopTestPlatform;

  [[nodiscard]] std::error_code Replace(const std::filesystem::path& from,
                                        const std::filesystem::path& to) override {
    return from.string().starts_with(disk) && !to.string().starts_with(disk)
               ? std::make_error_code(std::errc::cross_device_link)
               : DesktopTestPlatform::Replace(from, to);
  }

  std::string disk;
};

TEST_F(Trash, WhatLiesOnAnotherDiskIsCopiedIntoItAndTakenAway) {
  OtherDisk desktop(tree_.ProgramFolder());
  desktop.disk = tree_.Native(R"(c:\other)").string();
  // Names that the toolkit's own way does not take.
  const std::string file(210, 'f');
  const std::string folder(210, 'd');
  tree_.Write("c:\\other\\" + file, "one");
  tree_.Write("c:\\other\\" + folder + R"(\inside\PX12A)", "two");
  Recycle("c:\\other\\" + file);
  Recycle("c:\\other\\" + folder);
  EXPECT_EQ(tree_.Names(R"(c:\other)"), std::vector<std::string>{});
  const std::string files = dataHome_.toStdString() + "/Trash/files/";
  EXPECT_EQ(test::ReadNative(files + std::string(200, 'f')), "one");
  EXPECT_EQ(test::ReadNative(files + std::string(200, 'd') + "/inside/PX12A"), "two");
}

}  // namespace
}  // namespace tarvell
