// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QWidget>

#include "Models.h"
#include "core/caldata/Models.h"
#include "screens/station/frmStationMain.h"
