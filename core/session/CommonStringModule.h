// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SESSION_COMMONSTRINGMODULE_H
#define TARVELL_CORE_SESSION_COMMONSTRINGMODULE_H

/// The functions of the module are in the folders of their subjects: StripNull, IsValidDate and
/// DaysInMonth, WaitSeconds.
#include "core/dates/Calendar.h"
#include "core/platform/Waiting.h"
#include "core/text/Text.h"

#endif
