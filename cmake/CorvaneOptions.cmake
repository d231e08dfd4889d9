# Switches of the build and the flags every target of ours is compiled with.

# Where `packaging/windows/recipes.sh --where wx` and `--where ffmpeg` say.
set(CORVANE_WX "" CACHE PATH "The cross-built wxWidgets that the Windows program links")
set(CORVANE_FFMPEG "" CACHE PATH "The cross-built FFmpeg libraries that the Windows program links")
if(WIN32)
  set(corvane_disc_default OFF)
else()
  set(corvane_disc_default ON)
endif()
if(WIN32 AND NOT (CORVANE_WX AND CORVANE_FFMPEG))
  set(corvane_ui_default OFF)
else()
  set(corvane_ui_default ON)
endif()
option(CORVANE_UI "Build the windows (needs wxWidgets 3.2)" ${corvane_ui_default})
option(CORVANE_DISC_TESTS "Build the tests that author discs with the real tools and read them back"
       ${corvane_disc_default})
option(CORVANE_BENCH "Build the benchmarks" OFF)
option(CORVANE_FUZZ "Build the libFuzzer targets (needs clang)" OFF)
option(CORVANE_SANITIZE "Address and undefined-behaviour sanitizers" OFF)
# The sanitizers do not take a class of the module's for what the program knows it as.
if(WIN32 OR CORVANE_SANITIZE OR CORVANE_FUZZ)
  set(corvane_decoder_module_default OFF)
else()
  set(corvane_decoder_module_default ON)
endif()
option(CORVANE_DECODER_MODULE "Load FFmpeg when the first picture is wanted, not with the program"
       ${corvane_decoder_module_default})

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Without these two ccache keeps nothing that uses a precompiled header.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
                                  ${CCACHE_PROGRAM})
  set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

# What our own code must compile under; toolkit headers come in as SYSTEM.
add_library(corvane_warnings INTERFACE)
target_compile_options(
  corvane_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(CMAKE_UNITY_BUILD)
  # Several files are compiled as one: a local variable then "shadows" what another file's unnamed
  # namespace holds, and no file is the main one, which alone may have a member of such a type. The
  # debug tree, file by file, keeps both warnings.
  target_compile_options(corvane_warnings INTERFACE -Wno-shadow)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(corvane_warnings INTERFACE -Wno-subobject-linkage)
  endif()
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # g++ 12 sees overlapping, endless and misplaced copies in `"text" + string` once it optimises (its
  # bugs 105651 and 105329), and uninitialised members in an optional that is not set (80635).
  target_compile_options(corvane_warnings INTERFACE -Wno-restrict)
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_compile_options(corvane_warnings INTERFACE -Wno-stringop-overflow -Wno-stringop-overread
                                                      -Wno-array-bounds -Wno-maybe-uninitialized)
  endif()
endif()

if(CORVANE_SANITIZE OR CORVANE_FUZZ)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(CORVANE_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(MINGW)
  # One file a program: no compiler DLL beside it.
  add_link_options(-static)
  add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
endif()
