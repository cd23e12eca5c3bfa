// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_CONFINEDPLATFORM_H
#define TARVELL_TESTS_SUPPORT_CONFINEDPLATFORM_H

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <system_error>

#include "support/DesktopTestPlatform.h"

namespace tarvell::test {

/// The desktop's platform without the steps that read or change anything outside one folder. That
/// is the current folder while it lives.
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
  [[nodiscard]] std::error_code CreateTemporary(const std::filesystem::path& folder,
                                                std::filesystem::path& path,
                                                std::unique_ptr<OutputFile>& file) override {
    return MayUse(folder) ? DesktopTestPlatform::CreateTemporary(folder, path, file) : Refusal();
  }
  [[nodiscard]] std::error_code OpenInPlace(const std::filesystem::path& path,
                                            std::unique_ptr<OutputFile>& file) override {
    return MayUse(path) ? DesktopTestPlatform::OpenInPlace(path, file) : Refusal();
  }
  [[nodiscard]] std::error_code RemoveFile(const std::filesystem::path& path) override {
    return MayUse(path) ? DesktopTestPlatform::RemoveFile(path) : Refusal();
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

}  // namespace tarvell::test

#endif
