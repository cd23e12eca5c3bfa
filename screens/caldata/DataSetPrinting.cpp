// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/DataSetPrinting.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <variant>

#include "core/curves/SlipLimits.h"
#include "core/dates/DueDate.h"
#include "core/history/History.h"
#include "core/paper/DataSetPaper.h"
#include "core/platform/Error.h"
#include "core/session/Tarvell_MainModule.h"
#include "exchange/Export.h"
#include "screens/caldata/CalHeaderBlock.h"
#include "screens/caldata/CurveDrawing.h"
#include "screens/caldata/CurveLibrary.h"
#include "screens/caldata/EarlierChoice.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

/// Of a picture, in points. A sheet shows it as large as there is room for.
constexpr QSize kPicture(510, 200);

/// Puts a text in the place of each picture.
void ReplacePictures(PaperDocument& document, const QString& text) {
  for (PaperPart& part : document.parts) {
    if (std::holds_alternative<PaperPicture>(part)) {
      part = PaperParagraph{FromQt(text)};
    }
  }
}

PaperWork WorkOf(DataSetPaper paper, const QString& name) {
  PaperWork work = {.document = std::move(paper.document), .fileName = name + ".pdf"};
  for (const CurvesOnPaper& curves : paper.pictures) {
    QWidget owner;
    const LoadedPlot loaded = LoadPlot(&owner);
    if (loaded.plot == nullptr) {
      ReplacePictures(work.document, loaded.message);
      break;
    }
    const ShownCurves shown = {
        .curves = curves.now, .earlier = curves.earlier, .earlierName = ToQt(curves.earlierName)};
    work.pictures << loaded.plot->OnPaper(DrawingOf(shown), kPicture);
  }
  return work;
}

QString DocumentName(std::string_view model, const std::string& serial) {
  return (ToQt(model) + ' ' + ToQt(serial)).trimmed();
}

PaperWork WorkOfEditor(const PrintedEditor& editor) {
  const EditorState contents = editor.contents();
  const BusyPointer busy;
  const Model& model = editor.model();
  const EarlierChoice& earlier = *editor.earlier;
  return WorkOf(
      PaperOf({.model = model,
               .data = editor.data(),
               .state = contents,
               .isCalDateDefault = editor.header->IsCalDateDefault(),
               .isDueDateDefault = editor.header->IsDueDateDefault(),
               .earlierName = FromQt(earlier.Name()),
               .fillEarlier = [&earlier](std::int16_t page,
                                         MemoryGrid& grid) { return earlier.Fill(page, grid); },
               .limit = LoadSlipLimits(gCalibrationDir).Of(model),
               .file = EditedFileOnPaper(editor.path(), editor.bytesToSave)}),
      DocumentName(model.code, contents.header.serialNumber));
}

/// The calibration that a version is compared with.
std::optional<Calibration> ComparedWith(const std::vector<Calibration>& versions,
                                        const std::vector<int>& selected) {
  if (selected.size() == 2) {
    return versions.at(static_cast<std::size_t>(selected[1]));
  }
  std::vector<Calibration> older(versions.begin() + selected[0] + 1, versions.end());
  std::erase_if(older, [](const Calibration& each) { return !each.hasHeader; });
  const FileDate date = versions.at(static_cast<std::size_t>(selected[0])).Calibrated();
  const Calibration* found = EarlierCalibration(older, date);
  return found == nullptr ? std::nullopt : std::optional(*found);
}

}  // namespace

void OfferPrinting(const PrintedEditor& editor) {
  AddPaperEntries(editor.menu, editor.screen, [editor] { return WorkOfEditor(editor); });
}

PaperWork WorkOfVersion(const Model* model, const std::string& path,
                        const std::vector<Calibration>& versions,
                        const std::vector<int>& selected) {
  if (selected.empty() || selected.size() > 2) {
    throw Error(ErrorKind::Index,
                "Nothing was printed. Select one version, or two to compare them.");
  }
  const BusyPointer busy;
  const Calibration& version = versions.at(static_cast<std::size_t>(selected.front()));
  FileOnPaper file = VersionOnPaper(path, version);
  const std::string code = HistoryPlaceOf(path).folder;
  const QString name = DocumentName(code, version.header.SerialNumber);
  const std::unique_ptr<cifCaldata> data =
      model == nullptr || model->create == nullptr ? nullptr : LoadCalibration(*model, version);
  if (data == nullptr) {
    return WorkOf({PaperOfText(code, version, Readable(model, version), file), {}}, name);
  }
  for (const std::string& notice : data->LoadNotices()) {
    file.fields.push_back({"Doubtful", notice});
  }
  const std::optional<Calibration> earlier = ComparedWith(versions, selected);
  const std::unique_ptr<cifCaldata> before = earlier ? LoadCalibration(*model, *earlier) : nullptr;
  const auto fill = [&before](std::int16_t page, MemoryGrid& grid) {
    if (page >= before->GetCalPageCount()) {
      return false;
    }
    before->GetCalData(page, grid);
    return true;
  };
  const EditorState state = StateOf(*model, *data);
  return WorkOf(PaperOf({.model = *model,
                         .data = *data,
                         .state = state,
                         .earlierName = before == nullptr ? "" : DateText(earlier->Calibrated()),
                         .fillEarlier = fill,
                         .limit = LoadSlipLimits(gCalibrationDir).Of(*model),
                         .file = file}),
                name);
}

}  // namespace tarvell
