# The rooms of src/: one library each, and one include folder each.
#
# An include folder, rooms/ROOM in the build tree, holds a link to src/ROOM and nothing else. A room
# sees its own, those of the rooms that it uses, and those that they use: an include of a room
# further up does not compile.

# corvane_room_folder(ROOM TARGET): lets TARGET, and what links it, include the headers of ROOM.
function(corvane_room_folder room target)
  set(folder ${PROJECT_BINARY_DIR}/rooms/${room})
  file(MAKE_DIRECTORY ${folder})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${room} ${folder}/${room} SYMBOLIC)
  target_include_directories(${target} PUBLIC ${folder})
endfunction()

# corvane_precompiled(TARGET): lets TARGET use the precompiled header of what almost every file of
# ours includes. (A header that a file forgets is found by clang-tidy, which goes without.)
function(corvane_precompiled target)
  if(target STREQUAL corvane_platform)
    target_precompile_headers(${target} PRIVATE
      <algorithm> <array> <cstddef> <cstdint> <memory> <optional> <string> <string_view>
      <system_error> <utility> <vector>)
  else()
    target_precompile_headers(${target} REUSE_FROM corvane_platform)
  endif()
endfunction()

# corvane_room(ROOM SOURCES file... [USES room...] [PRECOMPILED header...]): makes the library
# corvane_ROOM of files in src/ROOM. PRECOMPILED stands for a precompiled header of the room's own.
function(corvane_room room)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES;PRECOMPILED")
  add_library(corvane_${room} STATIC ${arg_SOURCES})
  corvane_room_folder(${room} corvane_${room})
  list(TRANSFORM arg_USES PREPEND corvane_)
  target_link_libraries(corvane_${room} PUBLIC ${arg_USES} PRIVATE corvane_warnings)
  if(arg_PRECOMPILED)
    target_precompile_headers(corvane_${room} PRIVATE ${arg_PRECOMPILED})
  else()
    corvane_precompiled(corvane_${room})
  endif()
endfunction()

# corvane_module(ROOM TARGET NAME LIBRARY file...): a part of the program that is loaded when it is
# asked for, as NAME.so, with the foreign libraries that it needs. It sees what ROOM's users see.
function(corvane_module room target name library)
  add_library(${target} MODULE ${ARGN})
  target_include_directories(
    ${target} PRIVATE $<TARGET_PROPERTY:corvane_${room},INTERFACE_INCLUDE_DIRECTORIES>)
  target_link_libraries(${target} PRIVATE ${library} corvane_warnings)
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${name} PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  # Loaded, not linked: but whoever has the one needs the other.
  add_dependencies(corvane_${room} ${target})
endfunction()
