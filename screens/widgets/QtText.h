// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_QTTEXT_H
#define TARVELL_SCREENS_WIDGETS_QTTEXT_H

#include <QString>

#include <string>
#include <string_view>

/// Text of the core (UTF-8) and text of the toolkit.
namespace tarvell {

[[nodiscard]] inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline std::string FromQt(const QString& text) {
  return text.toStdString();
}

}  // namespace tarvell

#endif
