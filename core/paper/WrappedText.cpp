// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/paper/WrappedText.h"

#include <algorithm>
#include <utility>

#include "core/text/Text.h"

namespace tarvell {

namespace {

/// Puts words into lines.
class Wrapping {
 public:
  Wrapping(double width, PaperFont font, const PaperFonts& fonts)
      : width_(width), font_(font), fonts_(fonts) {}

  void AddLine(std::string_view text) {
    lines_.emplace_back();
    if (Fits(text)) {
      lines_.back() = text;
      return;
    }
    while (!text.empty()) {
      const std::size_t end = std::min(text.find(' '), text.size());
      AddWord(text.substr(0, end));
      text.remove_prefix(std::min(end + 1, text.size()));
    }
  }

  [[nodiscard]] std::vector<std::string> TakeLines() { return std::move(lines_); }

 private:
  [[nodiscard]] bool Fits(std::string_view text) const {
    return fonts_.WidthOf(text, font_) <= width_;
  }

  void AddWord(std::string_view word) {
    std::string& line = lines_.back();
    std::string longer = line.empty() ? std::string(word) : line + ' ' + std::string(word);
    if (Fits(longer)) {
      line = std::move(longer);
      return;
    }
    if (!line.empty()) {
      lines_.emplace_back();
    }
    while (!Fits(word) && CharacterCount(word) > 1) {
      const std::string_view begin = FirstCharacters(word, CountThatFits(word));
      lines_.back() = begin;
      lines_.emplace_back();
      word.remove_prefix(begin.size());
    }
    lines_.back() = word;
  }

  /// How many characters of a word fit into a line, at least one.
  [[nodiscard]] std::size_t CountThatFits(std::string_view word) const {
    std::size_t fits = 1;
    std::size_t tooMany = CharacterCount(word);
    while (tooMany - fits > 1) {
      const std::size_t middle = (fits + tooMany) / 2;
      (Fits(FirstCharacters(word, middle)) ? fits : tooMany) = middle;
    }
    return fits;
  }

  double width_;
  PaperFont font_;
  const PaperFonts& fonts_;
  std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> WrappedText(std::string_view text, double width, PaperFont font,
                                     const PaperFonts& fonts) {
  Wrapping wrapping(width, font, fonts);
  const std::string_view shown = FirstCharacters(text, kShownCharacters);
  std::string_view rest = shown;
  do {
    wrapping.AddLine(TakeLine(rest));
  } while (!rest.empty());
  if (shown.size() < text.size()) {
    wrapping.AddLine("...");
  }
  return wrapping.TakeLines();
}

}  // namespace tarvell
