// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/TextTable.h"
#include "core/caldata/EarlierCalibration.h"
#include "core/caldata/EditorState.h"
#include "core/caldata/Models.h"
#include "core/caldata/OpenedDataSet.h"
#include "core/curves/SlipLimits.h"
#include "core/dates/FileDate.h"
#include "core/dates/Months.h"
#include "core/files/FileIOCommonModule.h"
#include "core/files/FileNames.h"
#include "core/files/Paths.h"
#include "core/history/Replacement.h"
#include "core/platform/Error.h"
#include "core/survey/ValueCheck.h"
#include "core/text/Text.h"
#include "exchange/Export.h"
#include "exchange/HeaderPlan.h"
#include "exchange/ImportPlan.h"
#include "exchange/ModelColumns.h"
#include "exchange/ReadCertificate.h"

namespace tarvell::cli {

namespace {

void Report(Console& console, const std::string& file, const std::string& sentence) {
  console.Err("tarvell-cli: " + WithoutControls(file + ": " + sentence) + "\n");
}

void ReportEach(Console& console, const std::string& file,
                const std::vector<std::string>& sentences) {
  for (const std::string& sentence : sentences) {
    Report(console, file, sentence);
  }
}

/// The sentences that none of `reported` begins with.
std::vector<std::string> Without(const std::vector<std::string>& reported,
                                 std::vector<std::string> sentences) {
  std::erase_if(sentences, [&](const std::string& sentence) {
    return std::ranges::any_of(
        reported, [&](const std::string& other) { return other.starts_with(sentence); });
  });
  return sentences;
}

const Model& ModelToFill(const std::string& code) {
  const Model* model = FindModel(ToUpper(code));
  if (model != nullptr && model->create != nullptr) {
    return *model;
  }
  std::string known;
  for (const Model& other : kModels) {
    if (other.create != nullptr) {
      known += (known.empty() ? "" : ", ") + std::string(other.code);
    }
  }
  throw Error(ErrorKind::Type,
              "No certificate can be imported for the model " + Quoted(code) + ". Name one of " +
                  known + ".",
              "");
}

std::vector<std::string> Texts(const std::vector<ReadingQuestion>& questions) {
  std::vector<std::string> texts;
  for (const ReadingQuestion& question : questions) {
    const bool isSign = question.about == ReadingQuestion::About::DecimalSign;
    texts.push_back(Quoted(question.written) + " can be " + question.first + " or " +
                    question.second + ". Repeat the command with " +
                    (isSign ? "--decimal point or --decimal comma."
                            : "--dates day-first or --dates month-first."));
  }
  return texts;
}

/// An export may have a date that does not exist.
bool IsDay(const std::optional<FoundDate>& found) {
  return found && Exists(found->date);
}

/// Why a date has to be given with an option.
std::string NoDate(const std::string& name, const std::optional<FoundText>& unread,
                   const std::string& option) {
  return (unread ? "The " + name + " " + Quoted(unread->text) + " (" + unread->where +
                       ") cannot be read."
                 : "The certificate names no " + name + ".") +
         " Give it with " + option + ".";
}

/// What a new data set still lacks, a sentence each.
std::vector<std::string> Lacks(const ImportTarget& target, const Certificate& certificate,
                               const EditorState& after) {
  const CertificateHeader& header = certificate.header;
  std::vector<std::string> lacks;
  const std::string serials = SerialsToChooseFrom(target, certificate);
  if (!serials.empty() && target.now.header.serialNumber.empty()) {
    lacks.push_back("The certificate names several serial numbers: " + serials +
                    ". Give that of this instrument with --serial.");
  } else if (after.header.serialNumber.empty()) {
    lacks.emplace_back("The certificate names no serial number. Give it with --serial.");
  }
  if (!IsDay(header.calDate)) {
    lacks.push_back(NoDate("calibration date", header.unreadCalDate, "--calibrated"));
  }
  if (!IsDay(header.dueDate)) {
    lacks.push_back(NoDate("due date", header.unreadDueDate, "--due"));
  }
  return lacks;
}

/// The pages of a set that keep values of the template, a sentence each. In the file nobody sees
/// that these are no measured ones.
std::vector<std::string> PagesWithDefaults(const Model& model, const cifCaldata& data,
                                           const EditorState& after, const ImportPlan& plan) {
  std::vector<std::string> sentences;
  if (!HasPages(model)) {
    return sentences;
  }
  for (const std::int16_t page : ShownPages(after)) {
    const std::size_t rows = after.pages.at(static_cast<std::size_t>(page)).rows.size();
    const auto values = static_cast<std::size_t>(
        std::ranges::count_if(ModelColumns(model, data, page),
                              [](const ModelColumn& column) { return !column.IsPoint(); }));
    const std::size_t all = rows * values;
    std::size_t taken = 0;
    const auto planned = std::ranges::find(plan.pages, page, &PagePlan::page);
    if (planned != plan.pages.end()) {
      for (const PlannedRow& row : planned->rows) {
        taken += row.taken.size();
      }
    }
    if (taken < all) {
      sentences.push_back("The certificate has " + std::to_string(taken) + " of the " +
                          std::to_string(all) + " values of the page " +
                          Quoted(data.GetCalPageName(page)) +
                          ". The others are those of the template, which nobody has measured.");
    }
  }
  return sentences;
}

/// The values that the editor would mark.
std::vector<std::string> Marks(const Options& options, const Model& model, const cifCaldata& data,
                               const std::string& path) {
  FileDate date;
  std::string month;
  data.GetCalDate(date.year, month, date.day);
  date.month = MonthToNumber(month);
  const std::vector<Calibration> calibrations = CalibrationsOf(path);
  const Calibration* calibration = EarlierCalibration(calibrations, date);
  const auto earlier = calibration == nullptr ? nullptr : LoadCalibration(model, *calibration);
  SurveyRow row;
  CheckValues(model, data, earlier.get(), LoadSlipLimits(options.calibrationDir), row);
  std::vector<std::string> marks;
  for (const Finding& finding : row.findings) {
    marks.push_back(finding.text);
  }
  return marks;
}

/// More tables are only counted.
constexpr std::size_t kNamedTables = 20;

/// The numbers and titles of the tables.
std::string TablesOf(const Certificate& certificate) {
  std::string text;
  const std::size_t named = std::min(certificate.tables.size(), kNamedTables);
  for (std::size_t i = 0; i < named; ++i) {
    text += (i == 0 ? "" : ", ") + std::to_string(i + 1) + " " +
            Quoted(TitleOf(certificate.tables[i], "en")) + " (" + certificate.tables[i].where + ")";
  }
  const std::size_t more = certificate.tables.size() - named;
  return text.empty() ? "no table."
                      : text + (more > 0 ? ", and " + std::to_string(more) + " more." : ".");
}

/// The indexes of the tables that the user named: by a number, by their title, or else by a text of
/// it.
std::vector<std::size_t> TablesNamed(const std::string& name, const Certificate& certificate) {
  const bool isNumber = name.find_first_not_of("0123456789") == std::string::npos;
  std::vector<std::size_t> exact;
  std::vector<std::size_t> with;
  for (std::size_t i = 0; i < certificate.tables.size(); ++i) {
    const std::string title = TitleOf(certificate.tables[i], "en");
    if (isNumber ? name == std::to_string(i + 1) : EqualsIgnoringCase(title, name)) {
      exact.push_back(i);
    } else if (!isNumber && ContainsIgnoringCase(title, name)) {
      with.push_back(i);
    }
  }
  return exact.empty() ? with : exact;
}

/// Leaves only the tables that the user named, by their numbers or by texts of their titles.
void KeepTables(const std::vector<std::string>& wanted, Certificate& certificate) {
  std::vector<bool> isKept(certificate.tables.size(), wanted.empty());
  for (const std::string& name : wanted) {
    const std::vector<std::size_t> meant = TablesNamed(name, certificate);
    for (const std::size_t table : meant) {
      isKept[table] = true;
    }
    if (meant.empty()) {
      throw Error(ErrorKind::Type, "The certificate has no table " + Quoted(name) + ". It has " +
                                       TablesOf(certificate));
    }
  }
  std::vector<CertificateTable> kept;
  for (std::size_t i = 0; i < isKept.size(); ++i) {
    if (isKept[i]) {
      kept.push_back(std::move(certificate.tables[i]));
    }
  }
  certificate.tables = std::move(kept);
}

/// Joins the tables of a page if the user named each of them.
void JoinNamed(std::size_t named, ImportChoices& choices) {
  for (PageChoice& choice : choices.pages) {
    if (choice.canJoinAlternatives && named >= choice.alternatives.size()) {
      for (const std::vector<std::size_t>& tables : choice.alternatives) {
        choice.tables.insert(choice.tables.end(), tables.begin(), tables.end());
      }
    }
  }
}

/// What to do about questions that only a choice of the user answers.
std::string HowToChoose(const ImportChoices& choices, const Certificate& certificate) {
  return std::ranges::any_of(choices.pages, &PageChoice::IsOpen)
             ? "Nothing was saved. Repeat the command with --table and the title or the number of "
               "the table. The certificate has " +
                   TablesOf(certificate)
             : "Nothing was saved. Import the certificate in the editor, where the column can be "
               "chosen, or delete the other column.";
}

Certificate CertificateOf(const ImportOrder& order) {
  Certificate certificate =
      ReadCertificate(CertificateBytes(NativePath(order.file)), order.reading);
  KeepTables(order.tables, certificate);
  if (order.calibrated) {
    certificate.header.calDate = {*order.calibrated, "--calibrated"};
  }
  if (order.due) {
    certificate.header.dueDate = {*order.due, "--due"};
  }
  return certificate;
}

/// Saves a new data set, unless that would replace a file that may not be replaced. Makes the
/// folder of the model if the data set is its first.
bool Save(cifCaldata& data, const std::string& path, bool replaces, Console& console) {
  const bool mayReplace =
      MayReplace([&] { return data.WouldReplace(path); },
                 [&](const Replacement& replacement) {
                   if (!replaces) {
                     Report(console, PathText(NativePath(path)),
                            "This file already exists, with the serial number " +
                                Quoted(replacement.file.serialNumber) +
                                ". Nothing was saved. To replace it, repeat "
                                "the command with --replace; the history "
                                "keeps what it held.");
                   }
                   return replaces;
                 });
  if (mayReplace) {
    if (const std::string folder(FolderOf(path)); !FolderExists(folder)) {
      MakeFolder(folder);
    }
    data.SaveCalibrationDataToFile(path);
  }
  return mayReplace;
}

}  // namespace

int Import(const Options& options, const ImportOrder& order, Console& console) {
  const Model& model = ModelToFill(order.model);
  const Certificate certificate = CertificateOf(order);
  if (const std::vector<ReadingQuestion> open = OpenQuestions(certificate, order.reading);
      !open.empty()) {
    ReportEach(console, order.file, Texts(open));
    return kCouldNotLook;
  }
  const std::unique_ptr<cifCaldata> data = NewDataSet(model).data;
  EditorState now = StateOf(model, *data);
  now.header.serialNumber = order.serialNumber;
  const ImportTarget target = {
      .model = model, .data = *data, .now = now, .isSerialFixed = !order.serialNumber.empty()};
  ImportChoices choices = ProposedChoices(target, certificate);
  JoinNamed(order.tables.size(), choices);
  const ImportPlan plan = PlanImport(target, certificate, choices);
  const EditorState after = AfterImport(now, plan, true);
  if (!plan.otherModel.empty()) {
    // It is the cause of much that follows.
    Report(console, order.file, plan.otherModel);
  }
  const std::vector<std::string> lacks = Lacks(target, certificate, after);
  ReportEach(console, order.file, Without(lacks, plan.notes));
  ReportEach(console, order.file, plan.open);
  if (!plan.open.empty()) {
    ReportEach(console, order.file, Without({plan.otherModel}, plan.doubts));
    Report(console, order.file, HowToChoose(choices, certificate));
    return kCouldNotLook;
  }
  if (!plan.HasValues()) {
    ReportEach(console, order.file, Without({plan.otherModel}, plan.doubts));
    return kCouldNotLook;
  }
  if (!lacks.empty()) {
    ReportEach(console, order.file, lacks);
    return kCouldNotLook;
  }
  std::vector<std::string> doubts = plan.doubts;
  std::ranges::move(PagesWithDefaults(model, *data, after, plan), std::back_inserter(doubts));
  StoreState(after, model, *data);
  const std::string path = Joined(Joined(options.calibrationDir, std::string(model.code)),
                                  DataFileName(data->SerialNumber()));
  std::ranges::move(Marks(options, model, *data, path), std::back_inserter(doubts));
  ReportEach(console, order.file, plan.Rounded());
  ReportEach(console, order.file, Without({plan.otherModel}, doubts));
  if (!doubts.empty() && !order.isSure) {
    Report(console, order.file,
           "Nothing was saved. To save it all the same, repeat the command with --sure.");
    return kFindings;
  }
  if (!Save(*data, path, order.replaces, console)) {
    return kFindings;
  }
  console.Out("Saved " + PathText(NativePath(path)) + ".\n");
  return kClean;
}

}  // namespace tarvell::cli
