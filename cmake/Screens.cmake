# The screens: Qt Widgets over the core.
find_package(Qt6 6.4 REQUIRED COMPONENTS PrintSupport Widgets)
find_package(QCustomPlotQt6 REQUIRED)

add_library(tarvell_screens STATIC
  screens/caldata/CalEditor.cpp screens/caldata/CalEditor.h
  screens/caldata/CalGrid.cpp screens/caldata/CalGrid.h
  screens/caldata/CalHeaderBlock.cpp screens/caldata/CalHeaderBlock.h
  screens/caldata/CalHeaderBlock.ui
  screens/caldata/CellEditor.cpp screens/caldata/CellEditor.h
  screens/caldata/ChangeTable.cpp screens/caldata/ChangeTable.h
  screens/caldata/CurveDrawing.cpp
  screens/caldata/CurveLibrary.cpp
  screens/caldata/CurvePane.cpp screens/caldata/CurvePane.h
  screens/caldata/CurveSplitter.cpp screens/caldata/CurveSplitter.h
  screens/caldata/EditHistory.cpp
  screens/caldata/CertificateFiles.cpp screens/caldata/CertificateFiles.h
  screens/caldata/ChangedCell.cpp
  screens/caldata/ChosenColumns.cpp
  screens/caldata/ColumnBoxes.cpp
  screens/caldata/DataSetExport.cpp
  screens/caldata/DataSetPrinting.cpp
  screens/caldata/EarlierChoice.cpp screens/caldata/EarlierChoice.h
  screens/caldata/DataSetEditors.cpp
  screens/caldata/EditorCurve.cpp screens/caldata/EditorCurve.h
  screens/caldata/EditorTable.cpp
  screens/caldata/DraftKeeper.cpp screens/caldata/DraftKeeper.h
  screens/caldata/DraftStrip.cpp screens/caldata/DraftStrip.h
  screens/caldata/GridClipboard.cpp
  screens/caldata/KitFile.cpp
  screens/caldata/GridModel.cpp screens/caldata/GridModel.h
  screens/caldata/ImportNotes.cpp
  screens/caldata/ImportPreview.cpp screens/caldata/ImportPreview.h
  screens/caldata/ImportPreviewResult.cpp
  screens/caldata/ImportPreview.ui
  screens/caldata/PastePreview.cpp screens/caldata/PastePreview.h
  screens/caldata/PastePreview.ui
  screens/caldata/TableBox.cpp
  screens/caldata/PlannedTables.cpp
  screens/caldata/VersionCurve.cpp screens/caldata/VersionCurve.h
  screens/caldata/VersionTexts.cpp
  screens/caldata/WholeStep.cpp
  screens/caldata/SlipWatch.cpp screens/caldata/SlipWatch.h
  screens/caldata/frmCalDataInput.cpp screens/caldata/frmCalDataInput.h
  screens/caldata/frmCalDataInput.ui
  screens/caldata/frmCalDataTabInput.cpp screens/caldata/frmCalDataTabInput.h
  screens/caldata/frmCalDataTabInput.ui
  screens/caldata/frmCalibrationMain.cpp screens/caldata/frmCalibrationMain.h
  screens/caldata/frmCalibrationMain.ui
  screens/caldata/frmInputPX60H.cpp screens/caldata/frmInputPX60H.h screens/caldata/frmInputPX60H.ui
  screens/caldata/frmDeleted.cpp screens/caldata/frmDeleted.h screens/caldata/frmDeleted.ui
  screens/caldata/frmHistory.cpp screens/caldata/frmHistory.h screens/caldata/frmHistory.ui
  screens/main/frmMain.cpp screens/main/frmMain.h screens/main/frmMain.ui
  screens/main/frmSplash.cpp screens/main/frmSplash.h screens/main/frmSplash.ui
  screens/station/InstrumentFields.cpp screens/station/InstrumentFields.h
  screens/station/InstrumentPick.cpp
  screens/station/UnsavedInstruments.cpp
  screens/overview/OpenedRow.cpp
  screens/overview/OverviewFiles.cpp screens/overview/OverviewFiles.h
  screens/overview/OverviewFilter.cpp screens/overview/OverviewFilter.h
  screens/overview/OverviewModel.cpp screens/overview/OverviewModel.h
  screens/overview/OverviewTable.cpp screens/overview/OverviewTable.h
  screens/overview/SurveyThread.cpp screens/overview/SurveyThread.h
  screens/overview/UpdatePreview.cpp screens/overview/UpdatePreview.h
  screens/overview/UpdatePreview.ui
  screens/overview/UpdateStations.cpp
  screens/overview/frmOverview.cpp screens/overview/frmOverview.h screens/overview/frmOverview.ui
  screens/station/InstrumentHistory.cpp screens/station/InstrumentHistory.h
  screens/station/frmStationGetInstr.cpp screens/station/frmStationGetInstr.h
  screens/station/frmStationGetInstr.ui
  screens/station/frmStationMain.cpp screens/station/frmStationMain.h
  screens/station/frmStationMain.ui
  screens/station/frmStationModelList.cpp screens/station/frmStationModelList.h
  screens/station/frmStationModelList.ui
  screens/widgets/AltKeys.cpp
  screens/widgets/AskReplacement.cpp
  screens/widgets/CalendarButton.cpp screens/widgets/CalendarButton.h
  screens/widgets/ChangedWithHistory.cpp
  screens/widgets/Colours.cpp
  screens/widgets/DateBoxes.cpp
  screens/widgets/DefaultDate.cpp
  screens/widgets/DeliberateChoice.cpp
  screens/widgets/DesktopPlatform.cpp
  screens/widgets/EnterKey.cpp
  screens/widgets/FileTextValidator.cpp screens/widgets/FileTextValidator.h
  screens/widgets/FolderPicker.cpp
  screens/widgets/Guard.cpp
  screens/widgets/ListHead.cpp screens/widgets/ListHead.h
  screens/widgets/LongTexts.cpp
  screens/widgets/NameList.cpp
  screens/widgets/Handbook.cpp screens/widgets/Handbook.h
  screens/widgets/NoticeLine.cpp screens/widgets/NoticeLine.h
  screens/widgets/OneLineValidator.cpp screens/widgets/OneLineValidator.h
  screens/widgets/OutlinedBoxes.cpp
  screens/widgets/PaperOutput.cpp
  screens/widgets/PaperPainter.cpp
  screens/widgets/PaleSelection.cpp screens/widgets/PaleSelection.h
  screens/widgets/Questions.cpp
  screens/widgets/ScreenReaders.cpp
  screens/widgets/ScreenSize.cpp
  screens/widgets/SerialList.cpp
  screens/widgets/UpDown.cpp screens/widgets/UpDown.h
  screens/widgets/UserSettings.cpp
  screens/widgets/cFileDialog.cpp
  screens/widgets/frmInput.cpp screens/widgets/frmInput.h screens/widgets/frmInput.ui)
set_target_properties(tarvell_screens PROPERTIES AUTOMOC ON AUTOUIC ON)
target_link_libraries(tarvell_screens PUBLIC tarvell_core tarvell_exchange Qt6::Widgets PRIVATE tarvell_warnings)
target_precompile_headers(tarvell_screens PRIVATE <QtWidgets> <array> <functional> <memory> <string>
  <string_view> <vector>)

# Loaded when the first curve is shown, and when the user prints: from the folder of the executable,
# unless the toolkit is a part of the executable.
set(TARVELL_LIBRARIES tarvell_curve tarvell_paper)
if(WIN32)
  set(library_type STATIC)
else()
  set(library_type MODULE)
  set(TARVELL_LIBRARY_FILES ${TARVELL_LIBRARIES})
endif()
add_library(tarvell_curve ${library_type}
  screens/curve/BoundedGraph.cpp
  screens/curve/PlotView.cpp
  screens/curve/QcpPlot.cpp)
target_link_libraries(tarvell_curve PRIVATE QCustomPlotQt6::QCustomPlotQt6 Qt6::Widgets
  tarvell_warnings)
target_precompile_headers(tarvell_curve PRIVATE <qcustomplot.h>)
add_library(tarvell_paper ${library_type} screens/paper/PrinterDialog.cpp)
target_link_libraries(tarvell_paper PRIVATE Qt6::PrintSupport Qt6::Widgets tarvell_warnings)
foreach(library IN LISTS TARVELL_LIBRARIES)
  target_include_directories(${library} PRIVATE ${CMAKE_SOURCE_DIR})
endforeach()
foreach(library IN LISTS TARVELL_LIBRARY_FILES)
  set_target_properties(${library} PROPERTIES PREFIX "" CXX_VISIBILITY_PRESET hidden
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
endforeach()

if(WIN32)
  target_sources(tarvell_screens PRIVATE app/BuiltInLibraries.cpp)
  target_link_libraries(tarvell_screens PRIVATE ${TARVELL_LIBRARIES})
  qt_add_resources(tarvell_screens images PREFIX / FILES ${TARVELL_PIXEL_PICTURES})
else()
  target_sources(tarvell_screens PRIVATE screens/widgets/ProgramLibrary.cpp)
  qt_add_resources(tarvell_screens images PREFIX / FILES
    images/calendar.svg images/tarvell.svg images/tarvell-16.svg)
endif()

add_executable(tarvell app/main.cpp)
target_link_libraries(tarvell PRIVATE tarvell_screens tarvell_warnings)
if(WIN32)
  # No console window beside the program's own.
  set_target_properties(tarvell PROPERTIES WIN32_EXECUTABLE ON)
  describe_executable(tarvell tarvell "Editor for calibration data")
endif()

# The templates are beside the executable, both after the build and after installing.
file(GLOB TARVELL_TEMPLATES CONFIGURE_DEPENDS templates/Temp*)
foreach(template IN LISTS TARVELL_TEMPLATES)
  cmake_path(GET template FILENAME name)
  set(copy ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name})
  add_custom_command(OUTPUT ${copy} DEPENDS ${template}
    COMMAND ${CMAKE_COMMAND} -E copy ${template} ${copy} VERBATIM)
  list(APPEND TARVELL_TEMPLATE_COPIES ${copy})
endforeach()
add_custom_target(templates ALL DEPENDS ${TARVELL_TEMPLATE_COPIES})

# So is the handbook, as pages with pictures.
find_program(CMARK cmark-gfm REQUIRED)
file(GLOB TARVELL_DOCUMENTS CONFIGURE_DEPENDS docs/*.md docs/images/*.png)
set(TARVELL_HANDBOOK ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/handbook)
add_custom_command(OUTPUT ${TARVELL_HANDBOOK}/handbook.html
  DEPENDS scripts/handbook ${TARVELL_DOCUMENTS}
  COMMAND ${CMAKE_SOURCE_DIR}/scripts/handbook ${CMAKE_SOURCE_DIR}/docs ${TARVELL_HANDBOOK}
  VERBATIM)
add_custom_target(handbook ALL DEPENDS ${TARVELL_HANDBOOK}/handbook.html)
add_dependencies(tarvell ${TARVELL_LIBRARIES} templates handbook)

if(WIN32)
  # One folder holds everything.
  install(TARGETS tarvell RUNTIME DESTINATION .)
  install(FILES ${TARVELL_TEMPLATES} DESTINATION .)
  install(DIRECTORY ${TARVELL_HANDBOOK} DESTINATION .)
  return()
endif()

# The executable finds the templates in its own folder, links resolved; the link puts it on the
# path.
set(TARVELL_PROGRAM_FOLDER ${CMAKE_INSTALL_LIBDIR}/tarvell)
install(TARGETS tarvell ${TARVELL_LIBRARY_FILES} RUNTIME DESTINATION ${TARVELL_PROGRAM_FOLDER}
  LIBRARY DESTINATION ${TARVELL_PROGRAM_FOLDER})
install(FILES ${TARVELL_TEMPLATES} DESTINATION ${TARVELL_PROGRAM_FOLDER})
install(DIRECTORY ${TARVELL_HANDBOOK} DESTINATION ${CMAKE_INSTALL_DATADIR}/tarvell)
file(RELATIVE_PATH handbook /${TARVELL_PROGRAM_FOLDER} /${CMAKE_INSTALL_DATADIR}/tarvell/handbook)
file(CREATE_LINK ${handbook} ${CMAKE_BINARY_DIR}/handbook.link SYMBOLIC)
install(FILES ${CMAKE_BINARY_DIR}/handbook.link DESTINATION ${TARVELL_PROGRAM_FOLDER}
  RENAME handbook)
file(CREATE_LINK ../${TARVELL_PROGRAM_FOLDER}/tarvell ${CMAKE_BINARY_DIR}/tarvell.link SYMBOLIC)
install(FILES ${CMAKE_BINARY_DIR}/tarvell.link DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME tarvell)
