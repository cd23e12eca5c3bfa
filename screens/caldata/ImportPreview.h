// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_IMPORTPREVIEW_H
#define TARVELL_SCREENS_CALDATA_IMPORTPREVIEW_H

#include <QDialog>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/curves/JudgedPage.h"
#include "exchange/ImportPlan.h"
#include "screens/caldata/ChosenColumns.h"
#include "screens/caldata/ColumnBoxes.h"
#include "screens/caldata/TableBox.h"

namespace tarvell {

class EarlierChoice;

namespace Ui {
class ImportPreview;
}

/// Shows what importing a certificate would change: the header, each page, what is rounded and what
/// is not used, and which values the editor will mark. The user chooses how to read what can be
/// read in two ways, the instrument, the tables and the columns. "Import" accepts it.
class ImportPreview final : public QDialog {
  Q_OBJECT

 public:
  /// `certificate` was read from `bytes`. `target` and `earlier` must outlive the screen.
  ImportPreview(const ImportTarget& target, const EarlierChoice& earlier, std::string bytes,
                Certificate certificate, QString fileName, QWidget* parent);
  ImportPreview(const ImportPreview&) = delete;
  ImportPreview& operator=(const ImportPreview&) = delete;
  ~ImportPreview() override;

  /// What the editor shows after the import.
  [[nodiscard]] EditorState After() const;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  /// Gives each control without a caption an Alt key, and the tabs their place in the order of Tab.
  void GiveKeys();
  void ConnectControls();
  /// Divides the room between the choices and the tables as last time, or as the boxes need it.
  void ShareRoom();
  /// Proposes what goes where, with the columns that the user chose for the same captions. What the
  /// user chose in this preview stays.
  void Propose();
  void ShowQuestions();
  void ShowItems();
  void ShowPages();
  void ShowTables();
  void ShowColumns();

  void cmbReading_Activated();
  void cmbItem_Activated(int index);
  void cmbTable_Activated(int index);
  void cmbColumn_Activated();

  /// Plans the import again and shows the plan.
  void Plan();
  /// Unticks the boxes whose tick was about something else. Points that nobody has entered are
  /// removed unless the user says otherwise.
  void ForgetAnswers();
  /// Finds the values that may be slips of typing.
  void Judge();
  void ShowSummary();
  void ShowRows();
  void ScrollRows();
  void ShowNotes();
  void ShowButtons();

  /// Whether the user has to choose one of several tables for a page.
  [[nodiscard]] bool HasOpenTables() const;
  [[nodiscard]] bool RemovesMissing() const;
  [[nodiscard]] PageChoice& ShownChoice();
  [[nodiscard]] std::vector<ModelColumn> ShownColumns() const;
  /// The plan of the shown page, nullptr where it stays as it is.
  [[nodiscard]] const PagePlan* ShownPlan() const;
  /// These tables with the columns that the user chose for them, or that fit.
  [[nodiscard]] PageChoice ChoiceOf(const std::vector<std::size_t>& tables) const;

  std::unique_ptr<Ui::ImportPreview> ui_;
  const ImportTarget& target_;
  const EarlierChoice& earlier_;
  SlipLimit limit_;
  std::string bytes_;
  Certificate certificate_;
  QString fileName_;
  ReadingChoices reading_;
  ImportChoices choices_;
  std::optional<std::size_t> chosenItem_;  ///< by the user
  std::set<std::int16_t> chosenPages_;     ///< whose tables or columns the user chose
  ChosenColumns columns_;
  ImportPlan plan_;
  std::map<std::int16_t, JudgedPage> judged_;          ///< the pages that change
  std::vector<std::string> askedDoubts_;               ///< that "I have checked it" was about
  std::vector<std::vector<std::string>> askedPoints_;  ///< that are removed
  QString error_;  ///< why the chosen values cannot be taken, "" when they can
  std::int16_t page_ = 0;
  TableBox tableBox_;
  ColumnBoxes columnBoxes_;
  std::vector<int> movedTo_;  ///< where the user put the splitter
};

}  // namespace tarvell

#endif
