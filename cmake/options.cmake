# The compiler settings that every target of the house shares.
add_library(house INTERFACE)
target_compile_options(house INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wcast-qual -Wformat=2 -Wimplicit-fallthrough -Wundef)
# GCC 12 takes the sum of a literal and a string for an overlapping copy (its bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(house INTERFACE -Wno-restrict)
endif()
if(KEST_WERROR)
    target_compile_options(house INTERFACE -Werror)
endif()
if(KEST_SANITIZERS)
    target_compile_options(house INTERFACE
        -fsanitize=${KEST_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(house INTERFACE -fsanitize=${KEST_SANITIZERS})
    # With AddressSanitizer GCC takes what std::regex moves for uninitialised (its bug 105562).
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(house INTERFACE -Wno-maybe-uninitialized)
    endif()
endif()

# Header-only libraries serve every system, unlike the rest of the headers beside them.
if(CMAKE_CROSSCOMPILING)
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/headers)
    foreach(name IN ITEMS doctest stb)
        file(CREATE_LINK /usr/include/${name} ${CMAKE_BINARY_DIR}/headers/${name} SYMBOLIC)
    endforeach()
    target_include_directories(house SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/headers)
endif()
