# The project's own presets make warnings errors (CMAKE_COMPILE_WARNING_AS_ERROR).
add_library(tarvell_warnings INTERFACE)
target_compile_options(tarvell_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
# GCC 12 warns of overlapping copies inside std::string's own operator+ (GCC bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(tarvell_warnings INTERFACE -Wno-restrict)
endif()
