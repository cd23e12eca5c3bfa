# The screens: Qt Widgets over the core.
find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets)

add_library(tarvell_screens STATIC
  app/AskReplacement.cpp
  app/DateBoxes.cpp
  app/SerialList.cpp
  app/frmMain.cpp app/frmMain.h app/frmMain.ui
  app/frmSplash.cpp app/frmSplash.h app/frmSplash.ui
  calscreens/CalEditor.cpp calscreens/CalEditor.h
  calscreens/CalGrid.cpp calscreens/CalGrid.h
  calscreens/CalHeaderBlock.cpp calscreens/CalHeaderBlock.h calscreens/CalHeaderBlock.ui
  calscreens/CellEditor.cpp calscreens/CellEditor.h
  calscreens/GridClipboard.cpp
  calscreens/GridModel.cpp calscreens/GridModel.h
  calscreens/frmCalDataInput.cpp calscreens/frmCalDataInput.h calscreens/frmCalDataInput.ui
  calscreens/frmCalDataTabInput.cpp calscreens/frmCalDataTabInput.h
  calscreens/frmCalDataTabInput.ui
  calscreens/frmCalibrationMain.cpp calscreens/frmCalibrationMain.h
  calscreens/frmCalibrationMain.ui
  calscreens/frmInputPX60H.cpp calscreens/frmInputPX60H.h calscreens/frmInputPX60H.ui
  common/DeliberateChoice.cpp
  common/DesktopPlatform.cpp
  common/EnterKey.cpp
  common/FileTextValidator.cpp common/FileTextValidator.h
  common/FolderPicker.cpp
  common/Guard.cpp
  common/NameList.cpp
  common/NoticeLine.cpp common/NoticeLine.h
  common/OneLineValidator.cpp common/OneLineValidator.h
  common/PaleSelection.cpp common/PaleSelection.h
  common/Questions.cpp
  common/ScreenSize.cpp
  common/UpDown.cpp common/UpDown.h
  common/cFileDialog.cpp
  common/frmInput.cpp common/frmInput.h common/frmInput.ui
  station/frmStationGetInstr.cpp station/frmStationGetInstr.h station/frmStationGetInstr.ui
  station/frmStationMain.cpp station/frmStationMain.h station/frmStationMain.ui
  station/frmStationModelList.cpp station/frmStationModelList.h station/frmStationModelList.ui)
set_target_properties(tarvell_screens PROPERTIES AUTOMOC ON AUTOUIC ON)
qt_add_resources(tarvell_screens images PREFIX / FILES images/tarvell.svg)
target_link_libraries(tarvell_screens PUBLIC tarvell_core Qt6::Widgets PRIVATE tarvell_warnings)
target_precompile_headers(tarvell_screens PRIVATE <QtWidgets> <array> <functional> <memory> <string>
  <string_view> <vector>)

add_executable(tarvell app/main.cpp)
target_link_libraries(tarvell PRIVATE tarvell_screens tarvell_warnings)

# The templates lie beside the executable, after the build as after installing.
file(GLOB TARVELL_TEMPLATES CONFIGURE_DEPENDS templates/Temp*)
foreach(template IN LISTS TARVELL_TEMPLATES)
  cmake_path(GET template FILENAME name)
  set(copy ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name})
  add_custom_command(OUTPUT ${copy} DEPENDS ${template}
    COMMAND ${CMAKE_COMMAND} -E copy ${template} ${copy} VERBATIM)
  list(APPEND TARVELL_TEMPLATE_COPIES ${copy})
endforeach()
add_custom_target(templates ALL DEPENDS ${TARVELL_TEMPLATE_COPIES})
add_dependencies(tarvell templates)

# The executable finds the templates in its own folder, links resolved; the link puts it on the
# path.
set(TARVELL_PROGRAM_FOLDER ${CMAKE_INSTALL_LIBDIR}/tarvell)
install(TARGETS tarvell RUNTIME DESTINATION ${TARVELL_PROGRAM_FOLDER})
install(FILES ${TARVELL_TEMPLATES} DESTINATION ${TARVELL_PROGRAM_FOLDER})
file(CREATE_LINK ../${TARVELL_PROGRAM_FOLDER}/tarvell ${CMAKE_BINARY_DIR}/tarvell.link SYMBOLIC)
install(FILES ${CMAKE_BINARY_DIR}/tarvell.link DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME tarvell)
