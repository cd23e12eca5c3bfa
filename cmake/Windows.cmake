# What only the build for Windows needs.
enable_language(RC)
include(cmake/WindowsPictures.cmake)

# Windows 10 and 11; texts of the system in UTF-16; no macros in the way of the standard library.
add_compile_definitions(_WIN32_WINNT=0x0A00 UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
  _POSIX_C_SOURCE=200809L)
add_link_options($<$<CONFIG:Release>:LINKER:--gc-sections,--strip-all>)

# describe_executable(TARGET NAME TEXT): icon, version and what the executable
# declares to Windows.
function(describe_executable target name text)
  set(WINDOWS_NAME ${name})
  set(WINDOWS_TEXT ${text})
  set(WINDOWS_FOLDER ${CMAKE_SOURCE_DIR}/packaging/windows)
  set(WINDOWS_ICON ${CMAKE_BINARY_DIR}/pictures/tarvell.ico)
  set(resource ${CMAKE_BINARY_DIR}/${target}.rc)
  configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/program.rc.in ${resource} @ONLY)
  set_source_files_properties(${resource} PROPERTIES
    OBJECT_DEPENDS "${WINDOWS_ICON};${WINDOWS_FOLDER}/program.manifest")
  target_sources(${target} PRIVATE ${resource})
  add_dependencies(${target} tarvell_icon)
endfunction()
