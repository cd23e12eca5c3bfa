// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/overview/OverviewModel.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "core/platform/ProgramPath.h"
#include "core/text/FileCharacters.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/SerialList.h"

namespace tarvell {

namespace {

SurveyColumn ColumnOf(int column) {
  return static_cast<SurveyColumn>(column);
}

/// What a tooltip shows: any markup in the text as it is, and long lines wrapped.
QString Tooltip(const SurveyRow& row) {
  const QString toDo = ToDoText(row);
  return Qt::convertFromPlainText(
      ToQt(NameText(ShownPath(row.path))) + (toDo.isEmpty() ? "" : "\n") + toDo,
      Qt::WhiteSpaceNormal);
}

}  // namespace

QString ToDoText(const SurveyRow& row) {
  QString text;
  for (const Finding& finding : row.findings) {
    const QString words = ToQt(WordsOf(finding.kind));
    text += (text.isEmpty() ? "" : "\n") + words.left(1).toUpper() + words.mid(1) + ": " +
            ToQt(finding.text);
  }
  return text;
}

OverviewModel::OverviewModel(QObject* parent) : QAbstractTableModel(parent) {}

int OverviewModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.Count());
}

int OverviewModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kOverviewColumns;
}

QVariant OverviewModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const SurveyRow& row = RowAt(index.row());
  const bool isMarked = ColumnOf(index.column()) == SurveyColumn::State && row.HasFault();
  const bool isPastDue = row.Has(FindingKind::PastDue);
  switch (role) {
    case Qt::DisplayRole:
      return ToQt(SurveyCell(row, ColumnOf(index.column())));
    case Qt::TextAlignmentRole:
      return ColumnOf(index.column()) == SurveyColumn::DaysLeft
                 ? QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter))
                 : QVariant();
    case Qt::ToolTipRole:
      return Tooltip(row);
    case Qt::AccessibleDescriptionRole:
      return ToDoText(row);
    case Qt::DecorationRole:
      return isMarked ? (isPastDue ? bad_ : doubtful_) : QVariant();
    case Qt::ForegroundRole:
      return isMarked ? (isPastDue ? badColour_ : doubtfulColour_) : QVariant();
    default:
      return {};
  }
}

QVariant OverviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= kOverviewColumns) {
    return {};
  }
  if (role == Qt::TextAlignmentRole) {
    return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
  }
  return role == Qt::DisplayRole
             ? QVariant(ToQt(kSurveyCaptions.at(static_cast<std::size_t>(section))))
             : QVariant();
}

int OverviewModel::PlaceOf(const std::string& path) const {
  for (int row = 0; row < rowCount(); ++row) {
    if (RowAt(row).path == path) {
      return row;
    }
  }
  return -1;
}

void OverviewModel::Change(const std::function<void(std::vector<SurveyRow>& rows)>& change) {
  beginResetModel();
  rows_.Change(change);
  endResetModel();
}

void OverviewModel::SetFilter(RowFilter filter) {
  beginResetModel();
  rows_.SetFilter(std::move(filter));
  endResetModel();
}

void OverviewModel::Append(std::vector<SurveyRow> rows) {
  const auto shown = std::ranges::count_if(
      rows, [this](const SurveyRow& row) { return Matches(row, rows_.Filter()); });
  if (shown == 0) {
    rows_.Append(std::move(rows));
    return;
  }
  beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(shown) - 1);
  rows_.Append(std::move(rows));
  endInsertRows();
  if (rows_.IsSorted()) {
    Rearrange([this] { rows_.Arrange(); });
  }
}

void OverviewModel::sort(int column, Qt::SortOrder order) {
  Rearrange([&] {
    rows_.Sort(
        column < 0 || column >= kOverviewColumns ? std::nullopt : std::optional(ColumnOf(column)),
        order == Qt::DescendingOrder);
  });
}

void OverviewModel::Rearrange(const std::function<void()>& change) {
  emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
  const std::vector<std::size_t> before = rows_.Numbers();
  change();
  const QModelIndexList from = persistentIndexList();
  if (!from.isEmpty()) {
    std::vector<int> placeOf(rows_.All().size(), -1);
    int place = 0;
    for (const std::size_t number : rows_.Numbers()) {
      placeOf[number] = place++;
    }
    QModelIndexList to;
    for (const QModelIndex& old : from) {
      to << index(placeOf[before[static_cast<std::size_t>(old.row())]], old.column());
    }
    changePersistentIndexList(from, to);
  }
  emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void OverviewModel::SetLook(const QPalette& palette, const QStyle& style) {
  bad_ = style.standardIcon(QStyle::SP_MessageBoxCritical);
  doubtful_ = style.standardIcon(QStyle::SP_MessageBoxWarning);
  badColour_ = DueColour(DueState::PastDue, palette);
  doubtfulColour_ = DueColour(DueState::DueSoon, palette);
  if (rowCount() > 0) {
    emit dataChanged(index(0, 0), index(rowCount() - 1, kOverviewColumns - 1));
  }
}

}  // namespace tarvell
