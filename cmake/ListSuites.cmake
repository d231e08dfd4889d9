# Writes the CTest entries of a GoogleTest program, one a suite:
#   cmake -DPROGRAM=program [-DEMULATOR=...] -DOUT=file -P ListSuites.cmake
# The first line of the file says how many tests there are.
execute_process(COMMAND ${EMULATOR} ${PROGRAM} --gtest_list_tests
                OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
if(listing MATCHES "DISABLED_[^\n]*")
  message(FATAL_ERROR "${PROGRAM}: ${CMAKE_MATCH_0} would never run.")
endif()
string(REGEX MATCHALL "\n  [^\n]+" tests "\n${listing}")
list(LENGTH tests count)
if(count EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} has no tests.")
endif()

string(REGEX MATCHALL "\n[^ \n]+\\." suites "\n${listing}")
set(text "# tests: ${count}\n")
foreach(suite IN LISTS suites)
  string(REGEX REPLACE "\n(.*)\\." "\\1" suite "${suite}")
  string(APPEND text "add_test([==[${suite}]==] ${EMULATOR} [==[${PROGRAM}]==] [==[--gtest_filter=${suite}.*]==])\n"
                     "set_tests_properties([==[${suite}]==] PROPERTIES \${properties})\n")
endforeach()
file(WRITE ${OUT} "${text}")
