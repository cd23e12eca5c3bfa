// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/VersionTexts.h"

#include <QCoreApplication>

#include "core/dates/DueDate.h"
#include "core/history/Replacement.h"
#include "core/text/Text.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

QString Tr(const char* text) {
  return QCoreApplication::translate("frmHistory", text);
}

/// The cell with the state of a version.
class StateItem final : public QTableWidgetItem {
 public:
  explicit StateItem(const Calibration& version) : version_(version) {}

  [[nodiscard]] QVariant data(int role) const override {
    if (role != Qt::DisplayRole) {
      return QTableWidgetItem::data(role);
    }
    if (text_.isEmpty()) {
      text_ = StateText(version_);
    }
    return text_;
  }

 private:
  Calibration version_;
  mutable QString text_;
};

/// When, or by what, a version came to its end.
QString EndText(const Calibration& version) {
  if (version.isCurrent) {
    return Tr("(the present file)");
  }
  const QString time = ToQt(LocalTimeText(version.event.time));
  return version.event.done == kDeleted ? Tr("%1, deleted").arg(time) : time;
}

}  // namespace

QString StateText(const Calibration& version) {
  const std::string_view text = TextOf(version.State());
  return text.empty() ? Tr("As saved.") : ToQt(text);
}

QString HeaderText(const Calibration& version) {
  const CalFileInfo& header = version.header;
  if (!version.hasHeader) {
    return EndText(version);
  }
  return Tr("Serial number %1, calibration number %2, calibrated %3, due %4, comment: %5")
      .arg(ToQt(TextOrNone(header.SerialNumber)), ToQt(TextOrNone(header.CalibrationNumber)),
           ToQt(DateText(version.Calibrated())), ToQt(DateText(version.Due())),
           ToQt(TextOrNone(header.Comment)));
}

std::vector<QTableWidgetItem*> CellsOf(const Calibration& version) {
  const QString calibrated = version.hasHeader ? ToQt(DateText(version.Calibrated())) : QString();
  const QString due = version.hasHeader ? ToQt(DateText(version.Due())) : QString();
  std::vector<QTableWidgetItem*> cells;
  for (const QString& text :
       {calibrated, ToQt(version.header.CalibrationNumber), due, EndText(version),
        version.isCurrent ? QString() : ToQt(version.event.user)}) {
    cells.push_back(new QTableWidgetItem(text));  // the list takes it
  }
  cells.push_back(new StateItem(version));
  return cells;
}

}  // namespace tarvell
