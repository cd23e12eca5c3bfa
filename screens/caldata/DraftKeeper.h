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

#include "core/caldata/DraftFolder.h"

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
    std::function<void(const EditorState& state)> show;
  };
  explicit DraftKeeper(Editor editor);

  /// The editor shows this data set as it was opened; `file` is "" for new data.
  void Begin(const std::string& model, const std::string& file);
  /// Something in the editor may have changed.
  void Changed();
  /// The editor has saved what it shows.
  void Saved();
  /// The editor is closed. Writes what is not saved.
  void End();

 private:
  void Write();
  void WriteGuarded();
  void OfferNext();
  void Restore();
  void Discard();

  Editor editor_;
  QTimer timer_;
  QElapsedTimer sinceWrite_;  ///< invalid before the first one
  std::optional<DraftFolder> drafts_;
  EditorState opened_;
  EditorState written_;  ///< what the own draft holds, or `opened_` when there is none
};

}  // namespace tarvell

#endif
