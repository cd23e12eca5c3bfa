// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CALEDITOR_H
#define TARVELL_SCREENS_CALDATA_CALEDITOR_H

#include <QAction>
#include <QDialog>
#include <QList>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QUndoStack>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/caldata/EditorState.h"
#include "core/caldata/Models.h"
#include "core/caldata/mTypeDef.h"
#include "screens/caldata/EditHistory.h"
#include "screens/caldata/GridModel.h"
#include "screens/caldata/WholeStep.h"

namespace tarvell {

class CalGrid;
class CalHeaderBlock;
class CellEditor;
class CertificateFiles;
class DraftKeeper;
class DraftStrip;
class EditorCurve;
class NoticeLine;
class SlipWatch;

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

  /// What has been done to the tables, the serial numbers of the members and the option since the
  /// screen was opened. Its signal indexChanged reports every change.
  [[nodiscard]] const QUndoStack& History() const { return history_; }

  /// The serial number that was saved last.
  [[nodiscard]] const std::string& SavedSerial() const { return savedSerial_; }

  /// Closes the screen without saving; what was typed stays as a draft. If no draft can be written,
  /// asks first.
  void reject() override;

 protected:
  explicit CalEditor(QWidget* parent);

  /// The controls that both editors have.
  struct Controls {
    CalHeaderBlock* header;
    CalGrid* grid;
    QTabBar* tabs;  ///< of the pages; nullptr where the data have only one
    NoticeLine* notices;
    QPushButton* ok;
    QPushButton* file;
    DraftStrip* draft;
  };
  /// Connects the controls. The constructor calls this once.
  void SetUp(const Controls& controls, std::unique_ptr<CellEditor> cellEditor);

  [[nodiscard]] const Model& CurrentModel() const { return *model_; }
  [[nodiscard]] cifCaldata& Data() const { return *data_; }
  [[nodiscard]] CellEditor& Cells() const { return *cellEditor_; }
  [[nodiscard]] NoticeLine& Notices() const { return *controls_.notices; }
  /// What can be done with the whole data set; each feature adds its entries.
  [[nodiscard]] QMenu& FileMenu() const { return *fileMenu_; }
  /// The subject of notices about a new point.
  static constexpr const char* kPoint = "point";

  /// Runs `change`, which changes the shown table, the serial number of its member or the option,
  /// and makes it a step of the history. An undo shows the page before the change again. `what`
  /// completes "Undo ...". If `change` throws, it must not have changed anything. Steps with the
  /// same `run` become one.
  void Change(const QString& what, const std::function<void()>& change, int run = EditStep::kNoRun);

  /// Marks the cells that have notes and those that are still to be entered, after the grid has
  /// been filled with a page.
  void ShowCellMarks();
  /// Keeps the marks of the shown page until it is shown again.
  void KeepCellMarks();
  /// Reports the note of the current cell, or else another one of the data set.
  void ReportCells();
  /// Reports how many values of the data set are still to be entered.
  void ReportValuesToEnter();

  /// Steps back in the history, unless an edit is open.
  void Undo();
  /// Steps forward again; in an open edit and in a field of the header, in the text of its box.
  void Redo();

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
  /// The serial number of the member on the shown page, as far as it is in the history.
  [[nodiscard]] virtual QString MemberSerial() const { return {}; }
  virtual void ShowMemberSerial(const QString& /*serial*/) {}
  [[nodiscard]] virtual bool HasOption() const { return false; }
  /// Switches the option and shows a page.
  virtual void GoTo(std::int16_t /*page*/, bool /*hasOption*/) {}
  /// The entries of the table's menu about points.
  [[nodiscard]] virtual QList<QAction*> PointActions() const { return {}; }
  /// The sentence that says where the values of a fixed column come from.
  [[nodiscard]] virtual QString WhyFixed() const = 0;

  void ShowCaption(const QString& serial);
  [[nodiscard]] PageState State() const;
  /// Shows the page as it is in `state`, at the first cell that differs from `other`.
  void ShowState(const PageState& state, const PageState& other);
  /// Reports every change to the drafts.
  void WatchChanges();
  /// Everything that is in the editor, as a draft keeps it.
  [[nodiscard]] EditorState Contents();
  /// Shows the contents of a draft, in one step of the history.
  void Restore(const EditorState& draft, const WholeStep::Shown& shown);
  void RestorePage(const DraftPage& page);
  /// Shows other contents of the whole data set.
  void ShowContents(const EditorState& contents);
  /// Stores in Data() what is shown. Throws the error of what cannot be stored.
  void StoreContents();
  /// Makes these the contents, in one step of the history.
  void TakeContents(
      const QString& what, const EditorState& contents,
      const WholeStep::Shown& shown = [](bool /*isMade*/) {});
  /// The notes of the cells that will be read back differently after a save.
  [[nodiscard]] CellNotes NotesOf(const MemoryGrid& grid, std::int16_t page) const;
  void MakeActions();
  void ShowMenu(const QPoint& place);
  void MakeFileMenu();
  /// Shows the page of a step and does `go`. Does nothing when a header field has the keyboard.
  void Go(const PageState& state, const std::function<void()>& go);

  /// What is known of the cells of a page.
  struct CellMarks {
    CellNotes notes;
    CellOrigins origins;
  };
  /// The marks of a page that is not shown; as they were when the data set was opened, if it has
  /// not been shown yet.
  [[nodiscard]] CellMarks& MarksOf(std::int16_t page);
  [[nodiscard]] CellMarks FirstMarksOf(std::int16_t page) const;
  struct NotedCell {
    std::int16_t page;
    Cell cell;
    QString note;
  };
  /// The cells of all pages that have notes, from the first page to the last.
  [[nodiscard]] std::vector<NotedCell> NotedCells();
  /// How many values of this origin the data set holds.
  [[nodiscard]] int CountOf(Origin origin);
  /// Notes whether a cell holds what was typed, and whether that will be read back. `typed` is
  /// nullopt for a pasted cell.
  void NoteCell(Cell cell, const std::optional<QString>& typed);
  void ShowLoadNotices(const std::vector<std::string>& notices);

  Controls controls_ = {};
  QString latestNote_;                       ///< of the cell that was stored last
  std::map<std::int16_t, CellMarks> marks_;  ///< by page; the table has those of the shown page
  std::unique_ptr<CellEditor> cellEditor_;   ///< destroyed before the table that it watches
  const Model* model_ = nullptr;
  std::unique_ptr<cifCaldata> data_;
  Origin fileValues_ = Origin::File;  ///< where the values come from that the file holds
  std::string savedSerial_;
  QUndoStack history_;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
  QMenu* fileMenu_ = nullptr;
  QAction* showHistory_ = nullptr;
  std::string filePath_;        ///< of the data set, "" for one that has no file yet
  std::string templateSerial_;  ///< the serial number of new data that nobody has entered
  DraftKeeper* drafts_ = nullptr;
  CertificateFiles* certificates_ = nullptr;
  EditorCurve* curve_ = nullptr;
  SlipWatch* slips_ = nullptr;
};

}  // namespace tarvell

#endif
