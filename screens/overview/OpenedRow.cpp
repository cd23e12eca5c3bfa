// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/overview/OpenedRow.h"

#include <optional>
#include <string>
#include <utility>

#include "core/caldata/Models.h"
#include "core/platform/Error.h"
#include "core/platform/ProgramPath.h"
#include "core/session/Tarvell_MainModule.h"
#include "core/text/Text.h"
#include "screens/caldata/frmCalDataInput.h"
#include "screens/caldata/frmCalDataTabInput.h"
#include "screens/station/frmStationModelList.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/Questions.h"

namespace tarvell {

namespace {

/// While it lives, a data set is in the first row of `gCalFiles`, from which the editors open it.
/// The list of the calibration data menu below needs the row that was there.
class FirstListed {
 public:
  explicit FirstListed(CalFileInfo dataSet)
      : before_(std::exchange(gCalFiles.front(), std::move(dataSet))) {}
  FirstListed(const FirstListed&) = delete;
  FirstListed& operator=(const FirstListed&) = delete;
  ~FirstListed() { gCalFiles.front() = std::move(before_); }

 private:
  CalFileInfo before_;
};

template <typename Editor>
bool Edit(QWidget* owner, const Model& model) {
  Editor editor(owner);
  editor.SetupDat(0, std::string(model.code));
  return editor.result() == QDialog::Accepted;
}

bool OpenDataSet(QWidget* owner, const SurveyRow& row) {
  const Model* model = FindModel(ToUpper(row.model));
  if (model == nullptr || model->create == nullptr) {
    Tell(owner, QObject::tr("The data of %1 cannot be edited. Use Add or Update to copy a "
                            "finished file.")
                    .arg(ToQt(row.model)));
    return false;
  }
  const std::optional<CalFileInfo> header = ReadCalFileHeader(row.path);
  if (!header) {
    throw Error(ErrorKind::NotAFile,
                "The file does not begin like a data file. Put the right file in its place, or "
                "rename it.",
                row.path);
  }
  const FirstListed listed(*header);
  return HasPages(*model) ? Edit<frmCalDataTabInput>(owner, *model)
                          : Edit<frmCalDataInput>(owner, *model);
}

bool OpenStation(QWidget* owner, const SurveyRow& row) {
  frmStationModelList instruments(owner);
  instruments.StationName = row.stations.front();
  if (row.kind == SurveyRow::Kind::Instrument) {
    instruments.InstrumentName = LastNameOf(row.path);
  }
  instruments.ShowModally();
  return true;
}

}  // namespace

bool OpenRow(QWidget* owner, const SurveyRow& row) {
  if (row.kind == SurveyRow::Kind::DataSet) {
    return OpenDataSet(owner, row);
  }
  if (!row.stations.empty()) {
    return OpenStation(owner, row);
  }
  Tell(owner, QObject::tr("There is no screen for this folder or list. The line below the table "
                          "says what to do."));
  return false;
}

}  // namespace tarvell
