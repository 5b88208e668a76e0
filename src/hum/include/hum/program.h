#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hum/instruction.h"
#include "hum/memory_map.h"

namespace hum {

inline constexpr std::uint32_t kNoCode = 0xffffffff;

// A word of memory that is not zero when a program starts.
struct StartWord {
    std::uint32_t address = 0;
    std::uint32_t word = 0;
    bool operator==(const StartWord&) const = default;
};

// What the compiler or the assembler makes and the machine runs; it never changes.
struct Program {
    struct Param {
        std::string name;
        std::uint32_t address = 0;
        float value = 0;  // at the start
    };
    struct Struct {
        std::string name;
        std::uint32_t words = 0;
    };
    struct Module {
        std::string name;
        std::string output;      // the structure's name
        std::uint32_t code = 0;  // its first instruction
        std::uint32_t output_address = 0;
    };
    struct Entry {
        std::string name;
        std::uint32_t code = 0;
    };
    struct Range {
        std::uint32_t address = 0;
        std::uint32_t words = 0;
    };

    std::vector<Instruction> code;
    std::uint32_t main = kNoCode;  // first instructions
    std::uint32_t master = kNoCode;
    std::vector<Module> modules;  // in the order in which they run
    std::vector<Entry> entries;   // functions
    std::vector<Struct> structs;  // the program's own
    std::vector<Param> params;
    std::uint32_t data_words = 0;      // memory up to here; the stacks follow
    std::vector<StartWord> start;      // every address once at most
    std::vector<Range> persistent;     // keeps its values when the program starts again
    std::vector<std::string> sources;  // names, by the source number of an instruction's place
};

// The whole of its memory: a stack follows the data for each of master, main and every module.
inline std::uint32_t MemoryWords(const Program& program) {
    return program.data_words +
           kStackWords * (static_cast<std::uint32_t>(program.modules.size()) + 2);
}

}  // namespace hum
