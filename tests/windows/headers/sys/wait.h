// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Everything else is in Posix.h.
#define SIGPIPE 13
