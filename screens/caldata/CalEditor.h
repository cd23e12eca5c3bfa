// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CALEDITOR_H
#define TARVELL_SCREENS_CALDATA_CALEDITOR_H

#include <QDialog>
#include <QPushButton>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
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

/// Row `index` of `gCalFiles`. Throws an Index error for a row that does not exist.
[[nodiscard]] CalFileInfo ListedDataSet(std::int16_t index);

/// What both editors of calibration data do: open a data set, edit its header and save it.
class CalEditor : public QDialog {
  Q_OBJECT

 public:
  CalEditor(const CalEditor&) = delete;
  CalEditor& operator=(const CalEditor&) = delete;
  ~CalEditor() override;

  /// The index that means new data.
  static constexpr std::int16_t kNewData = 999;

  /// What to begin with for a data set that is in a file; see OpenedDataSet.h.
  enum class Begin { AsSaved, NewCalibration, Copy };

  /// Shows the data set of row `index` of `gCalFiles`, or new data, and returns when the screen
  /// is closed. Throws an Index error for a row or model that does not exist, and the error of a
  /// load that fails. The screen is not shown then.
  void SetupDat(std::int16_t index, const std::string& modelCode, Begin begin = Begin::AsSaved);

 protected:
  explicit CalEditor(QWidget* parent);

  /// The controls that both editors have.
  struct Controls {
    CalHeaderBlock* header;
    CalGrid* grid;
    NoticeLine* notices;
    QPushButton* ok;
  };
  /// Connects the controls. The constructor calls this once.
  void SetUp(const Controls& controls, std::unique_ptr<CellEditor> cellEditor);

  [[nodiscard]] const Model& CurrentModel() const { return *model_; }
  [[nodiscard]] cifCaldata& Data() const { return *data_; }
  [[nodiscard]] CellEditor& Cells() const { return *cellEditor_; }
  [[nodiscard]] NoticeLine& Notices() const { return *controls_.notices; }

  /// Marks the cells that have notes, after the grid has been filled with a page.
  void ShowCellNotes();
  /// Keeps the notes of the shown page until it is shown again.
  void KeepCellNotes();
  /// Reports the note of the current cell, or else another one of the data set.
  void ReportCells();

  /// Stores an open edit of a cell, saves the data set and closes the screen. The screen stays open
  /// when the serial number is missing, which is reported, or when the user keeps the file that the
  /// save would replace. Throws the error of a save that fails.
  void SaveAndClose();

 private:
  /// Whether new data start with the template's serial number.
  [[nodiscard]] virtual bool TakesTemplateSerial() const = 0;
  /// Shows the tables of Data().
  virtual void ShowTables() = 0;
  /// Stores in Data() the tables that are shown.
  virtual void StoreTables() = 0;
  /// The page whose table the grid shows.
  [[nodiscard]] virtual std::int16_t ShownPage() const { return 0; }
  /// The sentence that says where the values of a fixed column come from.
  [[nodiscard]] virtual QString WhyFixed() const = 0;

  void ShowCaption(const QString& serial);
  /// Notes every cell of the data set that will be read back differently after a save.
  void FindCellNotes();
  /// Notes whether a cell holds what was typed, and whether that will be read back. `typed` is
  /// nullopt for a pasted cell.
  void NoteCell(Cell cell, const std::optional<QString>& typed);
  void ShowLoadNotices(const std::vector<std::string>& notices);

  Controls controls_ = {};
  QString latestNote_;                           ///< of the cell that was stored last
  std::map<std::int16_t, CellNotes> cellNotes_;  ///< by page; the table has those of the shown page
  std::unique_ptr<CellEditor> cellEditor_;       ///< destroyed before the table that it watches
  const Model* model_ = nullptr;
  std::unique_ptr<cifCaldata> data_;
};

}  // namespace tarvell

#endif
