// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_SCREENSPRECOMPILED_H
#define TARVELL_TESTS_SUPPORT_SCREENSPRECOMPILED_H

// What nearly every test of the screens includes, compiled once.

#include <QTest>
#include <QtWidgets>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#endif
