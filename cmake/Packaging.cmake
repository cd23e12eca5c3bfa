# The files that an installed program needs on a desktop, and the Debian package:
# `cmake --build --preset release --target package`.

# The version is the same in all texts.
foreach(name changelog tarvell-cli.1 tarvell.1 tarvell.metainfo.xml)
  file(READ packaging/${name} text)
  if(NOT text MATCHES "[ (\"]${PROJECT_VERSION}[)\"]")
    message(FATAL_ERROR "packaging/${name} does not name version ${PROJECT_VERSION}")
  endif()
endforeach()

install(FILES packaging/tarvell.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/tarvell.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES images/tarvell.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES images/tarvell-16.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/16x16/apps
  RENAME tarvell.svg)
install(FILES packaging/copyright docs/data-set.schema.json DESTINATION ${CMAKE_INSTALL_DOCDIR})
# An example does nothing until the administrator copies it.
install(FILES packaging/examples/tarvell-due.service packaging/examples/tarvell-due.timer
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
install(FILES packaging/completion/tarvell-cli.bash
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME tarvell-cli)
install(FILES packaging/completion/_tarvell-cli
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES packaging/completion/tarvell-cli.fish
  DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
install(FILES packaging/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
  RENAME tarvell)

# The manual page and the changelog are compressed, without a time stamp.
find_program(GZIP gzip REQUIRED)
function(install_compressed source name destination)
  set(compressed ${CMAKE_BINARY_DIR}/packaging/${name}.gz)
  add_custom_command(OUTPUT ${compressed} DEPENDS ${source}
    COMMAND ${CMAKE_COMMAND} -E copy ${CMAKE_SOURCE_DIR}/${source}
      ${CMAKE_BINARY_DIR}/packaging/${name}
    COMMAND ${GZIP} -9nf ${CMAKE_BINARY_DIR}/packaging/${name} VERBATIM)
  add_custom_target(compressed_${name} ALL DEPENDS ${compressed})
  install(FILES ${compressed} DESTINATION ${destination})
endfunction()
install_compressed(packaging/tarvell.1 tarvell.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_compressed(packaging/tarvell-cli.1 tarvell-cli.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_compressed(packaging/changelog changelog ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "the Tarvell authors")
set(CPACK_PACKAGE_CONTACT "the Tarvell authors <tarvell@tarvell.invalid>")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The first line of the description is the project's.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Operators of a calibration laboratory type in the values of a standard's
certificate (power sensors, step attenuators, capacitor and resistor sets),
import finished test kit files, and maintain each test station's list of
instruments with their due dates. The test stations read the saved plain text
files.")
# The libraries are found from the executable; the picture's plug-in and the tool that makes the
# group are not.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, adduser")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
  ${CMAKE_SOURCE_DIR}/packaging/postinst ${CMAKE_SOURCE_DIR}/packaging/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
