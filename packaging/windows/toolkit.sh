# SPDX-FileCopyrightText: the Tarvell authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Functions that build, once, what the Windows program is linked with: the toolkit, the plot library,
# the XML reader and the test framework, all static and from Debian's own sources. Sourced from the
# project's root after scripts/setup.sh.
#
# shellcheck shell=bash disable=SC2034

WINDOWS_PACKAGES=(g++-mingw-w64-x86-64-posix dpkg-dev cmake ninja-build qt6-base-dev
  libqcustomplot-dev libpugixml-dev googletest libcli11-dev nlohmann-json3-dev cmark-gfm
  librsvg2-bin icoutils nsis zip)
WINDOWS_TEST_PACKAGES=(wine wine64 unzip bc fonts-dejavu-core "${TOUR_PACKAGES[@]}")

# The toolkit without what the program does not use. Nothing in its sources is changed.
QTBASE_OPTIONS=(-DBUILD_SHARED_LIBS=OFF -DFEATURE_optimize_size=ON -DQT_BUILD_EXAMPLES=OFF
  -DQT_BUILD_TESTS=OFF -DINPUT_opengl=no -DINPUT_openssl=no)
for feature in sql network dbus concurrent xml tabletevent directwrite directwrite3 zstd icu glib \
  vulkan jpeg gif sessionmanager system_zlib system_png system_freetype system_harfbuzz \
  system_pcre2 system_doubleconversion; do
  QTBASE_OPTIONS+=("-DFEATURE_$feature=OFF")
done

# A folder for this choice of versions and options, so that each is built once.
windows_toolkit_folder() {
  local key
  key=$({
    printf '%s\n' "${QTBASE_OPTIONS[@]}"
    cat packaging/windows/plot/CMakeLists.txt cmake/windows.toolchain.cmake
    dpkg-query -W -f='${Package} ${Version}\n' qt6-base-dev libqcustomplot-dev libpugixml-dev \
      googletest libcli11-dev nlohmann-json3-dev g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev
  } 2>/dev/null | sha256sum | cut -c 1-16)
  echo "${XDG_CACHE_HOME:-$HOME/.cache}/tarvell/windows/$key"
}

has_windows_toolkit() { [ -e "$(windows_toolkit_folder)/complete" ]; }

# The line for the sources of an installed package: the place that the package itself comes from.
source_line() {
  apt-cache policy "$1" | awk '
    $1 == "***" { installed = 1; next }
    installed && $2 ~ /:/ { split($3, part, "/"); print "deb-src", $2, part[1], part[2]; exit }'
}

# fetch_source PACKAGE FOLDER: unpacks Debian's source of an installed package into FOLDER, unless it
# is there. The machine's own list of package sources stays as it is.
fetch_source() {
  local source apt options
  [ -e "$2" ] && return
  source=$(dpkg-query -W -f='${source:Package}=${source:Version}' "$1")
  apt=$(mktemp -d)
  mkdir -p "$apt/lists" "$apt/work"
  source_line "$1" >"$apt/sources.list"
  options=(-o "Dir::Etc::SourceList=$apt/sources.list" -o Dir::Etc::SourceParts=/dev/null
    -o "Dir::State::Lists=$apt/lists" -o "APT::Sandbox::User=$(id -un)")
  apt-get -qq "${options[@]}" update &&
    (cd "$apt/work" && apt-get -qq "${options[@]}" source "$source") &&
    mv "$(find "$apt/work" -mindepth 1 -maxdepth 1 -type d)" "$2"
  local result=$?
  rm -rf "$apt"
  return "$result"
}

# build_for_windows SOURCE OPTIONS...: builds with CMake and installs into $toolkit.
build_for_windows() {
  local build
  build=$work/build-$(basename "$1")
  TARVELL_WINDOWS_TOOLKIT=$toolkit cmake -S "$1" -B "$build" -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/windows.toolchain.cmake" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_INSTALL_PREFIX="$toolkit" "${@:2}" &&
    cmake --build "$build" && cmake --install "$build"
}

# The libraries without the toolkit, which the core and its tests need.
build_small_libraries() {
  build_for_windows /usr/src/googletest -DBUILD_GMOCK=OFF &&
    fetch_source libpugixml-dev "$work/pugixml" &&
    build_for_windows "$work/pugixml" -DBUILD_SHARED_LIBS=OFF &&
    mkdir -p "$toolkit/include" "$toolkit/share/cmake" &&
    cp -r /usr/include/CLI /usr/include/nlohmann "$toolkit/include/" &&
    cp -r /usr/share/cmake/CLI11 /usr/share/cmake/nlohmann_json "$toolkit/share/cmake/"
}

build_toolkit() {
  fetch_source qt6-base-dev "$work/qtbase" &&
    build_for_windows "$work/qtbase" "${QTBASE_OPTIONS[@]}" &&
    fetch_source libqcustomplot-dev "$work/plot" &&
    build_for_windows packaging/windows/plot -DSOURCE="$work/plot" \
      -DCMAKE_BUILD_TYPE=MinSizeRel
}

# Builds everything that is not there yet; a build that was interrupted goes on where it stopped. The
# log is kept beside the result.
make_windows_toolkit() {
  local toolkit work
  toolkit=$(windows_toolkit_folder)
  work=$toolkit/work
  has_windows_toolkit && return
  echo "Building the libraries for Windows into $toolkit (once, some 25 minutes) ..."
  mkdir -p "$work"
  { build_small_libraries && build_toolkit; } >>"$toolkit/build.log" 2>&1 || {
    tail -n 40 "$toolkit/build.log" >&2
    return 1
  }
  rm -rf "$work"
  touch "$toolkit/complete"
}
