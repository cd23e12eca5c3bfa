// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QByteArray>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <system_error>

#include "core/files/FileIOCommonModule.h"
#include "support/DesktopTestPlatform.h"
#include "support/TestTree.h"

namespace tarvell {
namespace {

class Trash : public testing::Test {
 protected:
  Trash()
      : platform_(tree_.ProgramFolder()),
        trash_((tree_.Root() / "home" / "Trash").string()),
        before_(qgetenv("XDG_DATA_HOME")) {
    qputenv("XDG_DATA_HOME", (tree_.Root() / "home").c_str());
  }
  ~Trash() override { qputenv("XDG_DATA_HOME", before_); }
  Trash(const Trash&) = delete;
  Trash& operator=(const Trash&) = delete;

  /// The information file of an entry starts with this path, percent-encoded.
  void ExpectOrigin(const std::string& name, const std::string& path) const {
    const std::string info = test::ReadNative(trash_ + "/info/" + name + ".trashinfo");
    EXPECT_TRUE(info.starts_with("[Trash Info]\nPath=" + path + "\nDeletionDate=")) << info;
  }

  test::TestTree tree_;
  test::DesktopTestPlatform platform_;
  std::string trash_;

 private:
  QByteArray before_;
};

TEST_F(Trash, TakesAFileAFolderWithAllItHoldsAndOfALinkNothing) {
  tree_.Write(R"(c:\a\SN1)", "one");
  tree_.Write(R"(c:\a\station\PX12A)", "two");
  tree_.Write(R"(c:\b\data)", "kept");
  std::filesystem::create_symlink(tree_.Native(R"(c:\b\data)"), tree_.Native(R"(c:\a\link)"));
  Recycle(R"(c:\a\SN1)");
  Recycle(R"(c:\a\station)");
  Recycle(R"(c:\a\link)");
  EXPECT_TRUE(tree_.Names(R"(c:\a)").empty());
  EXPECT_EQ(test::ReadNative(trash_ + "/files/SN1"), "one");
  EXPECT_EQ(test::ReadNative(trash_ + "/files/station/PX12A"), "two");
  EXPECT_FALSE(std::filesystem::exists(trash_ + "/files/link"));
  EXPECT_EQ(tree_.Read(R"(c:\b\data)"), "kept");
}

// The toolkit's own function loses a name that is no UTF-8 and does not return for one that is too
// long.
TEST_F(Trash, TakesNamesThatAreNoTextOrAsLongAsPossible) {
  const std::string odd = "\xE9\xFF\xC3";
  const std::string longest(255, 'n');
  const std::filesystem::path folder = tree_.Native(R"(c:\a)");
  tree_.MakeFolders(R"(c:\a)");
  for (const std::string number : {"", ".2"}) {
    test::WriteNative(folder / odd, "odd");
    test::WriteNative(folder / longest, "long");
    Recycle("c:\\a\\" + odd);
    Recycle("c:\\a\\" + longest);
    EXPECT_TRUE(tree_.Names(R"(c:\a)").empty());
    const std::string shown = "\uFFFD\uFFFD\uFFFD" + number;
    EXPECT_EQ(test::ReadNative(trash_ + "/files/" + shown), "odd");
    EXPECT_EQ(test::ReadNative(trash_ + "/files/" + std::string(200, 'n') + number), "long");
    ExpectOrigin(shown, folder.string() + "/%E9%FF%C3");
  }
}

TEST_F(Trash, WithoutATrashAFileIsDeletedAndNoCopyIsMade) {
  tree_.Write(R"(c:\a\SN1)", "one");
  tree_.Write(R"(c:\a\file)", "no folder");
  qputenv("XDG_DATA_HOME", tree_.Native(R"(c:\a\file)").string().c_str());
  tree_.MakeFolders(R"(c:\current)");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(tree_.Native(R"(c:\current)"));
  EXPECT_EQ(platform_.RecycleCopy(tree_.Native(R"(c:\a\SN1)").string()), std::error_code());
  EXPECT_EQ(tree_.Names(R"(c:\a)"), (std::vector<std::string>{"SN1", "file"}));
  Recycle(R"(c:\a\SN1)");
  std::filesystem::current_path(before);
  EXPECT_EQ(tree_.Names(R"(c:\a)"), (std::vector<std::string>{"file"}));
  EXPECT_EQ(tree_.Names(R"(c:\current)"), std::vector<std::string>{});
}

TEST_F(Trash, ACopyKnowsItsOriginAndHasThePermissionsOfTheFile) {
  tree_.Write(R"(c:\a\SN copy)", "earlier");
  tree_.Write(R"(c:\b\sn COPY)", "other");  // differs only in case
  std::filesystem::create_symlink("SN copy", tree_.Native(R"(c:\a\link)"));
  const std::filesystem::path native = tree_.Native(R"(c:\a\SN copy)");
  std::filesystem::permissions(native, std::filesystem::perms(0640));
  EXPECT_EQ(platform_.RecycleCopy(native.string()), std::error_code());
  EXPECT_EQ(platform_.RecycleCopy(tree_.Native(R"(c:\a\link)").string()), std::error_code());
  EXPECT_EQ(platform_.RecycleCopy(tree_.Native(R"(c:\b\sn COPY)").string()), std::error_code());
  EXPECT_EQ(tree_.Read(R"(c:\a\SN copy)"), "earlier");
  EXPECT_EQ(tree_.Names(R"(c:\a)"), (std::vector<std::string>{"SN copy", "link"}));
  for (const char* name : {"SN copy", "SN copy.2"}) {
    EXPECT_EQ(test::ReadNative(trash_ + "/files/" + name), "earlier");
    EXPECT_EQ(std::filesystem::status(trash_ + "/files/" + name).permissions(),
              std::filesystem::perms(0640));
    ExpectOrigin(name, native.parent_path().string() + "/SN%20copy");
  }
  EXPECT_EQ(test::ReadNative(trash_ + "/files/sn COPY"), "other");
  ExpectOrigin("sn COPY", tree_.Native(R"(c:\b)").string() + "/sn%20COPY");
}

/// A desktop with a folder that takes no new file, a folder that cannot be synced, and a folder
/// from which nothing can be moved, as if it were on another disk.
class FaultyDesktop : public test::DesktopTestPlatform {
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

  [[nodiscard]] std::error_code Replace(const std::filesystem::path& from,
                                        const std::filesystem::path& to) override {
    return !disk.empty() && from.string().starts_with(disk) && !to.string().starts_with(disk)
               ? std::make_error_code(std::errc::cross_device_link)
               : DesktopTestPlatform::Replace(from, to);
  }

  std::string full;
  std::string unsure;
  std::string disk;
};

TEST_F(Trash, ACopyThatMayNotBeOnTheDiskIsAnErrorAndIsRemoved) {
  FaultyDesktop desktop(tree_.ProgramFolder());
  tree_.Write(R"(c:\a\SNfull)", "earlier");
  const std::string native = tree_.Native(R"(c:\a\SNfull)").string();
  for (const std::string& half : {trash_ + "/info", trash_ + "/files"}) {
    desktop.full = half;
    desktop.unsure.clear();
    EXPECT_EQ(desktop.RecycleCopy(native), std::errc::no_space_on_device);
    desktop.full.clear();
    desktop.unsure = half;
    EXPECT_EQ(desktop.RecycleCopy(native), std::errc::io_error);
    EXPECT_FALSE(std::filesystem::exists(trash_ + "/files/SNfull"));
    EXPECT_FALSE(std::filesystem::exists(trash_ + "/info/SNfull.trashinfo"));
    EXPECT_EQ(tree_.Read(R"(c:\a\SNfull)"), "earlier");
  }
}

TEST_F(Trash, FilesFromAnotherDiskAreCopiedAndRemoved) {
  FaultyDesktop desktop(tree_.ProgramFolder());
  desktop.disk = tree_.Native(R"(c:\other)").string();
  // Names that are too long for the toolkit's own function.
  const std::string file(210, 'f');
  const std::string folder(210, 'd');
  tree_.Write("c:\\other\\" + file, "one");
  tree_.Write("c:\\other\\" + folder + R"(\inside\PX12A)", "two");
  Recycle("c:\\other\\" + file);
  Recycle("c:\\other\\" + folder);
  EXPECT_EQ(tree_.Names(R"(c:\other)"), std::vector<std::string>{});
  const std::string files = trash_ + "/files/";
  EXPECT_EQ(test::ReadNative(files + std::string(200, 'f')), "one");
  EXPECT_EQ(test::ReadNative(files + std::string(200, 'd') + "/inside/PX12A"), "two");
}

}  // namespace
}  // namespace tarvell
