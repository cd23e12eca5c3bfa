// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_OVERVIEW_OVERVIEWTABLE_H
#define TARVELL_SCREENS_OVERVIEW_OVERVIEWTABLE_H

#include <QTableView>

#include <functional>
#include <vector>

#include "screens/overview/OverviewModel.h"

namespace tarvell {

/// The table of the overview. A click on a caption sorts by its column, a third one shows the order
/// of the survey again. Widths, places and order of the columns are remembered for each user.
class OverviewTable final : public QTableView {
  Q_OBJECT

 public:
  explicit OverviewTable(QWidget* parent = nullptr);

  [[nodiscard]] OverviewModel& Model() const { return *model_; }

  /// The row that the keyboard is in, nullptr without one.
  [[nodiscard]] const SurveyRow* Current() const;
  [[nodiscard]] std::vector<SurveyRow> Selected() const;

  /// Does something that resets the model. The same row is the current one afterwards or, if it is
  /// not shown any more, the one in its place.
  void KeepingTheRow(const std::function<void()>& reset);

  void RememberColumns() const;

 signals:
  /// The user opens the current row, by Enter or a double click.
  void OpenWanted();
  /// Another row is the current one, or it has changed.
  void CurrentChanged();

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  void SetUpColumns();
  void TakeRememberedColumns();

  OverviewModel* model_;
};

}  // namespace tarvell

#endif
