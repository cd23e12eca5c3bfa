// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/DraftFolder.h"

#include <algorithm>
#include <limits>
#include <system_error>
#include <utility>

#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/files/SaveFile.h"
#include "core/platform/Error.h"

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

void MakeFolders(const std::filesystem::path& folder) {
  EntryFacts facts;
  if (folder.empty() || CurrentPlatform().Facts(folder, facts) || facts.kind == EntryKind::Folder) {
    return;
  }
  if (folder.has_parent_path() && folder.parent_path() != folder) {
    MakeFolders(folder.parent_path());
  }
  // If this fails, the error of the file that is written next says why.
  static_cast<void>(CurrentPlatform().MakeFolder(folder));
}

void Remove(const std::filesystem::path& path) {
  const std::error_code code = CurrentPlatform().RemoveFile(path);
  if (code && code != std::errc::no_such_file_or_directory) {
    throw SystemError(code, "remove the draft", PathText(path));
  }
}

}  // namespace

DraftFolder::DraftFolder(std::string model, std::string_view file, std::int64_t now)
    : model_(std::move(model)) {
  // The same for every way to write the path, in upper or lower case.
  file_ = file.empty() ? std::string() : FullPathText(file);
  // The serial number could hold any character. The number of the path is a name everywhere.
  name_ = model_ + "-" + (file_.empty() ? "new" : Digits(NumberOf(file_))) + "-";
  const std::filesystem::path user = CurrentPlatform().UserFolder();
  if (!user.empty()) {
    folder_ = user / "drafts";
    Find(now);
  }
}

std::error_code DraftFolder::Lock(Held& held) const {
  const auto number = static_cast<std::uint32_t>(NumberOf(held.path.filename().string()));
  return CurrentPlatform().Lock(folder_ / kLockName, number, held.lock);
}

void DraftFolder::Find(std::int64_t now) {
  std::vector<std::string> names;
  // A folder that cannot be listed holds no drafts for this user.
  static_cast<void>(
      CurrentPlatform().Search(folder_, SearchKind::EveryName, [&](const FoundEntry& entry) {
        names.push_back(entry.name);
        return true;
      }));
  std::ranges::sort(names);
  for (const std::string& name : names) {
    const bool isDraft = name.ends_with(kDraftEnding);
    Held held{.path = folder_ / name};
    EntryFacts facts;
    if ((!isDraft && !name.ends_with(kDamagedEnding)) ||
        CurrentPlatform().Facts(held.path, facts) || facts.kind != EntryKind::File) {
      continue;
    }
    const bool isOld = facts.modified != 0 && facts.modified < now - kLifetime;
    const bool isMeant = isDraft && name.starts_with(name_);
    if ((!isOld && !isMeant) || Lock(held)) {
      continue;
    }
    if (isOld) {
      // If this fails, the next editor tries again.
      static_cast<void>(CurrentPlatform().RemoveFile(held.path));
    } else {
      Offer(std::move(held));
    }
  }
  std::ranges::stable_sort(offered_, {},
                           [](const Held& held) { return held.draft ? held.draft->written : 0; });
}

void DraftFolder::Offer(Held held) {
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

const Draft* DraftFolder::Offered() const {
  return offered_.empty() ? nullptr : &*offered_.back().draft;
}

bool DraftFolder::IsOfferedOutdated() const {
  EntryFacts facts;
  return Offered() != nullptr && !file_.empty() &&
         !CurrentPlatform().Facts(NativePath(file_), facts) && facts.kind == EntryKind::File &&
         facts.modified > Offered()->written;
}

void DraftFolder::TakeOffered() {
  if (offered_.empty()) {
    return;
  }
  std::swap(own_, offered_.back());
  if (!offered_.back().draft) {
    offered_.pop_back();
  }
}

void DraftFolder::DiscardOffered() {
  if (!offered_.empty()) {
    Remove(offered_.back().path);
    offered_.pop_back();
  }
}

void DraftFolder::RemoveAllOf(const EditorState& state) {
  for (auto held = offered_.begin(); held != offered_.end();) {
    if (held->draft->state == state) {
      Remove(held->path);
      held = offered_.erase(held);
    } else {
      ++held;
    }
  }
  RemoveOwn();
}

void DraftFolder::TakeName() {
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
    Held held{.path = folder_ / (name_ + std::to_string(number) + std::string(kDraftEnding))};
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

void DraftFolder::Write(const EditorState& state, std::int64_t now) {
  TakeName();
  Draft draft{.model = model_, .file = file_, .written = now, .state = state};
  if (const std::error_code code = SaveNativeFile(own_.path, DraftBytes(draft))) {
    throw SystemError(code, "write the draft", PathText(own_.path));
  }
  own_.draft = std::move(draft);
}

void DraftFolder::RemoveOwn() {
  if (own_.draft) {
    Remove(own_.path);
    own_.draft.reset();
  }
}

}  // namespace tarvell
