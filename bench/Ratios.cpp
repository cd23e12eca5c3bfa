// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Ratios.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <random>
#include <regex>
#include <utility>
#include <vector>

namespace tarvell::bench {

namespace {

constexpr int kGrowthRepetitions = 5;

struct Growth {
  std::string name;
  long size = 0;
  Measurement work;
};

std::vector<Row>& Rows() {
  static std::vector<Row> rows;
  return rows;
}

std::vector<Growth>& Growths() {
  static std::vector<Growth> growths;
  return growths;
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// A time with the unit that suits it, or a size in megabytes.
std::string Shown(double figure, bool isMemory = false) {
  std::array<char, 32> text{};
  if (isMemory) {
    static_cast<void>(std::snprintf(text.data(), text.size(), "%.1f MB", figure / 1024));
  } else if (figure < 0.001) {
    static_cast<void>(std::snprintf(text.data(), text.size(), "%.1f us", figure * 1e6));
  } else {
    static_cast<void>(std::snprintf(text.data(), text.size(), "%.2f ms", figure * 1e3));
  }
  return text.data();
}

void Print(const Row& row) {
  static std::mt19937 random{std::random_device{}()};
  std::vector<bool> order(static_cast<std::size_t>(2 * row.repetitions));
  std::fill_n(order.begin(), row.repetitions, true);
  std::shuffle(order.begin(), order.end(), random);
  std::array<std::vector<double>, 2> figures;
  for (const bool isProgram : order) {
    figures.at(isProgram ? 0 : 1).push_back(isProgram ? row.program() : row.limit());
  }
  const double program = Median(figures[0]);
  const double limit = Median(figures[1]);
  std::printf("%-58s%12s%12s%8.2f%8.2f\n", row.name.c_str(), Shown(program, row.isMemory).c_str(),
              Shown(limit, row.isMemory).c_str(), program / limit, row.goal);
}

void Print(const Growth& growth) {
  std::vector<double> figures(kGrowthRepetitions);
  std::generate(figures.begin(), figures.end(), growth.work);
  const double median = Median(figures);
  std::printf("%-58s%12s%14s\n", growth.name.c_str(), Shown(median).c_str(),
              Shown(median / static_cast<double>(growth.size)).c_str());
}

template <typename Line>
void PrintLines(const std::vector<Line>& lines, const std::regex& filter) {
  for (const Line& line : lines) {
    if (std::regex_search(line.name, filter)) {
      Print(line);
      static_cast<void>(std::fflush(stdout));
    }
  }
}

}  // namespace

void AddRow(Row row) {
  Rows().push_back(std::move(row));
}

void AddGrowth(const std::string& name, long size, const std::function<void()>& work) {
  Growths().push_back({name + ", " + std::to_string(size), size, Timed(work)});
}

void PrintTable(const std::string& filter) {
  const std::regex names(filter);
  std::printf("%-58s%12s%12s%8s%8s\n", "work", "program", "limit", "ratio", "goal");
  PrintLines(Rows(), names);
  std::printf("\n%-58s%12s%14s\n", "growth", "median", "for each");
  PrintLines(Growths(), names);
}

}  // namespace tarvell::bench
