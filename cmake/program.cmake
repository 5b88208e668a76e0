# program(TARGET FILE DESCRIPTION): what systems are told of an executable. On Windows that is its
# manifest, icon and version; elsewhere nothing is in the file itself.
function(program target file description)
    if(NOT WIN32)
        return()
    endif()
    set(KEST_MANIFEST ${PROJECT_SOURCE_DIR}/src/platform/native/program.manifest)
    set(KEST_ICON ${PROJECT_SOURCE_DIR}/assets/icon/vantor-kest.ico)
    set(resource ${CMAKE_CURRENT_BINARY_DIR}/${file}.rc)
    configure_file(${PROJECT_SOURCE_DIR}/src/platform/native/program.rc.in ${resource} @ONLY)
    set_source_files_properties(${resource} PROPERTIES OBJECT_DEPENDS
        "${KEST_MANIFEST};${KEST_ICON}")
    target_sources(${target} PRIVATE ${resource})
endfunction()
