#pragma once

#include <cstddef>
#include <cstdint>
#include <tuple>
#include <type_traits>
#include <utility>

#include "hum/arithmetic.h"
#include "hum/instruction.h"
#include "machine_state.h"

namespace hum {

// Words of memory that a built-in keeps its state in, proven to lie there.
template <std::uint32_t kCount>
struct Words {
    std::uint32_t* at;

    float operator[](std::uint32_t k) const { return std::bit_cast<float>(at[k]); }
    void Set(std::uint32_t k, float value) const { at[k] = FloatWord(value); }
};
using State = Words<1>;

// A pointer that the built-in checks itself.
struct Address {
    std::int32_t word;
};

template <class T>
inline constexpr std::uint32_t kWordsOf = 0;
template <std::uint32_t kCount>
inline constexpr std::uint32_t kWordsOf<Words<kCount>> = kCount;

// Calls a built-in written as a plain function: floats come from f registers from `floats` on, all
// else from i registers from `ints` on, in order. False when a pointer leaves memory or the
// function failed.
template <class Result, class... Parameters>
struct Caller {
    static constexpr std::size_t kCount = sizeof...(Parameters);
    static constexpr bool kIsFloat[kCount + 1] = {std::is_same_v<Parameters, float>..., false};
    static constexpr bool kIsHost[kCount + 1] = {std::is_same_v<Parameters, Runtime&>..., false};

    // The place of a parameter among those of its kind.
    static constexpr std::uint32_t Place(std::size_t which) {
        std::uint32_t place = 0;
        for (std::size_t k = 0; k < which; ++k) {
            if (!kIsHost[k] && kIsFloat[k] == kIsFloat[which]) ++place;
        }
        return place;
    }

    template <class Parameter, std::size_t kWhich>
    static bool Proven(Runtime& runtime, const std::int32_t* ints) {
        if constexpr (kWordsOf<Parameter> != 0) {
            const auto address = static_cast<std::uint32_t>(ints[Place(kWhich)]);
            if (!runtime.InMemory(address, kWordsOf<Parameter>)) {
                return runtime.Fail(Trouble::BuiltinPointer, address);
            }
        }
        return true;
    }

    template <class Parameter, std::size_t kWhich>
    static Parameter Take(Runtime& runtime, const std::int32_t* ints, const float* floats) {
        if constexpr (kIsHost[kWhich]) {
            return runtime;
        } else if constexpr (kIsFloat[kWhich]) {
            return floats[Place(kWhich)];
        } else if constexpr (std::is_same_v<Parameter, std::int32_t>) {
            return ints[Place(kWhich)];
        } else if constexpr (std::is_same_v<Parameter, Address>) {
            return Address{ints[Place(kWhich)]};
        } else {
            return Parameter{runtime.memory + static_cast<std::uint32_t>(ints[Place(kWhich)])};
        }
    }

    template <class Function, std::size_t... kWhich>
    static bool Call(Function function, Runtime& runtime, Frame& frame, const Instruction& in,
                     std::index_sequence<kWhich...>) {
        [[maybe_unused]] const std::int32_t* ints = frame.i + in.ra;
        [[maybe_unused]] const float* floats = frame.f + in.rb;
        if (!(Proven<Parameters, kWhich>(runtime, ints) && ...)) return false;
        if constexpr (std::is_same_v<Result, void>) {
            function(Take<Parameters, kWhich>(runtime, ints, floats)...);
        } else if constexpr (std::is_same_v<Result, float>) {
            frame.f[in.rd] = function(Take<Parameters, kWhich>(runtime, ints, floats)...);
        } else {
            frame.i[in.rd] = function(Take<Parameters, kWhich>(runtime, ints, floats)...);
        }
        if constexpr ((std::is_same_v<Parameters, Runtime&> || ...)) {
            return runtime.trouble == Trouble::None;
        }
        return true;
    }
};

template <auto kFunction>
struct CallerOf;
template <class Result, class... Parameters, Result (*kFunction)(Parameters...)>
struct CallerOf<kFunction> : Caller<Result, Parameters...> {};

template <auto kFunction>
bool Invoke(Runtime& runtime, Frame& frame, const Instruction& in) {
    using Called = CallerOf<kFunction>;
    return Called::Call(kFunction, runtime, frame, in, std::make_index_sequence<Called::kCount>());
}

using BuiltinCode = bool (*)(Runtime& runtime, Frame& frame, const Instruction& in);

// Runs the built-in that a prepared svc names; its number is its place in this table.
extern const BuiltinCode kBuiltinCode[];

}  // namespace hum
