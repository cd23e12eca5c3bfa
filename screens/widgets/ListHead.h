// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_LISTHEAD_H
#define TARVELL_SCREENS_WIDGETS_LISTHEAD_H

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <string>

#include "screens/widgets/NameList.h"

namespace tarvell {

/// The filter and the order of a list of names, in a line above the list. The order is remembered
/// for each list of each screen.
///
/// While the user types into the filter, the list shows the entries whose names hold its text.
/// Escape clears it; Enter, Down and Tab go to the list, and Ctrl+F in the list comes back. Tab
/// passes over the line.
class ListHead final : public QWidget {
  Q_OBJECT

 public:
  enum class Orders { ByName, ByNameOrDueDate };

  /// The letters of the Alt keys.
  struct Keys {
    Qt::Key sort;
    Qt::Key filter;
  };

  /// Puts the line above a list that is in a layout.
  ListHead(QListWidget* list, Keys keys, Orders orders = Orders::ByName);

  /// When the filter changes, `read` reads the list again, instead of entries being hidden.
  void ReadByFilter(std::function<void()> read);

  /// The text of the filter, without blanks around it.
  [[nodiscard]] std::string Filter() const;
  /// Filters by `text`. A list that is read by the filter must be read again afterwards.
  void SetFilter(const std::string& text);
  /// Shows all entries again. A list that is read by the filter must be read again afterwards.
  void ClearFilter();

  /// Sorts and filters the list. Call it after entries were added. Entries that it hides are not
  /// selected any more.
  void Apply();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void SetFilterHelp(const QString& help);
  void AddOrder(const QString& caption, ListOrder order);
  void ChooseOrder(ListOrder order);
  void ApplyFilter();
  void GoToList();
  [[nodiscard]] QString Key() const;

  QListWidget* list_;
  QLineEdit* filter_;
  QPushButton* sort_;
  QMenu* orders_;
  ListOrder order_ = ListOrder::Folder;
  QTimer filterIsDue_;
  std::function<void()> readAgain_;
};

}  // namespace tarvell

#endif
