// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_SLIPWATCH_H
#define TARVELL_SCREENS_CALDATA_SLIPWATCH_H

#include <QObject>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Models.h"
#include "core/curves/SlipLimits.h"
#include "core/curves/Slips.h"
#include "core/dates/FileDate.h"

namespace tarvell {

class CalGrid;
class NoticeLine;

/// Marks the values of an editor's table that may be slips of typing, and reports them, after each
/// change. It changes no value and asks nothing.
class SlipWatch final : public QObject {
  Q_OBJECT

 public:
  struct Editor {
    CalGrid* grid;
    NoticeLine* notices;
    std::function<std::int16_t()> page;  ///< the page that the table shows
  };
  SlipWatch(const Editor& editor, QObject* parent);

  /// Begins to watch a data set. `path` is its file, whose earlier calibration the values are
  /// compared with; "" for new data.
  void Begin(const cifCaldata& data, const Model& model, const std::string& path);
  void End();

 private:
  /// Several changes that come together are judged once.
  void LookSoon();
  void Look();
  void Report();
  /// Reads the limits and the earlier calibration. This waits until the screen is shown.
  void Load();
  [[nodiscard]] PageTable ShownTable() const;

  Editor editor_;
  const Model* model_ = nullptr;
  std::string path_;
  FileDate date_;
  bool isLoaded_ = false;
  bool isMarking_ = false;
  SlipLimit limit_;
  std::unique_ptr<cifCaldata> earlier_;
  Slips slips_;
  QTimer soon_;
};

}  // namespace tarvell

#endif
