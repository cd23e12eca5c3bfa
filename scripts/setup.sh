# SPDX-FileCopyrightText: the Tarvell authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Functions of ./run, ./test and the scripts; sourced from the project's root.
#
# shellcheck shell=bash disable=SC2034

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    echo "Setting up needs root: run this once as root, or install sudo." >&2
    return 1
  fi
}

# Installs the Debian packages that are missing, and remembers which are installed.
install_packages() {
  local seen=build/.packages missing=() package
  for package in "$@"; do
    if ! grep -qsxF "$package" "$seen"; then
      case $(dpkg-query -W -f='${Status}' "$package" 2>/dev/null) in
        "install ok installed") ;;
        *) missing+=("$package") ;;
      esac
    fi
  done
  if [ "${#missing[@]}" -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    as_root apt-get -qq update
    as_root env DEBIAN_FRONTEND=noninteractive \
      apt-get -qq install -y --no-install-recommends "${missing[@]}" >/dev/null
  fi
  mkdir -p build
  { cat "$seen" 2>/dev/null || true; printf '%s\n' "$@"; } | sort -u >"$seen.new"
  mv "$seen.new" "$seen"
}

# configure ARGUMENTS...: runs CMake. Where the compiler of a build folder has changed, CMake forgets
# the options of the preset, and has to run again.
configure() {
  local output
  output=$(cmake "$@" 2>&1) || {
    printf '%s\n' "$output"
    return 1
  }
  if [[ $output == *"require your cache to be deleted"* ]]; then
    cmake "$@" 2>&1
    return
  fi
  printf '%s\n' "$output"
}

# Makes the folder of the program's drives for the current user. An existing one is not changed.
make_state_folder() {
  local state=/var/lib/tarvell
  if [ ! -e "$state" ]; then
    as_root mkdir -p "$state/drives/c/windows"
    as_root chown -R "$(id -u):$(id -g)" "$state"
  elif [ ! -w "$state/drives" ]; then
    echo "Note: you may not write into $state/drives, so nothing can be saved on a drive." >&2
    echo "Ask to become a member of the group $(stat -c %G "$state/drives")." >&2
  fi
}

# Whether windows can be shown. A display that is set but does not exist does not count.
has_display() {
  local display=${DISPLAY:-} socket
  if [ -n "${WAYLAND_DISPLAY:-}" ]; then
    return 0
  fi
  if [ -z "$display" ] || [ "${display#:}" = "$display" ]; then
    [ -n "$display" ]  # on another machine, or none
    return
  fi
  display=${display#:}
  socket=/tmp/.X11-unix/X${display%%.*}
  [ -S "$socket" ] || grep -qE " @?$socket\$" /proc/net/unix
}

state_namespace() {
  if [ "$(id -u)" -eq 0 ]; then
    unshare --mount "$@"
  else
    unshare --mount --map-root-user "$@"
  fi
}

# Whether the system allows with_own_state.
has_own_state() { state_namespace true 2>/dev/null; }

# with_own_state TREE COMMAND...: empties the folder TREE and runs the command with TREE in place of
# /var/lib/tarvell.
with_own_state() {
  rm -rf "$1"
  mkdir -p "$1/drives/c/windows"
  # shellcheck disable=SC2016
  state_namespace bash -c 'mount --bind "$1" /var/lib/tarvell && exec "${@:2}"' own-state "$1" "${@:2}"
}

BUILD_PACKAGES=(g++ cmake ninja-build qt6-base-dev libqcustomplot-dev qt6-wayland libqt6svg6
  fonts-dejavu-core cmark-gfm libcli11-dev libpugixml-dev nlohmann-json3-dev)
TEST_PACKAGES=(clang libclang-rt-14-dev libgtest-dev qt6-base-private-dev clang-format appstream desktop-file-utils
  man-db python3-icalendar python3-jsonschema shellcheck xvfb)
TOUR_PACKAGES=(xvfb xauth xdotool openbox scrot)
PICTURE_PACKAGES=("${TOUR_PACKAGES[@]}" pngquant poppler-utils)
PACKAGE_PACKAGES=(dpkg-dev file)
PACKAGE_TEST_PACKAGES=(debootstrap lintian)
SHARE_PACKAGES=("${TOUR_PACKAGES[@]}" samba smbnetfs iproute2)
BENCH_PACKAGES=(libbenchmark-dev libxcb1-dev pkg-config time xvfb xauth)
FUZZ_PACKAGES=(clang libclang-rt-14-dev cmake ninja-build libpugixml-dev nlohmann-json3-dev)
TIDY_PACKAGES=(clang-tidy git)
