# Flags that every target shares; nothing else sets flags.

option(BRANTIWELL_WERROR "Treat warnings as errors" OFF)
option(BRANTIWELL_SANITIZE "Address and undefined behaviour sanitizers" OFF)
option(BRANTIWELL_BENCH "Build the benchmarks" OFF)
option(BRANTIWELL_FUZZ "Build the fuzz targets (Clang only)" OFF)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

add_library(bw_options INTERFACE)
target_include_directories(bw_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(
  bw_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wold-style-cast
            # Tables name only the cells that differ; the others have their defaults.
            -Wno-missing-field-initializers
            $<$<BOOL:${BRANTIWELL_WERROR}>:-Werror>)
# Optimised for debugging even in dev: a million rows are read in the tests too. Line numbers are
# all the debug information that a build carries along; for a session in the debugger configure
# with -DCMAKE_CXX_FLAGS_DEBUG=-ggdb.
if(CMAKE_CXX_FLAGS_DEBUG STREQUAL "-g")
  set(CMAKE_CXX_FLAGS_DEBUG "-g1")
endif()
target_compile_options(bw_options INTERFACE $<$<CONFIG:Debug>:-Og>)

# What is installed makes the mistakes of a program hard to use against it. cmake/package looks.
set(hardening -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE
              -D_FORTIFY_SOURCE=3)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  list(APPEND hardening -fcf-protection=full)
endif()
target_compile_options(bw_options INTERFACE "$<$<CONFIG:Release>:${hardening}>")
target_link_options(bw_options INTERFACE "$<$<CONFIG:Release>:-Wl,-z,relro,-z,now>")

# What most sources of the windows include. Not more: the larger the precompiled header, the longer
# each source takes to load it.
set(BRANTIWELL_COMMON_HEADERS
    <QApplication> <QComboBox> <QDialog> <QGridLayout> <QLabel> <QLineEdit> <QPushButton>
    <QTableView> <functional> <memory> <string> <variant> <vector>)
if(BRANTIWELL_SANITIZE)
  target_compile_options(bw_options INTERFACE -fsanitize=address,undefined
                                              -fno-sanitize-recover=undefined)
  target_link_options(bw_options INTERFACE -fsanitize=address,undefined)
endif()
if(BRANTIWELL_FUZZ)
  # What is under test must be instrumented too, or the fuzzer is blind.
  target_compile_options(bw_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

find_program(BRANTIWELL_MOLD mold)
if(BRANTIWELL_MOLD)
  target_link_options(bw_options INTERFACE -fuse-ld=mold)
endif()
