// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_FRMCALDATATABINPUT_H
#define TARVELL_SCREENS_CALDATA_FRMCALDATATABINPUT_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "screens/caldata/CalEditor.h"

namespace tarvell {

namespace Ui {
class frmCalDataTabInput;
}

/// Edits the data of a set of standards, one tab per calibration page.
class frmCalDataTabInput final : public CalEditor {
  Q_OBJECT

 public:
  explicit frmCalDataTabInput(QWidget* parent);
  frmCalDataTabInput(const frmCalDataTabInput&) = delete;
  frmCalDataTabInput& operator=(const frmCalDataTabInput&) = delete;
  ~frmCalDataTabInput() override;

 protected:
  /// Enter in a field goes to the next one.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void tTab_Click();
  void chkCheck_Click();
  void btnOk_Click();
  void btnCancel_Click();

  [[nodiscard]] bool TakesTemplateSerial() const override { return false; }
  void ShowTables() override;
  void StoreTables() override;
  [[nodiscard]] std::int16_t ShownPage() const override { return currentPage_; }
  [[nodiscard]] QString MemberSerial() const override { return memberSerial_; }
  void ShowMemberSerial(const QString& serial) override;
  [[nodiscard]] bool HasOption() const override;
  void GoTo(std::int16_t page, bool hasOption) override;
  [[nodiscard]] QString WhyFixed() const override;

  /// The page whose tab is selected.
  [[nodiscard]] std::int16_t SelectedPage() const;
  /// Makes the screen wide enough for the titles of all tabs, if the desktop is wide enough.
  void WidenForTabs();
  void AddTab(std::int16_t page);
  void ShowPage(std::int16_t page);
  /// Stores the table and the member serial number of the page that the grid shows.
  void StorePage();
  /// Stores the shown page and shows the one whose tab is selected.
  void ChangePage();
  void SetUpKeys();
  /// Selects the page so many pages after the selected one, or before it; the first page follows
  /// the last one.
  void TurnPages(int pages);
  void SwitchOption(bool on);
  /// Adds the page of the option, or removes it.
  void ShowOption(bool on);
  void MemberSerialTyped();
  /// Reports the members without a serial number, and a serial number that will be read back
  /// differently.
  void ReportMember();
  /// The subject of notices about the member of a page.
  [[nodiscard]] QString MemberSubject(std::int16_t page) const;

  std::unique_ptr<Ui::frmCalDataTabInput> ui_;
  std::int16_t currentPage_ = 0;  ///< the page whose table the grid shows
  QString memberSerial_;          ///< of that page, as the history has it
  int serialRun_ = 0;             ///< what is typed in one visit of the box is one step
};

}  // namespace tarvell

#endif
