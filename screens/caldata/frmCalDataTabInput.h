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
  [[nodiscard]] QString WhyFixed() const override;

  /// Page whose tab is selected.
  [[nodiscard]] std::int16_t SelectedPage() const;
  /// Makes every tab's title fit, as far as the desktop is wide enough.
  void WidenForTabs();
  void AddTab(std::int16_t page);
  void ShowPage(std::int16_t page);
  /// Stores the table and the member serial number of the page that the grid shows.
  void StorePage();
  /// Stores the page that is shown and shows the one whose tab is selected.
  void ChangePage();
  void SwitchOption(bool on);
  /// Reports the members without a serial number, and one that will be read back differently.
  void ReportMember();
  /// What a notice about the member of a page is about.
  [[nodiscard]] QString MemberSubject(std::int16_t page) const;
  /// The units offered for a cell, none where there is no choice.

  std::unique_ptr<Ui::frmCalDataTabInput> ui_;
  std::int16_t currentPage_ = 0;  ///< the page whose table the grid shows
};

}  // namespace tarvell

#endif
