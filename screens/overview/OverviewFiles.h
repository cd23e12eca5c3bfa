// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_OVERVIEW_OVERVIEWFILES_H
#define TARVELL_SCREENS_OVERVIEW_OVERVIEWFILES_H

#include <QMenu>
#include <QObject>
#include <QWidget>

#include <functional>
#include <string>

#include "core/survey/ShownRows.h"
#include "core/survey/Unread.h"

namespace tarvell {

class NoticeLine;

/// The menu of the overview that saves its table as a file and prints it.
class OverviewFiles final : public QObject {
  Q_OBJECT

 public:
  struct Overview {
    QWidget* screen;
    QMenu* menu;
    NoticeLine* notices;
    std::function<const ShownRows&()> rows;
    /// Whether these are the rows of all files.
    std::function<bool()> isWhole;
    /// Takes out the rows of files that were deleted meanwhile; returns whether there are any.
    std::function<bool()> takeOutGoneFiles;
    std::function<FileDate()> today;
  };
  explicit OverviewFiles(Overview overview);

 private:
  struct Format {
    QString title;
    QString filter;
    QString name;  ///< that is proposed
    std::function<std::string()> bytes;
    Unread unread;  ///< what it lacks
  };
  void Add(const char* name, const QString& caption, const Format& format);
  /// Throws if rows are missing.
  void CheckIsWhole() const;
  void Save(const Format& format);
  [[nodiscard]] static QString GoneText();
  /// Says so in the remark, which what is to be done about the current row does not hide.
  void ReportSaved(const QString& file, bool isAnyGone, Unread unread) const;

  Overview overview_;
};

}  // namespace tarvell

#endif
