// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/UserSettings.h"

#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

namespace tarvell {

namespace {

QString& SettingsFile() {
  static QString file;
  return file;
}

/// Everything is kept as text; a damaged file may hold anything else.
QString Kept(const QString& key) {
  if (SettingsFile().isEmpty()) {
    return {};
  }
  const QSettings settings(SettingsFile(), QSettings::IniFormat);
  const QVariant value = settings.value(key);
  return settings.status() == QSettings::NoError && value.typeId() == QMetaType::QString
             ? value.toString()
             : QString();
}

}  // namespace

void KeepUserSettingsIn(const QString& file) {
  SettingsFile() = file;
}

QString UsualUserSettings() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         "/tarvell/settings.ini";
}

QString RememberedText(const QString& key) {
  return Kept(key);
}

QByteArray RememberedBytes(const QString& key) {
  const auto bytes =
      QByteArray::fromBase64Encoding(Kept(key).toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
  return bytes ? *bytes : QByteArray();
}

std::vector<int> RememberedNumbers(const QString& key) {
  std::vector<int> numbers;
  const QString text = Kept(key);
  for (const QString& part : text.split(' ', Qt::SkipEmptyParts)) {
    bool isNumber = false;
    numbers.push_back(part.toInt(&isNumber));
    if (!isNumber) {
      return {};
    }
  }
  return numbers;
}

void Remember(const QString& key, const QString& text) {
  if (SettingsFile().isEmpty()) {
    return;
  }
  QSettings settings(SettingsFile(), QSettings::IniFormat);
  settings.sync();
  if (settings.status() == QSettings::FormatError) {
    // What is left of a damaged file is not worth keeping.
    settings.clear();
  }
  settings.setValue(key, text);
}

void Remember(const QString& key, const QByteArray& bytes) {
  Remember(key, QString::fromLatin1(bytes.toBase64()));
}

void Remember(const QString& key, const std::vector<int>& numbers) {
  QStringList parts;
  for (const int number : numbers) {
    parts << QString::number(number);
  }
  Remember(key, parts.join(' '));
}

}  // namespace tarvell
