// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_OVERVIEW_OVERVIEWFILTER_H
#define TARVELL_SCREENS_OVERVIEW_OVERVIEWFILTER_H

#include <QComboBox>
#include <QLineEdit>
#include <QObject>
#include <QTimer>

#include <set>
#include <string>
#include <vector>

#include "core/survey/ShownRows.h"

namespace tarvell {

/// The controls of the overview that choose which rows are shown. The state and the station are
/// remembered for each user. In the box, Escape clears the text; Enter, Down and Tab leave it.
class OverviewFilter final : public QObject {
  Q_OBJECT

 public:
  struct Controls {
    QLineEdit* text;
    QComboBox* state;
    QComboBox* station;
  };
  /// `parent` owns the object; the controls must outlive it.
  OverviewFilter(const Controls& controls, QObject* parent);

  [[nodiscard]] RowFilter Filter() const;
  /// Adds the stations of rows that were read to the list.
  void AddStations(const std::vector<SurveyRow>& rows);
  /// Shows how many rows have each state, and shows all stations if the chosen one does not exist.
  void ShowSurveyed(const std::vector<SurveyRow>& rows);
  void RememberChoices() const;

 signals:
  void Changed();
  /// The user goes on to the table.
  void Left();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddStates() const;
  void AddStation(const std::string& name);

  Controls controls_;
  QTimer isDue_;
  std::set<std::string> stations_;
};

}  // namespace tarvell

#endif
