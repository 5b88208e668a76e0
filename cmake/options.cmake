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
endif()
