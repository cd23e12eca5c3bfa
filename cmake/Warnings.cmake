add_library(tarvell_warnings INTERFACE)
target_compile_options(tarvell_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
