// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/DataSetDrafts.h"

#include <algorithm>
#include <limits>
#include <set>
#include <system_error>
#include <utility>

#include "core/files/FolderNames.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/files/SaveFile.h"
#include "core/platform/Error.h"
#include "core/platform/SystemName.h"

namespace tarvell {

namespace {

constexpr std::string_view kDraftEnding = ".draft";
constexpr std::string_view kDamagedEnding = ".damaged";
constexpr const char* kLockName = "locks";

/// A number that hardly any two texts share (FNV-1a).
std::uint64_t NumberOf(std::string_view text) {
  constexpr std::uint64_t kBasis = 14695981039346656037U;
  constexpr std::uint64_t kPrime = 1099511628211U;
  std::uint64_t number = kBasis;
  for (const char c : text) {
    number = (number ^ static_cast<unsigned char>(c)) * kPrime;
  }
  return number;
}

/// The number as 16 hexadecimal digits.
std::string Digits(std::uint64_t number) {
  std::string digits;
  for (int shift = 60; shift >= 0; shift -= 4) {
    digits += "0123456789abcdef"[(number >> static_cast<unsigned>(shift)) & 15U];
  }
  return digits;
}

/// Makes the folder and its parents. What it makes, only the user may open.
void MakeFolders(const std::filesystem::path& folder) {
  EntryFacts facts;
  if (folder.empty() || CurrentPlatform().Facts(folder, facts) || facts.kind == EntryKind::Folder) {
    return;
  }
  if (folder.has_parent_path() && folder.parent_path() != folder) {
    MakeFolders(folder.parent_path());
  }
  // If this fails, the error of the file that is written next says why.
  static_cast<void>(CurrentPlatform().MakePrivateFolder(folder));
}

void Remove(const std::filesystem::path& path) {
  const std::error_code code = CurrentPlatform().RemoveFile(path);
  if (code && code != std::errc::no_such_file_or_directory) {
    throw SystemError(code, "remove the draft", PathText(path));
  }
}

/// A text that stands for the content of a file; "" for none.
std::string ContentOf(std::string_view file) {
  std::string bytes;
  const bool isRead = !file.empty() && !ReadNativeFile(NativePath(file), bytes, kDataFileLimit);
  return isRead ? Digits(NumberOf(bytes)) : std::string();
}

}  // namespace

DataSetDrafts::DataSetDrafts(std::string model, std::string_view file, std::int64_t now,
                             DraftKind kind)
    : model_(std::move(model)) {
  // The same for every way to write the path, in upper or lower case.
  file_ = file.empty() ? std::string() : FullPathText(file);
  fileContent_ = ContentOf(file_);
  // The serial number could hold any character. The number of the path is a name everywhere.
  if (file_.empty()) {
    name_ = model_ + "-new-";
  } else {
    const std::string number = Digits(NumberOf(file_)) + "-";
    name_ = model_ + "-" + number;
    otherName_ = model_ + "-calibration-" + number;
    if (kind == DraftKind::NewCalibration) {
      std::swap(name_, otherName_);
    }
  }
  const std::filesystem::path user = CurrentPlatform().UserFolder();
  if (!user.empty()) {
    folder_ = user / "drafts";
    Find(now);
  }
}

std::error_code DataSetDrafts::Lock(Held& held) const {
  const auto number = static_cast<std::uint32_t>(NumberOf(held.path.filename().string()));
  return CurrentPlatform().Lock(folder_ / kLockName, number, held.lock);
}

void DataSetDrafts::Find(std::int64_t now) {
  std::set<std::string> names;
  // A folder that cannot be listed holds no drafts for this user.
  static_cast<void>(ListNames(folder_, names));
  for (const std::string& name : names) {
    Consider(name, now);
  }
  std::ranges::stable_sort(offered_, {},
                           [](const Held& held) { return held.draft ? held.draft->written : 0; });
}

void DataSetDrafts::Consider(const std::string& name, std::int64_t now) {
  Held held{.path = folder_ / SystemName(name)};
  const bool isDraft = name.ends_with(kDraftEnding);
  const bool isMeant = isDraft && name.starts_with(name_);
  const bool isOfOtherKind = isDraft && !otherName_.empty() && name.starts_with(otherName_);
  EntryFacts facts;
  const auto isFile = [&] {
    return !CurrentPlatform().Facts(held.path, facts) && facts.kind == EntryKind::File;
  };
  const auto isOld = [&] { return facts.modified != 0 && facts.modified < now - kLifetime; };
  if ((!isDraft && !name.ends_with(kDamagedEnding)) || !isFile() ||
      (!isMeant && !isOfOtherKind && !isOld()) || Lock(held)) {
    return;
  }
  // Until it was locked, another program may have changed or removed it.
  if (!isFile()) {
    return;
  }
  if (isMeant) {
    Offer(std::move(held));
  } else if (isOfOtherKind) {
    hasOfOtherKind_ = true;
  } else if (isOld()) {
    // If this fails, the next editor tries again.
    static_cast<void>(CurrentPlatform().RemoveFile(held.path));
  }
}

void DataSetDrafts::Offer(Held held) {
  std::string bytes;
  const std::error_code code = ReadNativeFile(held.path, bytes, kDataFileLimit);
  held.draft = code ? std::nullopt : DraftFrom(bytes);
  if (held.draft && held.draft->model == model_ && held.draft->file == file_) {
    offered_.push_back(std::move(held));
    return;
  }
  std::filesystem::path kept = held.path;
  kept.replace_extension(kDamagedEnding);
  EntryFacts facts;
  for (int number = 2; !CurrentPlatform().Facts(kept, facts) && facts.kind != EntryKind::None;
       ++number) {
    kept = held.path;
    kept.replace_extension("." + std::to_string(number) + std::string(kDamagedEnding));
  }
  const bool isRenamed = !CurrentPlatform().Replace(held.path, kept);
  damaged_.push_back(PathText(isRenamed ? kept : held.path));
}

const Draft* DataSetDrafts::Offered() const {
  return offered_.empty() ? nullptr : &*offered_.back().draft;
}

bool DataSetDrafts::IsOfferedOutdated() const {
  return Offered() != nullptr && Offered()->opened && Offered()->fileContent != fileContent_;
}

void DataSetDrafts::Begin(const EditorState& opened) {
  begun_ = opened;
  RemoveAllOf(opened);
}

void DataSetDrafts::TakeOffered() {
  if (offered_.empty()) {
    return;
  }
  Held& offered = offered_.back();
  taken_.push_back({.path = offered.path,
                    .draft = *offered.draft,
                    .before = own_.draft ? own_.path : std::filesystem::path()});
  std::swap(own_, offered);
  if (!offered.draft) {
    offered_.pop_back();
  }
}

DataSetDrafts::Held DataSetDrafts::Withdrawn(const std::filesystem::path& path) {
  const auto found = std::ranges::find(offered_, path, &Held::path);
  if (found == offered_.end()) {
    return {};
  }
  Held held = std::move(*found);
  offered_.erase(found);
  return held;
}

void DataSetDrafts::LeaveTaken(std::size_t number) {
  const Taken& taken = taken_.at(number);
  std::error_code code;
  if (own_.path == taken.path) {
    code = SaveNativeFile(own_.path, DraftBytes(taken.draft));
    // Where that fails, what was typed into the draft is offered with it.
    own_.draft = code ? own_.draft : taken.draft;
    offered_.push_back(std::exchange(own_, Held()));
  }
  if (!own_.draft && !taken.before.empty()) {
    own_ = Withdrawn(taken.before);
  }
  if (code) {
    throw SystemError(code, "write the draft", PathText(taken.path));
  }
}

void DataSetDrafts::TakeAgain(std::size_t number) {
  // The user may have discarded it, or taken it once more.
  if (Held held = Withdrawn(taken_.at(number).path); held.draft) {
    std::swap(own_, held);
    if (held.draft) {
      offered_.push_back(std::move(held));
    }
  }
}

void DataSetDrafts::DiscardOffered() {
  if (offered_.empty()) {
    return;
  }
  const std::filesystem::path& path = offered_.back().path;
  const std::error_code code = CurrentPlatform().Recycle(path);
  if (code && code != std::errc::no_such_file_or_directory) {
    throw SystemError(code, "move the draft to the recycle bin", PathText(path));
  }
  offered_.pop_back();
}

void DataSetDrafts::RemoveOffered() {
  if (!offered_.empty()) {
    Remove(offered_.back().path);
    offered_.pop_back();
  }
}

void DataSetDrafts::RemoveAllOf(const EditorState& state) {
  for (auto held = offered_.begin(); held != offered_.end();) {
    if (HoldsAllOf(state, held->draft->state)) {
      Remove(held->path);
      held = offered_.erase(held);
    } else {
      ++held;
    }
  }
  RemoveOwn();
}

void DataSetDrafts::TakeName() {
  if (own_.lock) {
    return;
  }
  if (folder_.empty()) {
    throw Error(ErrorKind::NotFound,
                "The system names no folder for the files of this user. Set the variable HOME, "
                "then start the program again.");
  }
  MakeFolders(folder_);
  std::error_code code;
  for (int number = 1; number <= std::numeric_limits<std::int16_t>::max(); ++number) {
    Held held{.path =
                  folder_ / SystemName(name_ + std::to_string(number) + std::string(kDraftEnding))};
    code = Lock(held);
    EntryFacts facts;
    if (!code) {
      code = CurrentPlatform().Facts(held.path, facts);
    }
    if (!code && facts.kind == EntryKind::None) {
      own_ = std::move(held);
      return;
    }
    if (code && code != std::errc::resource_unavailable_try_again) {
      break;
    }
  }
  throw SystemError(code, "write the draft", PathText(folder_ / kLockName));
}

void DataSetDrafts::Write(const EditorState& state, std::int64_t now) {
  Draft draft{
      .model = model_, .file = file_, .written = now, .fileContent = fileContent_, .state = state};
  if (!fileContent_.empty()) {
    draft.opened = begun_;
  }
  WriteOwn(std::move(draft));
}

void DataSetDrafts::WriteOwn(Draft draft) {
  TakeName();
  if (const std::error_code code = SaveNativeFile(own_.path, DraftBytes(draft))) {
    throw SystemError(code, "write the draft", PathText(own_.path));
  }
  own_.draft = std::move(draft);
}

void DataSetDrafts::LeaveOwn() {
  if (taken_.empty() || taken_.back().path != own_.path) {
    RemoveOwn();
    return;
  }
  WriteOwn(taken_.back().draft);
  offered_.push_back(std::exchange(own_, Held()));
}

void DataSetDrafts::RemoveOwn() {
  if (own_.draft) {
    Remove(own_.path);
    own_.draft.reset();
  }
}

}  // namespace tarvell
