# The toolkit for Windows draws no SVG: its pictures hold pixels, under the same names. The small
# one has a copy for each scale.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(ICOTOOL icotool REQUIRED)

# picture(OUTPUT SOURCE SIZE): a picture of SIZE x SIZE pixels.
function(picture output source size)
  add_custom_command(OUTPUT ${output} DEPENDS ${CMAKE_SOURCE_DIR}/images/${source}
    COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${output} ${CMAKE_SOURCE_DIR}/images/${source}
    VERBATIM)
endfunction()

set(pictures ${CMAKE_BINARY_DIR}/pictures)
file(MAKE_DIRECTORY ${pictures})
set(TARVELL_PIXEL_PICTURES "")
foreach(entry calendar:16 calendar@2x:32 calendar@3x:48 tarvell:256 tarvell-16:16)
  string(REGEX MATCH "^([^:@]+)([^:]*):(.*)$" matched ${entry})
  set(output ${pictures}/${CMAKE_MATCH_1}${CMAKE_MATCH_2}.png)
  set_source_files_properties(${output} PROPERTIES
    QT_RESOURCE_ALIAS images/${CMAKE_MATCH_1}${CMAKE_MATCH_2}.svg)
  picture(${output} ${CMAKE_MATCH_1}.svg ${CMAKE_MATCH_3})
  list(APPEND TARVELL_PIXEL_PICTURES ${output})
endforeach()

# The icon of the executables.
set(icon ${pictures}/tarvell.ico)
set(sizes ${pictures}/tarvell-16.png)
foreach(size 24 32 48 64)
  picture(${pictures}/icon-${size}.png tarvell.svg ${size})
  list(APPEND sizes ${pictures}/icon-${size}.png)
endforeach()
add_custom_command(OUTPUT ${icon} DEPENDS ${sizes} ${pictures}/tarvell.png
  COMMAND ${ICOTOOL} --create --output=${icon} ${sizes} --raw=${pictures}/tarvell.png VERBATIM)
add_custom_target(tarvell_icon ALL DEPENDS ${icon})
