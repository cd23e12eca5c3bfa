// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/dates/FileDate.h"

#include "core/numbers/Numbers.h"
#include "core/text/Text.h"

namespace tarvell {

FileDate FileDate::From(std::string_view text) {
  return {NumericInt16(FirstCharacters(text, 4)),
          NumericInt16(FirstCharacters(WithoutFirst(text, 4), 2)),
          NumericInt16(LastCharacters(text, 2))};
}

}  // namespace tarvell
