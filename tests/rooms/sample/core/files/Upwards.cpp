// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <string>

#include "core/caldata/Models.h"
#include "core/files/Paths.h"
