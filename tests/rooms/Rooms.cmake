# SPDX-FileCopyrightText: the Tarvell authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Fails when a source below ROOT includes a room that its own room may not use.
# Usage: cmake -D ROOT=... -P Rooms.cmake
cmake_minimum_required(VERSION 3.25)

# Each room, and the rooms that its sources may include besides its own.
set(core/platform "")
set(core/text core/platform)
set(core/numbers core/platform core/text)
set(core/dates core/numbers core/platform core/text)
set(core/files core/dates core/numbers core/platform core/text)
set(core/history core/dates core/files core/numbers core/platform core/text)
set(core/caldata core/dates core/files core/history core/numbers core/platform core/text)
set(core/station core/dates core/files core/history core/numbers core/platform core/text)
set(core/session core/caldata core/dates core/files core/numbers core/platform core/text)
set(core/curves core/caldata core/files core/numbers core/platform core/text)
set(core/survey core/caldata core/curves core/dates core/files core/history core/numbers
  core/platform core/station core/text)
set(core/paper core/caldata core/curves core/dates core/files core/history core/numbers
  core/platform core/session core/survey core/text)
set(EVERY_CORE_ROOM core/caldata core/curves core/dates core/files core/history core/numbers
  core/paper core/platform core/session core/station core/survey core/text)
set(exchange core/caldata core/dates core/files core/numbers core/platform core/text)
set(screens/curve "")
set(screens/paper "")
set(screens/widgets ${EVERY_CORE_ROOM} screens/paper)
set(screens/caldata ${EVERY_CORE_ROOM} exchange screens/curve screens/widgets)
set(screens/station ${EVERY_CORE_ROOM} screens/caldata screens/widgets)
set(screens/overview ${EVERY_CORE_ROOM} screens/caldata screens/station screens/widgets)
set(screens/main ${EVERY_CORE_ROOM} screens/caldata screens/overview screens/station
  screens/widgets)
set(cli ${EVERY_CORE_ROOM} exchange)

file(GLOB_RECURSE sources RELATIVE ${ROOT} ${ROOT}/cli/*.cpp ${ROOT}/cli/*.h
  ${ROOT}/core/*.cpp ${ROOT}/core/*.h ${ROOT}/exchange/*.cpp ${ROOT}/exchange/*.h
  ${ROOT}/screens/*.cpp ${ROOT}/screens/*.h)
set(wrong 0)
foreach(source IN LISTS sources)
  cmake_path(GET source PARENT_PATH room)
  if(NOT DEFINED ${room})
    message("${source}: ${room} is not a room")
    math(EXPR wrong "${wrong} + 1")
    continue()
  endif()
  file(STRINGS ${ROOT}/${source} includes REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"]")
  foreach(include IN LISTS includes)
    if(include MATCHES "\"((core|screens)/[^\"]+|cli|exchange)/[^/\"]+\"")
      set(included ${CMAKE_MATCH_1})
      if(included STREQUAL room OR included IN_LIST ${room})
        continue()
      endif()
    elseif(include MATCHES "\"ui_[A-Za-z0-9]+\\.h\"" AND room MATCHES "^screens/")
      continue()
    elseif(include MATCHES "<" AND NOT (room MATCHES "^(core/|cli$|exchange$)" AND include MATCHES "<Q"))
      continue()
    endif()
    message("${source}: ${include}")
    math(EXPR wrong "${wrong} + 1")
  endforeach()
endforeach()

list(LENGTH sources count)
if(count EQUAL 0)
  message(FATAL_ERROR "no sources below ${ROOT}")
endif()
if(wrong GREATER 0)
  message(FATAL_ERROR "${wrong} wrong includes in ${count} sources")
endif()
message("the includes of ${count} sources are right")
