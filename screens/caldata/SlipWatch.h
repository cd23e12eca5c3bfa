// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_SLIPWATCH_H
#define TARVELL_SCREENS_CALDATA_SLIPWATCH_H

#include <QObject>
#include <QTimer>

#include <cstdint>
#include <functional>

#include "core/caldata/Models.h"
#include "core/curves/SlipLimits.h"
#include "core/curves/Slips.h"

namespace tarvell {

class CalGrid;
class EarlierChoice;
class NoticeLine;

/// Marks the values of an editor's table that may be slips of typing, and reports them, after each
/// change. It changes no value and asks nothing.
class SlipWatch final : public QObject {
  Q_OBJECT

 public:
  struct Editor {
    CalGrid* grid;
    NoticeLine* notices;
    const EarlierChoice* earlier;        ///< what the values are compared with
    std::function<std::int16_t()> page;  ///< the page that the table shows
  };
  SlipWatch(const Editor& editor, QObject* parent);

  /// Begins to watch the data of this model.
  void Begin(const Model& model);
  void End();

 private:
  /// Several changes that come together are judged once.
  void LookSoon();
  void Look();
  void Report();
  /// Reads the limits. This waits until the screen is shown.
  void Load();
  [[nodiscard]] PageTable ShownTable() const;

  Editor editor_;
  const Model* model_ = nullptr;
  bool isLoaded_ = false;
  SlipLimit limit_;
  Slips slips_;
  QTimer soon_;
};

}  // namespace tarvell

#endif
