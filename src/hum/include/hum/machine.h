#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "hum/program.h"

namespace hum {

struct Instruments;
struct MachineState;

inline constexpr std::int64_t kSampleRate = 48000;
inline constexpr std::int64_t kBlockSamples = 64;      // params change only between blocks
inline constexpr std::int64_t kResumeLimit = 2000000;  // instructions in one resume

// Why a program stopped; final until it is started again.
struct Stop {
    std::string message;
    std::int64_t sample = 0;
    std::uint32_t pc = 0;  // the index of the instruction
    // Where it is in the source; the name is empty when no instruction is at fault.
    std::string source;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

// The way a machine runs its code; both give the same samples.
enum class Engine : std::uint8_t { Fast, Plain };

struct MachineSettings {
    // Read by kit, inst and clips of host data, which are silent without it; must outlive the
    // machine.
    const Instruments* instruments = nullptr;
    std::int64_t resume_limit = kResumeLimit;
    Engine engine = Engine::Fast;
};

// One playing of a program, which must outlive it. All memory is taken when the machine is made:
// nothing allocates while samples run, unless the program stops.
class Machine {
public:
    explicit Machine(const Program& program, const MachineSettings& settings = {});
    ~Machine();
    Machine(Machine&&) noexcept;
    Machine& operator=(Machine&&) noexcept;

    // Back to the beginning: memory as at first, but for persistent variables, params with the
    // values last set; then main. False when the program stopped.
    bool Start();

    // Runs samples, left and right by turns; returns how many ran to their end.
    std::size_t Run(std::span<float> stereo);

    std::optional<std::size_t> FindParam(std::string_view name) const;
    float Param(std::size_t index) const;
    // Takes effect at the next block's start.
    void SetParam(std::size_t index, float value);

    const std::optional<Stop>& Stopped() const;
    std::int64_t Sample() const;            // the next one to run
    std::int64_t InstructionCount() const;  // run since the start
    float Tempo() const;                    // as held at the start
    std::int32_t Bars() const;
    std::int64_t LengthSamples() const;

    // A program's memory, for whoever looks into it between samples.
    std::span<const std::uint32_t> Memory() const;

private:
    std::unique_ptr<MachineState> state_;
};

}  // namespace hum
