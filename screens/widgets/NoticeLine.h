// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_NOTICELINE_H
#define TARVELL_SCREENS_WIDGETS_NOTICELINE_H

#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace tarvell {

/// A line on a screen that reports and never asks: it takes no focus and no click, and a screen
/// reader announces it. Each notice is about one subject, such as a field or a cell, and stays
/// until it is replaced or taken back. The line shows the latest notice and says how many there
/// are; its tooltip shows all.
class NoticeLine final : public QLabel {
  Q_OBJECT

 public:
  explicit NoticeLine(QWidget* parent = nullptr);

  /// Reports `text` about `subject` in place of what was reported about it. "" takes that back.
  void Report(const QString& subject, const QString& text);
  /// Shows the notice about `subject`, if there is one, in place of the latest.
  void ShowAbout(const QString& subject);
  void Clear();

  /// The notice about `subject`, "" when there is none.
  [[nodiscard]] QString About(const QString& subject) const;
  /// All notices, the one that is shown first.
  [[nodiscard]] QStringList Notices() const;

  [[nodiscard]] QSize sizeHint() const override;
  /// Its height does not follow its text, which would move the screen.
  [[nodiscard]] bool hasHeightForWidth() const override { return false; }
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ShowNotices();

  std::vector<std::pair<QString, QString>> notices_;  ///< subject and text, the shown one last
};

/// Marks a text box with a warning icon that gives `why` as its tooltip; a screen reader reads it
/// with the box. "" removes the mark.
void MarkBox(QLineEdit* box, const QString& why);

/// Why a box is marked, "" when it is not.
[[nodiscard]] QString MarkOf(const QLineEdit* box);

}  // namespace tarvell

#endif
