# add_room(NAME [SEES ROOM...]) adds the library NAME_room with the sources of this folder. Its sources can include only the
# headers of the room itself and of the rooms after SEES: each room has a folder in the build tree with one link, which
# leads to its headers. A room does not need the C++ run-time library.
function(add_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "" "" "SEES")
  set(view "${CMAKE_BINARY_DIR}/rooms/${name}")
  file(MAKE_DIRECTORY "${view}")
  file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${view}/${name}" SYMBOLIC)
  list(TRANSFORM room_SEES APPEND _room)
  add_library(${name}_room STATIC)
  target_include_directories(${name}_room PUBLIC "${view}")
  target_compile_options(${name}_room PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics)
  target_link_libraries(${name}_room PUBLIC ${room_SEES})
endfunction()
