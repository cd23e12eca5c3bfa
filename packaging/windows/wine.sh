# SPDX-FileCopyrightText: the Tarvell authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Functions that run programs for Windows on this computer, in a Windows of their own below
# build/windows. Sourced from the project's root after scripts/setup.sh.
#
# shellcheck shell=bash

# use_windows NAME: makes an empty Windows, and starts it.
use_windows() {
  local variable home=$PWD/build/windows/$1
  stop_windows
  rm -rf "$home"
  # The folder in which Wine keeps the recycle bin.
  mkdir -p "$home/.local/share"
  # No window asks to install anything more, and nothing of the user's own home is used.
  export HOME=$home WINEPREFIX=$home/wine WINEARCH=win64 WINEDEBUG=-all LC_ALL=C.UTF-8
  export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
  unset XDG_DATA_HOME XDG_CONFIG_HOME XDG_CACHE_HOME
  wine wineboot --init >"$home/wineboot.log" 2>&1
  # The temporary folder is on the drive of the project.
  mkdir -p "$home/tmp"
  for variable in TMP TEMP; do
    wineserver --wait
    wine reg add 'HKCU\Environment' /v "$variable" /d "Z:${home//\//\\}\\tmp" /f >/dev/null 2>&1
  done
  wineserver --wait
}

# keep_windows: keeps it running between programs. Otherwise its server ends with the last program,
# and a program that is started at that moment ends with "recvmsg: Connection reset by peer": one of
# some 600 that were started one after another.
keep_windows() { wineserver --persistent; }

# Ends the Windows that is in use, if there is one.
stop_windows() {
  [ -z "${WINEPREFIX:-}" ] || wineserver --kill 2>/dev/null || true
}

# The folder that is C:\ there.
drive_c() { echo "$WINEPREFIX/drive_c"; }
