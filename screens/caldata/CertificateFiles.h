// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_CALDATA_CERTIFICATEFILES_H
#define TARVELL_SCREENS_CALDATA_CERTIFICATEFILES_H

#include <QDialog>
#include <QList>
#include <QMenu>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>

#include "core/caldata/EditorState.h"
#include "core/caldata/Models.h"

namespace tarvell {

class CalGrid;
class EarlierChoice;
class NoticeLine;

/// "Import..." and "Export..." of an editor, and the files that are dropped on its table. An import
/// goes into the editor and not to the disk.
class CertificateFiles final : public QObject {
  Q_OBJECT

 public:
  struct Editor {
    QDialog* screen;
    CalGrid* grid;
    QMenu* menu;
    NoticeLine* notices;
    const EarlierChoice* earlier;  ///< what the values are compared with
    std::function<const Model&()> model;
    std::function<const cifCaldata&()> data;
    std::function<EditorState()> contents;  ///< after an open edit of a cell was stored
    std::function<bool()> isSerialFixed;
    std::function<std::string()> templateSerial;  ///< that nobody has entered, "" for none
    /// Makes these the contents, in one step of the history.
    std::function<void(const QString& what, const EditorState& after)> take;
  };

  /// The screen owns the object.
  explicit CertificateFiles(Editor editor);

  /// Removes the notice about an export, which held other contents.
  void ForgetExport() const;

 signals:
  /// These were dropped on the table.
  void Dropped(const QList<QUrl>& urls);

 protected:
  /// Takes a file that is dropped on the table.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void TakeDropped(const QList<QUrl>& urls) const;
  void ChooseFile() const;
  void Import(const QString& file) const;
  void Export() const;

  Editor editor_;
};

}  // namespace tarvell

#endif
