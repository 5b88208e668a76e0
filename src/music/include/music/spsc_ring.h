#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <span>

namespace Kest {

// A queue between one thread that writes and one that reads, without a lock. It holds one entry
// less than its size.
template <class T, std::size_t kSize>
class SpscRing {
public:
    // Writes what there is room for, and returns how many that were.
    std::size_t Write(std::span<const T> entries) {
        const std::size_t at = write_.load(std::memory_order_relaxed);
        const std::size_t read = read_.load(std::memory_order_acquire);
        const std::size_t count = std::min(entries.size(), (read + kSize - at - 1) % kSize);
        for (std::size_t k = 0; k < count; ++k) entries_[(at + k) % kSize] = entries[k];
        write_.store((at + count) % kSize, std::memory_order_release);
        return count;
    }

    // Reads as many as there are, and returns how many that were.
    std::size_t Read(std::span<T> entries) {
        const std::size_t at = read_.load(std::memory_order_relaxed);
        const std::size_t write = write_.load(std::memory_order_acquire);
        const std::size_t count = std::min(entries.size(), (write + kSize - at) % kSize);
        for (std::size_t k = 0; k < count; ++k) entries[k] = entries_[(at + k) % kSize];
        read_.store((at + count) % kSize, std::memory_order_release);
        return count;
    }

    std::size_t Filled() const {
        return (write_.load(std::memory_order_acquire) + kSize -
                read_.load(std::memory_order_acquire)) %
               kSize;
    }

private:
    std::array<T, kSize> entries_{};
    // Each on a cache line of its own, so that the two threads do not take it from one another.
    alignas(64) std::atomic<std::size_t> write_ = 0;
    alignas(64) std::atomic<std::size_t> read_ = 0;
};

}  // namespace Kest
