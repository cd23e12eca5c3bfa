// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/ImportNotes.h"

#include <QObject>

#include "core/text/Text.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

QString Bullets(const QString& heading, const std::vector<std::string>& sentences) {
  QString text = sentences.empty() ? QString() : heading + "\n";
  for (const std::string& sentence : sentences) {
    text += "- " + ToQt(sentence) + "\n";
  }
  return text.isEmpty() ? text : text + "\n";
}

/// What the user has to choose, with both readings of what can be read in two ways.
std::vector<std::string> Choices(const NotedImport& import) {
  std::vector<std::string> choices;
  for (const ReadingQuestion& question : import.questions) {
    const bool isSign = question.about == ReadingQuestion::About::DecimalSign;
    choices.push_back(Quoted(question.written) + " can be " + question.first + " or " +
                      question.second + ". Choose it under " +
                      Quoted(isSign ? "Numbers" : "Dates") + ".");
  }
  choices.insert(choices.end(), import.plan.open.begin(), import.plan.open.end());
  return choices;
}

}  // namespace

QString ItemName(const CertificateItem& item, const std::string& language) {
  return ToQt(Trim(NameIn(item.name, language) + " " + item.model + " " + item.serialNumber));
}

QString ImportNotes(const NotedImport& import) {
  QString text = import.error.isEmpty() ? QString() : import.error + "\n\n";
  text += Bullets(QObject::tr("Please choose:"), Choices(import));
  text += Bullets(QObject::tr("Please check:"), import.plan.doubts);
  text += Bullets(QObject::tr("These values may be slips of typing:"), import.slips);
  text += Bullets(QObject::tr("The format of the table rounds:"), import.plan.Rounded());
  text += Bullets(QObject::tr("Not used:"), import.plan.notes);
  return text.trimmed();
}

}  // namespace tarvell
