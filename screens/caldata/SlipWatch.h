// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_SLIPWATCH_H
#define TARVELL_SCREENS_CALDATA_SLIPWATCH_H

#include <QObject>
#include <QTabBar>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <map>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Models.h"
#include "core/caldata/Origin.h"
#include "core/curves/SlipLimits.h"
#include "core/curves/Slips.h"

namespace tarvell {

class CalGrid;
class EarlierChoice;
class NoticeLine;

/// The subject of the notice about a cell that is stored or read otherwise than it was typed.
inline constexpr const char* kCellNotice = "cell";

/// Marks the values of an editor's tables that may be slips of typing, and reports them, after each
/// change. A page that is not shown is marked at its tab. It changes no value and asks nothing.
class SlipWatch final : public QObject {
  Q_OBJECT

 public:
  struct Editor {
    CalGrid* grid;
    QTabBar* tabs;  ///< of the pages; nullptr where the data have only one
    NoticeLine* notices;
    const EarlierChoice* earlier;        ///< what the values are compared with
    std::function<std::int16_t()> page;  ///< the page that the table shows
    /// The origins of a page that is not shown.
    std::function<const CellOrigins&(std::int16_t page)> origins;
  };
  SlipWatch(const Editor& editor, QObject* parent);

  /// Begins to watch `data`, whose pages are up to date except the one that is shown.
  void Begin(const Model& model, const cifCaldata& data);
  void End();

  /// Several changes that come together are judged once.
  void LookSoon();

 private:
  /// A page, and what was found on it.
  struct JudgedPage {
    MemoryGrid grid;
    CellOrigins origins;
    Slips slips;
  };

  void Look();
  /// Judges a page unless it is still as it was judged.
  void Judge(std::int16_t page);
  void MarkTable();
  void MarkTabs();
  void Report();
  /// Reads the limits. This waits until the screen is shown.
  void Load();

  Editor editor_;
  const Model* model_ = nullptr;
  const cifCaldata* data_ = nullptr;
  bool isLoaded_ = false;
  SlipLimit limit_;
  std::map<std::int16_t, JudgedPage> pages_;
  QTimer soon_;
};

}  // namespace tarvell

#endif
