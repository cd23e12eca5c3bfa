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

/// A line of a screen that shows notices. It takes no focus and no click; a screen reader announces
/// it. Each notice has a subject, such as a field or a cell, and stays until it is replaced or
/// removed. The line shows its remark, the latest notice and the number of notices; its tooltip
/// shows all.
class NoticeLine final : public QLabel {
  Q_OBJECT

 public:
  explicit NoticeLine(QWidget* parent = nullptr);

  /// Replaces the notice about `subject` by `text`; "" removes it.
  void Report(const QString& subject, const QString& text);
  /// Sets what is shown before the notices, whether there are any or not.
  void SetRemark(const QString& remark);
  [[nodiscard]] const QString& Remark() const { return remark_; }
  /// Shows the notice about `subject`, if there is one, instead of the latest.
  void ShowAbout(const QString& subject);
  /// Removes all notices and the remark.
  void Clear();

  /// The notice about `subject`, "" if none exists.
  [[nodiscard]] QString About(const QString& subject) const;
  /// All notices; the first is the one that is shown.
  [[nodiscard]] QStringList Notices() const;

  [[nodiscard]] QSize sizeHint() const override;
  /// The height does not depend on the text, so that the other controls do not move.
  [[nodiscard]] bool hasHeightForWidth() const override { return false; }
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ShowNotices();

  QString remark_;
  std::vector<std::pair<QString, QString>> notices_;  ///< subject and text; the last is shown
};

/// Marks a text box with a warning icon whose tooltip is `why`; a screen reader reads it with the
/// box. "" removes the mark.
void MarkBox(QLineEdit* box, const QString& why);

/// The reason why a box is marked, "" when it is not.
[[nodiscard]] QString MarkOf(const QLineEdit* box);

}  // namespace tarvell

#endif
