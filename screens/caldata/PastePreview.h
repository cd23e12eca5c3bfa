// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_PASTEPREVIEW_H
#define TARVELL_SCREENS_CALDATA_PASTEPREVIEW_H

#include <QDialog>
#include <QStringList>

#include <memory>

#include "core/caldata/PastedTable.h"

namespace tarvell {

namespace Ui {
class PastePreview;
}

/// Shows what pasting a table of points would do to each row, before it is done. OK accepts it.
class PastePreview final : public QDialog {
  Q_OBJECT

 public:
  /// `captions` are those of the table's columns.
  PastePreview(PastedTable table, const QStringList& captions, QWidget* parent);
  PastePreview(const PastePreview&) = delete;
  PastePreview& operator=(const PastePreview&) = delete;
  ~PastePreview() override;

  /// Whether the user wants the points that the clipboard lacks to be removed.
  [[nodiscard]] bool RemovesMissing() const;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  [[nodiscard]] QString Summary() const;
  /// A sentence if the values of a column in per cent, which has this caption, may be ratios.
  [[nodiscard]] QString RatioWarning(const QString& caption) const;
  [[nodiscard]] QString UnitSentence() const;
  void ShowCaptions(const QStringList& captions);
  void ShowRows();
  void ShowRow(int row, const PastedRow& pasted);
  void chkRemove_Toggled();

  std::unique_ptr<Ui::PastePreview> ui_;
  PastedTable table_;
};

}  // namespace tarvell

#endif
