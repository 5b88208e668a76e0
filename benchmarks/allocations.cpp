#include "allocations.h"

#include <cstdlib>
#include <new>

namespace {

// Replaced operators cannot be handed a counter, so this one is the program's own.
std::size_t allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
    std::abort();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace bench {

std::size_t Allocations() {
    return allocations;
}

}  // namespace bench
