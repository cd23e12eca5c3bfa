// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_OVERVIEW_OVERVIEWMODEL_H
#define TARVELL_SCREENS_OVERVIEW_OVERVIEWMODEL_H

#include <QAbstractTableModel>
#include <QColor>
#include <QIcon>
#include <QPalette>
#include <QString>
#include <QStyle>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "core/survey/ShownRows.h"

namespace tarvell {

/// The columns of the table are the first ones of SurveyColumn.
inline constexpr int kOverviewColumns = static_cast<int>(SurveyColumn::State) + 1;

/// The rows of a survey as the table of the overview. A state is marked by words, icon and colour;
/// its tooltip says what to do about it.
class OverviewModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit OverviewModel(QObject* parent);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  /// Sorts by a column; -1 is the order of the survey.
  void sort(int column, Qt::SortOrder order) override;

  [[nodiscard]] const ShownRows& Rows() const { return rows_; }
  [[nodiscard]] const SurveyRow& RowAt(int row) const {
    return rows_.At(static_cast<std::size_t>(row));
  }
  /// Where the row of this file or folder is shown, or -1.
  [[nodiscard]] int PlaceOf(const std::string& path) const;

  /// Lets `change` change the rows where they are, and forgets what is selected.
  void Change(const std::function<void(std::vector<SurveyRow>& rows)>& change);
  /// Adds rows. What is selected stays selected.
  void Append(std::vector<SurveyRow> rows);
  /// Forgets what is selected.
  void SetFilter(RowFilter filter);

  /// Takes colours and icons of the screen.
  void SetLook(const QPalette& palette, const QStyle& style);

 private:
  /// Changes the order of the rows, without adding or removing any.
  void Rearrange(const std::function<void()>& change);

  ShownRows rows_;
  QIcon bad_;
  QIcon doubtful_;
  QColor badColour_;
  QColor doubtfulColour_;
};

/// What was found in a row and what to do about it, one line for each state.
[[nodiscard]] QString ToDoText(const SurveyRow& row);

}  // namespace tarvell

#endif
