// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_BENCH_SLIPS_TYPINGSLIPS_H
#define TARVELL_BENCH_SLIPS_TYPINGSLIPS_H

#include <array>
#include <string>
#include <string_view>

#include "bench/slips/Chance.h"

namespace tarvell::bench {

enum class SlipKind { Exchanged, NeighbouringKey, DigitCount, Point, RowLeftOut };

struct NamedSlip {
  SlipKind kind;
  std::string_view name;
};
inline constexpr std::array<NamedSlip, 5> kSlips = {{
    {SlipKind::Exchanged, "two digits exchanged"},
    {SlipKind::NeighbouringKey, "a neighbouring key"},
    {SlipKind::DigitCount, "a digit left out or doubled"},
    {SlipKind::Point, "the decimal point left out or moved"},
    {SlipKind::RowLeftOut, "a row left out"},
}};

/// A number with a slip of this kind, which is not RowLeftOut. It may be the number itself where
/// the slip cannot be made in it.
[[nodiscard]] std::string WithSlip(std::string number, SlipKind kind, Chance& chance);

}  // namespace tarvell::bench

#endif
