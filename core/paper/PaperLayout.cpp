// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/paper/PaperLayout.h"

#include <algorithm>
#include <utility>

#include "core/paper/TableLayout.h"
#include "core/paper/WrappedText.h"

namespace tarvell {

namespace {

constexpr double kGap = 8;      // between parts
constexpr double kColumn = 12;  // between names and values
constexpr double kRule = 0.5;
constexpr double kBlankHeight = 34;  // room to write by hand

/// Places the parts of a document one below the other.
class Layout {
 public:
  Layout(const PaperDocument& document, PaperArea area, const PaperFonts& fonts)
      : document_(document),
        area_(area),
        fonts_(fonts),
        bottom_(area.height - kGap - fonts.LineHeight(PaperFont::Small)) {
    BeginSheet();
  }

  std::vector<PaperSheet> Sheets() && {
    for (const PaperPart& part : document_.parts) {
      std::visit([this](const auto& each) { Add(each); }, part);
      y_ += kGap;
    }
    AddFeet();
    return std::move(sheets_);
  }

 private:
  void BeginSheet() {
    const PaperFont font = sheets_.empty() ? PaperFont::Title : PaperFont::Small;
    sheets_.emplace_back();
    y_ = 0;
    AddLines(document_.title, font);
    y_ += kGap;
    top_ = y_;
  }

  [[nodiscard]] PaperSheet& Sheet() { return sheets_.back(); }
  [[nodiscard]] double SheetHeight() const { return bottom_ - top_; }

  /// Begins another sheet, unless so much room is left on this one or it is empty.
  void MakeRoom(double height) {
    if (y_ + height > bottom_ && y_ > top_) {
      BeginSheet();
    }
  }

  /// Adds lines without looking whether there is room.
  void AddLines(std::string_view text, PaperFont font) {
    for (std::string& line : WrappedText(text, area_.width, font, fonts_)) {
      Sheet().texts.push_back({0, y_, std::move(line), font});
      y_ += fonts_.LineHeight(font);
    }
  }

  [[nodiscard]] double HeightOf(std::string_view text, PaperFont font) const {
    return text.empty() ? 0
                        : static_cast<double>(WrappedText(text, area_.width, font, fonts_).size()) *
                              fonts_.LineHeight(font);
  }

  void Add(const PaperFields& fields) {
    double names = 0;
    for (const PaperField& field : fields) {
      names = std::max(names, fonts_.WidthOf(field.name, PaperFont::Strong));
    }
    names = std::min(names + kColumn, area_.width / 2);
    for (const PaperField& field : fields) {
      const auto name = WrappedText(field.name, names - kColumn, PaperFont::Strong, fonts_);
      const auto value = WrappedText(field.value, area_.width - names, PaperFont::Text, fonts_);
      const double nameLine = fonts_.LineHeight(PaperFont::Strong);
      const double valueLine = fonts_.LineHeight(PaperFont::Text);
      const double height = std::max(static_cast<double>(name.size()) * nameLine,
                                     static_cast<double>(value.size()) * valueLine);
      MakeRoom(height);
      Place(name, 0, PaperFont::Strong);
      Place(value, names, PaperFont::Text);
      y_ += height;
    }
  }

  void Place(const std::vector<std::string>& lines, double x, PaperFont font) {
    double y = y_;
    for (const std::string& line : lines) {
      Sheet().texts.push_back({x, y, line, font});
      y += fonts_.LineHeight(font);
    }
  }

  void Add(const PaperParagraph& paragraph) {
    const PaperFont font = paragraph.isStrong ? PaperFont::Strong : PaperFont::Text;
    for (std::string& line : WrappedText(paragraph.text, area_.width, font, fonts_)) {
      MakeRoom(fonts_.LineHeight(font));
      Sheet().texts.push_back({0, y_, std::move(line), font});
      y_ += fonts_.LineHeight(font);
    }
  }

  void Add(const PaperTable& table) {
    const TableLayout layout(table, area_.width, fonts_);
    // Captions leave room for rows, whatever they say.
    const WrappedRow captions = layout.Captions(SheetHeight() / 3);
    const auto headOf = [&](const std::string& caption) {
      return HeightOf(caption, PaperFont::Strong) + captions.height;
    };
    const auto begin = [&](const std::string& caption) {
      if (!caption.empty()) {
        AddLines(caption, PaperFont::Strong);
      }
      layout.PlaceCaptions(captions, y_, Sheet());
      y_ += captions.height;
    };
    const std::string continued = table.caption.empty() ? "" : table.caption + " (continued)";
    const double limit = SheetHeight() - headOf(continued);
    MakeRoom(headOf(table.caption) + (table.rows.empty() ? 0 : layout.Row(0, limit).height));
    begin(table.caption);
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
      const WrappedRow wrapped = layout.Row(row, limit);
      if (y_ + wrapped.height > bottom_) {
        BeginSheet();
        begin(continued);
      }
      layout.PlaceRow(wrapped, row, y_, Sheet());
      y_ += wrapped.height;
    }
  }

  void Add(const PaperPicture& picture) {
    const double caption = HeightOf(picture.caption, PaperFont::Strong);
    const double height = std::min(picture.height, SheetHeight() - caption);
    MakeRoom(caption + height);
    if (!picture.caption.empty()) {
      AddLines(picture.caption, PaperFont::Strong);
    }
    Sheet().pictures.push_back({0, y_, area_.width, height, picture.number});
    y_ += height;
  }

  void Add(const PaperBlanks& blanks) {
    MakeRoom(kBlankHeight + fonts_.LineHeight(PaperFont::Small));
    const double share = area_.width / static_cast<double>(blanks.captions.size());
    double x = 0;
    for (const std::string& caption : blanks.captions) {
      Sheet().rules.push_back({x, y_ + kBlankHeight, share - kColumn, kRule});
      Sheet().texts.push_back({x, y_ + kBlankHeight, caption, PaperFont::Small});
      x += share;
    }
    y_ += kBlankHeight + fonts_.LineHeight(PaperFont::Small);
  }

  void AddFeet() {
    const double y = area_.height - fonts_.LineHeight(PaperFont::Small);
    const std::string count = std::to_string(sheets_.size());
    std::size_t number = 1;
    for (PaperSheet& sheet : sheets_) {
      const std::string page = "Page " + std::to_string(number++) + " of " + count;
      const double left = area_.width - fonts_.WidthOf(page, PaperFont::Small);
      const auto foot = WrappedText(document_.foot, left - kColumn, PaperFont::Small, fonts_);
      sheet.rules.push_back({0, y - kGap / 4, area_.width, kRule});
      sheet.texts.push_back({0, y, foot.front(), PaperFont::Small});
      sheet.texts.push_back({left, y, page, PaperFont::Small});
    }
  }

  const PaperDocument& document_;
  PaperArea area_;
  const PaperFonts& fonts_;
  std::vector<PaperSheet> sheets_;
  double top_ = 0;     ///< of the parts, below the title
  double bottom_ = 0;  ///< of the parts, above the foot
  double y_ = 0;
};

}  // namespace

std::vector<PaperSheet> LayOut(const PaperDocument& document, PaperArea area,
                               const PaperFonts& fonts) {
  return Layout(document, area, fonts).Sheets();
}

}  // namespace tarvell
