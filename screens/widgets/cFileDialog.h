// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_CFILEDIALOG_H
#define TARVELL_SCREENS_WIDGETS_CFILEDIALOG_H

#include <QString>
#include <QWidget>

#include <cstdint>

#include "screens/widgets/Questions.h"

namespace tarvell {

/// A file dialog that is set up by its properties. File names and folders are native paths.
class cFileDialog {
 public:
  void SetCaption(const QString& value) { caption_ = value; }

  /// The chosen or proposed file, up to the first NUL and without the blanks around it.
  [[nodiscard]] QString FileName() const { return fileName_; }
  void SetFileName(const QString& value);

  /// Pairs of a description and a pattern. They are separated by "|" when set, and by NUL with one
  /// more NUL at the end when read.
  [[nodiscard]] QString Filter() const { return filter_; }
  void SetFilter(const QString& value);

  /// Added to a file name to save that is typed without one: "pdf"; "" for none.
  void SetDefaultSuffix(const QString& value) { suffix_ = value; }

  /// Number of the selected pair, counted from 1.
  [[nodiscard]] std::int32_t FilterIndex() const { return filterIndex_; }
  void SetFilterIndex(std::int32_t value) { filterIndex_ = value; }

  /// Option bits, which are kept but have no effect: 4 hides the read-only check box, which the
  /// dialog does not have.
  [[nodiscard]] std::int32_t Flags() const { return flags_; }
  void SetFlags(std::int32_t value) { flags_ = value; }

  /// Instance handle. It is kept but has no effect.
  [[nodiscard]] std::int32_t hInstance() const { return hInstance_; }
  void SetHInstance(std::int32_t value) { hInstance_ = value; }

  [[nodiscard]] QString InitialDir() const { return initialDir_; }
  void SetInitialDir(const QString& value) { initialDir_ = value; }

  [[nodiscard]] QWidget* OwnerWnd() const { return ownerWnd_; }
  void SetOwnerWnd(QWidget* value) { ownerWnd_ = value; }

  /// Sets the initial folder to a special folder: 0 the desktop, 5 the documents. Returns false and
  /// changes nothing for any other number, or when the system has no such folder.
  bool SetInitialDirToSpecialFolder(int folder);

  /// Runs the dialog. True when a file was chosen; FileName then returns it. False when the dialog
  /// was cancelled, or failed after an error message; FileName is then unchanged.
  bool ShowOpen();
  bool ShowSave();

 private:
  bool Show(FileRequest::Purpose purpose, const QString& functionName);
  [[nodiscard]] QStringList NameFilters() const;

  QString caption_;
  QString fileName_;
  QString filter_;
  QString suffix_;
  QString initialDir_;
  std::int32_t filterIndex_ = 1;
  std::int32_t flags_ = 0;
  std::int32_t hInstance_ = 0;
  QWidget* ownerWnd_ = nullptr;
};

}  // namespace tarvell

#endif
