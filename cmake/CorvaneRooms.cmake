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
