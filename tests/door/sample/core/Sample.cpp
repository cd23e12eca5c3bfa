// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Never built: what the check has to find, one on each line.

std::ofstream stream(path);
std::FILE* file = std::fopen(path, "w");
std::rename(from, to);
std::filesystem::copy_file(from, to);
std::filesystem::create_directories(path);
int number = openat(folder, path, O_WRONLY);
int made = ::mkdir(path, 0777);
QFile target(name);
QSaveFile safe(name);
QSettings settings;
QDir().mkpath(name);
QProcess::execute(command);
