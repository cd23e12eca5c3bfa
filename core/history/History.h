// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_HISTORY_HISTORY_H
#define TARVELL_CORE_HISTORY_HISTORY_H

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/history/Journal.h"
#include "core/platform/Platform.h"

/// The history of a tree: what saves have replaced and deletions have removed, and a journal. It is
/// in a folder in the root of the tree, whose name no list shows because it has a dot. The program
/// never deletes any of it.
///
/// A tree is a root with folders of files: the root of a path is the folder above its folder.
namespace tarvell {

inline constexpr std::string_view kHistoryFolder = "history.tarvell";
inline constexpr std::string_view kJournalName = "journal.txt";

/// What becomes of the file that a save replaces or a deletion removes.
enum class Earlier {
  Keep,  ///< its content goes into the history first; if that fails, the file stays as it is
  LetGo  ///< the user has agreed that it is lost
};

/// A file of a tree, and where its history is.
struct HistoryPlace {
  std::filesystem::path root;
  std::string folder;  ///< name of the folder of the file
  std::string name;    ///< name of the file

  /// As the journal names it, "PX12A/SN12345".
  [[nodiscard]] std::string File() const { return folder + "/" + name; }
  /// The folder of the tree's history.
  [[nodiscard]] std::filesystem::path Tree() const { return root / kHistoryFolder; }
  [[nodiscard]] std::filesystem::path Journal() const { return Tree() / kJournalName; }
  /// The folder of its kept versions: the one that exists, in upper or lower case.
  [[nodiscard]] std::filesystem::path Versions() const;
};

/// The place of the file at `path`, a path of the program.
[[nodiscard]] HistoryPlace HistoryPlaceOf(std::string_view path);

/// Throws a NotKept error when there is something other than a folder where the history should be.
/// Returns false when there is nothing yet.
[[nodiscard]] bool HasHistory(const std::filesystem::path& tree);

/// The right to change files of a tree. While it lives, no other change of the tree begins: nothing
/// can be replaced between the moment when it is kept and the moment when it is replaced.
class HistoryWriter {
 public:
  /// Makes the history of the tree if it is missing, and waits up to five seconds for other
  /// writers. Throws a NotKept error when that fails.
  explicit HistoryWriter(const HistoryPlace& place);

  /// Keeps `before`, the content of the file, and adds a line to the journal. `before` is nothing
  /// if there is no file, `after` if the file will be deleted. A content that stays is not kept.
  /// Throws a NotKept error when a step fails. Everything is on the disk when it returns.
  void Note(const HistoryPlace& place, std::string_view done,
            const std::optional<std::string>& before, const std::optional<std::string_view>& after);

 private:
  std::unique_ptr<HeldLock> lock_;
};

/// SaveFile, which keeps what it replaces. Throws a NotKept error, before anything is written, when
/// the history cannot take that.
void SaveWithHistory(const std::string& path, std::string_view bytes,
                     std::string_view done = kSaved);

/// Moves the file of exactly this name to the recycle bin, and keeps its content. Of a link, only
/// the link is deleted. Throws a NotKept error when the history cannot take the file, which stays.
void DeleteWithHistory(std::string_view folder, const std::string& name,
                       Earlier earlier = Earlier::Keep);

/// The same for a folder of a tree with all its files; the file `except` is not kept.
void DeleteFolderWithHistory(std::string_view root, const std::string& name,
                             std::string_view except, Earlier earlier = Earlier::Keep);

}  // namespace tarvell

#endif
