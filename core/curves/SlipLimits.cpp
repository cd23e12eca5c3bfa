// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/curves/SlipLimits.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <system_error>
#include <utility>

#include "core/files/FileNames.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/numbers/Numbers.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

// The reasons are in docs/file-formats.md.
constexpr SlipLimit kSensorLimit = {.absolute = 0, .percent = 1};
constexpr SlipLimit kAttenuatorLimit = {.absolute = 0.1, .percent = 0.2};
constexpr SlipLimit kSetLimit = {.uncertainties = 3, .uncertaintyPercent = 50};

constexpr std::array<std::pair<std::string_view, double SlipLimit::*>, 4> kKeys = {{
    {"absolute", &SlipLimit::absolute},
    {"percent", &SlipLimit::percent},
    {"uncertainties", &SlipLimit::uncertainties},
    {"uncertainty percent", &SlipLimit::uncertaintyPercent},
}};

/// A file that needs more is something else.
constexpr std::size_t kLimitsFileSize = 1U << 16U;

/// Some editors begin a file with it.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Reads the lines of a limits file, one after the other.
class LimitsReader {
 public:
  void Take(std::string_view text) {
    ++number_;
    const std::string spaced = Replaced(text, '\t', ' ');
    const std::string_view line = Trim(spaced);
    if (line.empty() || line.front() == ';') {
      return;
    }
    if (line.front() == '[' && line.back() == ']') {
      TakeSection(line, Trim(line.substr(1, line.size() - 2)));
    } else {
      TakeValue(line);
    }
  }

  [[nodiscard]] SlipLimits Limits() { return std::move(limits_); }

 private:
  void TakeSection(std::string_view line, std::string_view code) {
    model_ = FindModel(ToUpper(code));
    isInSection_ = true;
    if (model_ == nullptr) {
      Refuse(line, "the program knows no such model");
    } else {
      limits_.ofModels.try_emplace(std::string(model_->code), DefaultLimit(*model_));
    }
  }

  void TakeValue(std::string_view line) {
    const std::size_t sign = line.find('=');
    const std::string_view name = Trim(line.substr(0, std::min(sign, line.size())));
    const auto* key = std::ranges::find_if(
        kKeys, [&](const auto& known) { return EqualsIgnoringCase(known.first, name); });
    if (sign == std::string_view::npos || key == kKeys.end()) {
      Refuse(line, R"(a line is "[MODEL]" or one of absolute, percent, uncertainties and )"
                   R"(uncertainty percent with "=" and a number)");
      return;
    }
    const std::optional<double> value = ParseNumber(Trim(line.substr(sign + 1)));
    if (!value || !std::isfinite(*value) || *value < 0) {
      Refuse(line, "a limit is a number that is not below zero, with a point for the decimals");
    } else if (!isInSection_) {
      Refuse(line, R"(a line such as "[PX12A]" must be above it)");
    } else if (model_ != nullptr) {
      limits_.ofModels.find(model_->code)->second.*(key->second) = *value;
    }
  }

  void Refuse(std::string_view line, const std::string& why) {
    limits_.problems.push_back("Line " + std::to_string(number_) + " of " +
                               std::string(kLimitsFile) + " was not used: " + Quoted(line) + "; " +
                               why + ".");
  }

  SlipLimits limits_;
  const Model* model_ = nullptr;
  bool isInSection_ = false;
  int number_ = 0;
};

}  // namespace

SlipLimit DefaultLimit(const Model& model) {
  switch (model.family) {
    case ModelFamily::PowerSensor:
      return kSensorLimit;
    case ModelFamily::StepAttenuator:
      return kAttenuatorLimit;
    case ModelFamily::CapacitorSet:
    case ModelFamily::ResistorSet:
      return kSetLimit;
    case ModelFamily::TestKit:
      break;
  }
  return {};
}

SlipLimit SlipLimits::Of(const Model& model) const {
  const auto found = ofModels.find(model.code);
  return found != ofModels.end() ? found->second : DefaultLimit(model);
}

SlipLimits ParseSlipLimits(std::string_view text) {
  LimitsReader reader;
  if (text.starts_with(kByteOrderMark)) {
    text.remove_prefix(kByteOrderMark.size());
  }
  while (!text.empty()) {
    reader.Take(TakeLine(text));
  }
  return reader.Limits();
}

SlipLimits LoadSlipLimits(const std::string& root) {
  std::string bytes;
  const std::error_code failure =
      ReadNativeFile(NativePath(Joined(root, kLimitsFile)), bytes, kLimitsFileSize);
  if (failure == std::errc::no_such_file_or_directory) {
    return {};
  }
  if (failure) {
    SlipLimits limits;
    limits.problems.push_back(std::string(kLimitsFile) + " cannot be read: " + failure.message() +
                              ". The limits of the program are used.");
    return limits;
  }
  return ParseSlipLimits(IsUtf8(bytes) ? bytes : DecodeFileText(bytes));
}

}  // namespace tarvell
