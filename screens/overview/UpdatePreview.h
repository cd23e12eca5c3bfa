// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_OVERVIEW_UPDATEPREVIEW_H
#define TARVELL_SCREENS_OVERVIEW_UPDATEPREVIEW_H

#include <QDialog>
#include <QString>

#include <memory>
#include <vector>

namespace tarvell {

namespace Ui {
class UpdatePreview;
}

/// Shows every line of the stations' files that an update changes, before it is done. OK accepts
/// it.
class UpdatePreview final : public QDialog {
  Q_OBJECT

 public:
  /// A line of a file before and after the update, each "" if the file does not have it, or the
  /// reason why the file is not updated.
  struct Line {
    QString file = {};
    QString before = {};
    QString after = {};
    QString problem = {};
  };

  /// `canUpdate` says whether any file can be updated.
  UpdatePreview(const std::vector<Line>& lines, bool canUpdate, QWidget* parent);
  UpdatePreview(const UpdatePreview&) = delete;
  UpdatePreview& operator=(const UpdatePreview&) = delete;
  ~UpdatePreview() override;

 private:
  void ShowLine(int row, const Line& line);

  std::unique_ptr<Ui::UpdatePreview> ui_;
};

}  // namespace tarvell

#endif
