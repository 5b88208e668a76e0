# What ./package ships. The archives hold it in one folder, which is what a CMAKE_INSTALL_BINDIR of
# "." asks for; a system's package spreads it over the system.
include(GNUInstallDirs)
install(TARGETS vantor-kest lc1 hum_command RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

if(CMAKE_INSTALL_BINDIR STREQUAL ".")
    install(FILES assets/NOTICES.TXT LICENSE DESTINATION .)
    if(WIN32)
        set(program vantor-kest.exe)
        set(KEST_DATA_FOLDER "    %APPDATA%\\Vantor Kest")
        set(KEST_SYSTEM_NOTE "
Needs 64-bit Windows 10 or later.")
    else()
        set(program "./vantor-kest  ")
        set(KEST_DATA_FOLDER "    $XDG_DATA_HOME/vantor-kest, or ~/.local/share/vantor-kest")
        set(KEST_SYSTEM_NOTE "
Needs a 64-bit PC and the GNU C library 2.36 or later. The folder man
holds the manual pages: man ./man/lc1.6")
        install(DIRECTORY docs/man DESTINATION .)
    endif()
    configure_file(packaging/readme.txt.in ${CMAKE_BINARY_DIR}/README.txt @ONLY)
    install(FILES ${CMAKE_BINARY_DIR}/README.txt DESTINATION .)
    return()
endif()

install(FILES assets/NOTICES.TXT DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vantor-kest)
install(DIRECTORY docs/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)
install(FILES packaging/vantor-kest.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)

# The icon in each size under the name that desktops look for.
set(icons ${CMAKE_BINARY_DIR}/icons)
add_custom_command(OUTPUT ${icons}/vantor-kest.ico
    COMMAND ${CMAKE_COMMAND} -E make_directory ${icons}
    COMMAND icon_writer ${PROJECT_SOURCE_DIR}/assets/icon ${icons}
    DEPENDS icon_writer)
add_custom_target(icons ALL DEPENDS ${icons}/vantor-kest.ico)
foreach(size IN ITEMS 16 32 48 64 128 256)
    install(FILES ${icons}/vantor-kest-${size}.png RENAME vantor-kest.png
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()
