#pragma once

#include <cstdint>

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

namespace hum {

// While one lives, this thread's floats that are too small for full precision count as zero: the
// tails of filters would otherwise cost tens of times more. The same on every system, so that the
// samples are.
class FlushDenormals {
public:
    FlushDenormals(const FlushDenormals&) = delete;
    FlushDenormals& operator=(const FlushDenormals&) = delete;

#if defined(__x86_64__) || defined(__i386__)
    FlushDenormals() : before_(_mm_getcsr()) {
        _mm_setcsr(before_ | kFlushResults | kZeroOperands);
    }
    ~FlushDenormals() {
        _mm_setcsr(before_);
    }

private:
    static constexpr unsigned kFlushResults = 0x8000;
    static constexpr unsigned kZeroOperands = 0x0040;
    unsigned before_;
#elif defined(__aarch64__)
    FlushDenormals() {
        asm volatile("mrs %0, fpcr" : "=r"(before_));
        asm volatile("msr fpcr, %0" : : "r"(before_ | kFlush));
    }
    ~FlushDenormals() {
        asm volatile("msr fpcr, %0" : : "r"(before_));
    }

private:
    static constexpr std::uint64_t kFlush = 1u << 24;
    std::uint64_t before_;
#else
    FlushDenormals() = default;
#endif
};

}  // namespace hum
