// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_COREPRECOMPILED_H
#define TARVELL_TESTS_SUPPORT_COREPRECOMPILED_H

// What nearly every test of the core includes, compiled once.

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#endif
