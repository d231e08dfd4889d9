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

# corvane_room(ROOM SOURCES file... [USES room...]): makes the library corvane_ROOM of files in
# src/ROOM.
function(corvane_room room)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES")
  add_library(corvane_${room} STATIC ${arg_SOURCES})
  corvane_room_folder(${room} corvane_${room})
  list(TRANSFORM arg_USES PREPEND corvane_)
  target_link_libraries(corvane_${room} PUBLIC ${arg_USES} PRIVATE corvane_warnings)
endfunction()
