# Test programs in CTest: one entry a GoogleTest suite.
#
# An entry for each test would start a program for each of some two thousand; one for each program
# would tell little. So `ctest -R` goes by the names
# of suites, and `scripts/test.sh` says how many tests stand behind them.

# corvane_discover_suites(TARGET [PROPERTIES name value...]): asks the program for its suites when it
# is built.
function(corvane_discover_suites target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "PROPERTIES")
  set(suites ${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake)
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND}
            -DPROGRAM=$<TARGET_FILE:${target}>
            "-DEMULATOR=$<TARGET_PROPERTY:${target},CROSSCOMPILING_EMULATOR>"
            -DOUT=${suites} -P ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/ListSuites.cmake
    BYPRODUCTS ${suites}
    VERBATIM)
  set(entries ${CMAKE_CURRENT_BINARY_DIR}/${target}_tests.cmake)
  # GoogleTest ends with status 0 when tests were skipped: such a run must not count as passed.
  file(CONFIGURE OUTPUT ${entries} @ONLY CONTENT [==[
set(properties SKIP_REGULAR_EXPRESSION "\\[  SKIPPED \\]" WORKING_DIRECTORY "@CMAKE_CURRENT_BINARY_DIR@" @arg_PROPERTIES@)
if(EXISTS "@suites@")
  include("@suites@")
else()
  add_test(@target@_is_not_built @target@_is_not_built)
endif()
]==])
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${entries})
endfunction()
