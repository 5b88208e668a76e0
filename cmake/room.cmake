# room(NAME ON rooms... FILES sources... [SYSTEM targets...])
#
# One folder under src/: a static library whose public headers live in include/NAME. A room sees the
# rooms it stands on and those beneath them; any other room's header is not on its include path.
# SYSTEM names the outside libraries that the room calls and keeps to itself.
function(room name)
    cmake_parse_arguments(PARSE_ARGV 1 ROOM "" "" "ON;FILES;SYSTEM")
    add_library(${name} STATIC ${ROOM_FILES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/include
                                       PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ROOM_ON} PRIVATE house ${ROOM_SYSTEM})
endfunction()

# room_tests(NAME FILES sources... [ON targets...]): the room's one test program, linked on that room
# alone.
function(room_tests name)
    cmake_parse_arguments(PARSE_ARGV 1 ROOM "" "" "ON;FILES")
    add_executable(${name}_tests ${ROOM_FILES})
    target_link_libraries(${name}_tests PRIVATE ${name} ${ROOM_ON} test_main house)
    add_test(NAME ${name} COMMAND ${name}_tests)
endfunction()
