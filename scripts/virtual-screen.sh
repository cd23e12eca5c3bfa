# SPDX-FileCopyrightText: the Tarvell authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Uses a program on its own virtual screen by real key presses, and takes pictures; sourced from the
# project's root. `pictures` is the folder for the pictures, `screen` the size of the screen,
# WIDTHxHEIGHT.
#
# shellcheck shell=bash disable=SC2154
work=$(mktemp -d)
pids=()

cleanup() {
  kill "${pids[@]}" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

fail() {
  echo "${0##*/} stopped: $*" >&2
  scrot -o "$pictures/failed.png" 2>/dev/null && echo "Picture: $pictures/failed.png" >&2
  cat "$work/program.log" >&2 2>/dev/null || true
  exit 1
}

# visible NAME: whether a window whose title matches is on the screen.
visible() { xdotool search --onlyvisible --name "$1" >/dev/null 2>&1; }

# await NAME...: waits until one of the windows has the focus; sets $title to its title.
await() {
  local tries name
  for ((tries = 0; tries < 300; tries++)); do
    title=$(xdotool getactivewindow getwindowname 2>/dev/null || true)
    for name in "$@"; do
      [[ $title =~ $name ]] && sleep 0.3 && return
    done
    sleep 0.1
  done
  fail "no window like ${*} appeared"
}

press() { local key; for key in "$@"; do xdotool key --clearmodifiers "$key"; sleep 0.1; done; }
type_text() { xdotool type --delay 30 -- "$1"; sleep 0.1; }
# picture NAME: takes a picture of the whole screen.
picture() { sleep 0.2; scrot -o "$pictures/$1.png"; taken+=("$pictures/$1.png"); }
taken=()

mkdir -p "$pictures"

# open_screen: starts a screen and sets DISPLAY.
open_screen() {
  local number display=$work/display${DISPLAY:-}
  mkfifo "$display"
  Xvfb -displayfd 3 -screen 0 "${screen:-1000x780}x24" -nolisten tcp 3>"$display" 2>>"$work/xvfb.log" &
  pids+=($!)
  read -r number <"$display"
  export DISPLAY=:$number XDG_RUNTIME_DIR=$work
  openbox >/dev/null 2>&1 &
  pids+=($!)
  for ((i = 0; i < 100; i++)); do
    xdotool get_num_desktops >/dev/null 2>&1 && break
    sleep 0.1
  done
}
open_screen

# start PROGRAM COMMAND...: starts the program, runs the command while the splash screen is shown, and
# waits for the main menu.
start() {
  "$1" >>"$work/program.log" 2>&1 &
  program_pid=$!
  pids+=("$program_pid")
  for ((i = 0; i < 100; i++)); do
    visible '^Morrand Tarvell - A\.' && break
    sleep 0.05
  done
  "${@:2}"
  sleep 1.5
  await '^Morrand Tarvell - A\.'
}

# leave: ends the program from its main menu.
leave() {
  await '^Morrand Tarvell - A\.'
  press ctrl+q
  wait "$program_pid" || fail "the program ended with an error"
}
