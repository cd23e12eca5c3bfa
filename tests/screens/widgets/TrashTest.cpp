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
    qputenv("XDG_DATA_HOME", (tree_.Root() / "home").string().c_str());
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

TEST_F(Trash, WithoutATrashAFileIsDeleted) {
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

/// A desktop with a folder from which nothing can be moved, as if it were on another disk.
class FaultyDesktop : public test::DesktopTestPlatform {
 public:
  using DesktopTestPlatform::DesktopTestPlatform;

  [[nodiscard]] std::error_code Replace(const std::filesystem::path& from,
                                        const std::filesystem::path& to) override {
    return !disk.empty() && from.string().starts_with(disk) && !to.string().starts_with(disk)
               ? std::make_error_code(std::errc::cross_device_link)
               : DesktopTestPlatform::Replace(from, to);
  }

  std::string disk;
};

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
