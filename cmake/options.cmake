# The compiler settings that every target of the house shares.
add_library(house INTERFACE)
target_compile_options(house INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wcast-qual -Wformat=2 -Wimplicit-fallthrough -Wundef)
if(KEST_WERROR)
    target_compile_options(house INTERFACE -Werror)
endif()
if(KEST_SANITIZERS)
    target_compile_options(house INTERFACE
        -fsanitize=${KEST_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(house INTERFACE -fsanitize=${KEST_SANITIZERS})
endif()
