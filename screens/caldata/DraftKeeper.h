// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_DRAFTKEEPER_H
#define TARVELL_SCREENS_CALDATA_DRAFTKEEPER_H

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>
#include <string>

#include "core/caldata/DataSetDrafts.h"

namespace tarvell {

class DraftStrip;
class NoticeLine;

/// Keeps a draft of what is typed into an editor, at most one second after each change, and offers
/// the drafts that earlier editors have left.
class DraftKeeper final : public QObject {
  Q_OBJECT

 public:
  /// The editor that the drafts are of.
  struct Editor {
    QWidget* screen;
    DraftStrip* strip;
    NoticeLine* notices;
    std::function<EditorState()> state;
    /// Shows a draft. Undo and Redo of that call `shown` with false and true.
    std::function<void(const EditorState& state, const std::function<void(bool)>& shown)> show;
    std::function<bool()> canRedo;
    /// How many columns of a table name its points.
    std::function<std::size_t()> pointColumns;
  };
  explicit DraftKeeper(Editor editor);

  /// The editor shows this data set as it was opened; `file` is "" for new data.
  void Start(const std::string& model, const std::string& file, DraftKind kind);
  /// Something in the editor may have changed.
  void Changed();
  /// Writes what is not saved. If that fails, returns false and sets `reason`.
  [[nodiscard]] bool Keep(QString& reason);
  /// The editor has saved what it shows.
  void Saved();
  /// The editor is closed. Writes what is not saved.
  void End();

 private:
  void Write();
  void WriteAndReport();
  void ReportOthers(DraftKind kind);
  void OfferNext();
  void Restore();
  /// Undo has taken back that a draft was restored, or Redo has made it again. `number` is that of
  /// DataSetDrafts::TakenCount.
  void TakeBack(std::size_t number, bool isShown);
  /// Throws an error if there are points without room.
  static void RequireRoom(std::size_t withoutRoom);
  void ReportNewer(std::size_t kept);
  void Discard();

  Editor editor_;
  QTimer timer_;
  QTimer retry_;
  QElapsedTimer sinceWrite_;  ///< invalid before the first one
  std::optional<DataSetDrafts> drafts_;
  EditorState opened_;
  EditorState written_;  ///< what the own draft holds, or what was opened when there is none
};

}  // namespace tarvell

#endif
