# SPDX-FileCopyrightText: the Tarvell authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Fails when a source below ROOT writes, makes, moves or deletes files without the platform
# interface and SaveFile. Usage: cmake -D ROOT=... -P OnlySaveFileWrites.cmake
cmake_minimum_required(VERSION 3.25)

set(OTHER_WAYS
  # the language and its library
  "fstream" "fopen" "freopen" "fdopen" "tmpfile" "std::remove *\\(\"" "std::rename"
  "filesystem::(copy|rename|remove|resize_file|create_[a-z_]+|permissions)"
  # the system
  "O_(CREAT|WRONLY|RDWR|TRUNC|APPEND|TMPFILE)" "::(open|openat|creat|write|rename|link|symlink)\\("
  "::(unlink|mkdir|rmdir|truncate|ftruncate|mkos?temps?|chmod|chown)\\(" "mkos?temps?\\("
  "(popen|system|execl[pe]?|execv[pe]*) *\\("
  "::(Create|Write|Move|Copy|Delete|Replace)(File|Directory)" "::RemoveDirectory"
  # the toolkit
  "QFile( +[a-z]|[({]|::(copy|rename|remove|link|setPermissions))" "QSaveFile" "QTemporary" "QSettings" "QTextStream" "QDataStream" "QLockFile"
  "QProcess" "(mkpath|mkdir|rmdir|rmpath|removeRecursively|moveToTrash) *\\(")

# The six sources that may use some of them.
set(ALLOWED_core/platform/LinuxPlatform.cpp ".*")
set(ALLOWED_core/platform/WindowsFile.cpp ".*")
set(ALLOWED_core/platform/WindowsPlatform.cpp ".*")
set(ALLOWED_core/platform/WindowsRecycleBin.cpp "::DeleteFile|::RemoveDirectory")
# Only for the desktop's trash: deleted files move into it.
set(ALLOWED_screens/widgets/DesktopPlatform.cpp
  "moveToTrash *\\(|mkpath *\\(|(filesystem)?::(copy|remove)\\(?")
# What the program remembers for the user is not data: a loss does no harm.
set(ALLOWED_screens/widgets/UserSettings.cpp "QSettings")

set(found 0)
set(sources 0)
foreach(folder app cli core exchange screens)
  file(GLOB_RECURSE files RELATIVE ${ROOT} ${ROOT}/${folder}/*.cpp ${ROOT}/${folder}/*.h)
  foreach(source IN LISTS files)
    math(EXPR sources "${sources} + 1")
    file(READ ${ROOT}/${source} text)
    foreach(way IN LISTS OTHER_WAYS)
      string(REGEX MATCHALL "${way}" uses "${text}")
      foreach(use IN LISTS uses)
        if(NOT DEFINED ALLOWED_${source} OR NOT use MATCHES "^(${ALLOWED_${source}})$")
          math(EXPR found "${found} + 1")
          message("${source}: \"${use}\" does not write through SaveFile")
        endif()
      endforeach()
    endforeach()
  endforeach()
endforeach()

if(sources EQUAL 0)
  message(FATAL_ERROR "there are no sources below ${ROOT}")
endif()
if(found GREATER 0)
  message(FATAL_ERROR "${found} other ways to write in ${sources} sources")
endif()
message("${sources} sources write through SaveFile only")
