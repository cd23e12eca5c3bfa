// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CALEDITOR_H
#define TARVELL_SCREENS_CALDATA_CALEDITOR_H

#include <QDialog>
#include <QPushButton>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/caldata/Models.h"
#include "core/caldata/mTypeDef.h"
#include "screens/caldata/GridModel.h"

namespace tarvell {

class CalGrid;
class CalHeaderBlock;
class CellEditor;
class NoticeLine;

/// The data set of row `index` of `gCalFiles`. Throws an Index error for a row that does not exist.
[[nodiscard]] const CalFileInfo& ListedDataSet(std::int16_t index);

/// What the two editors of calibration data share: opening a data set, its header and saving it.
class CalEditor : public QDialog {
  Q_OBJECT

 public:
  CalEditor(const CalEditor&) = delete;
  CalEditor& operator=(const CalEditor&) = delete;
  ~CalEditor() override;

  /// Index that stands for new data.
  static constexpr std::int16_t kNewData = 999;

  /// Shows the data set of row `index` of `gCalFiles`, or new data, and returns when the screen
  /// is closed. Throws an Index error for a row that does not exist, and the error of a load that
  /// fails; the screen is not shown then.
  void SetupDat(std::int16_t index, const std::string& modelCode);

 protected:
  explicit CalEditor(QWidget* parent);

  /// The controls that every editor has.
  struct Controls {
    CalHeaderBlock* header;
    CalGrid* grid;
    NoticeLine* notices;
    QPushButton* ok;
  };
  /// Takes them; called once, when they are made.
  void SetUp(const Controls& controls, std::unique_ptr<CellEditor> cellEditor);

  [[nodiscard]] const Model& CurrentModel() const { return *model_; }
  [[nodiscard]] cifCaldata& Data() const { return *data_; }
  [[nodiscard]] CellEditor& Cells() const { return *cellEditor_; }
  [[nodiscard]] NoticeLine& Notices() const { return *controls_.notices; }

  /// Marks the cells of a page that the grid has just been filled with.
  void ShowCellNotes();
  /// Keeps the marks of the page that the grid shows.
  void KeepCellNotes();
  /// Reports the mark of the current cell, else the first one of the data set.
  void ReportCells();

  /// Stores an open cell edit, saves the data set and closes the screen; does not close it when
  /// the serial number is missing, which is reported, or when a file that the user has not seen is
  /// to stay. Throws the error of a save that fails.
  void SaveAndClose();

 private:
  /// Whether new data start with the template's serial number.
  [[nodiscard]] virtual bool TakesTemplateSerial() const = 0;
  /// Shows the tables of Data().
  virtual void ShowTables() = 0;
  /// Stores the tables shown in Data().
  virtual void StoreTables() = 0;
  /// The page whose table the grid shows.
  [[nodiscard]] virtual std::int16_t ShownPage() const { return 0; }
  /// Why the user cannot type into a fixed column of the table.
  [[nodiscard]] virtual QString WhyFixed() const = 0;

  void ShowCaption(const QString& serial);
  /// Marks every cell of the data set that the file would give back differently.
  void FindCellNotes();
  /// Marks a cell, or removes its mark, after `typed` was stored in it; nullptr when it was pasted.
  void NoteCell(std::int16_t row, std::int16_t column, const QString* typed);
  void TellNotices(const std::vector<std::string>& notices);

  Controls controls_ = {};
  QString latestNote_;                           ///< of the cell that was stored last
  std::map<std::int16_t, CellNotes> cellNotes_;  ///< of the pages except the shown one
  std::unique_ptr<CellEditor> cellEditor_;       ///< ends before the table that it watches
  const Model* model_ = nullptr;
  std::unique_ptr<cifCaldata> data_;
};

}  // namespace tarvell

#endif
