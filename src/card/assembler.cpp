#include "card/assembler.h"

#include <algorithm>

#include "encoder.h"
#include "error_list.h"
#include "source_lines.h"
#include "symbols.h"

namespace kp {
namespace {

// Lines with errors count here too: the player is told what the whole program needs.
void CheckRom(const SourceLines& source, std::int32_t needed, std::int32_t rom, ErrorList& errors) {
    if (needed <= rom) return;
    std::int32_t before = 0;  // instructions up to the line
    for (const SourceLine& line : source.All()) {
        if (!line.HasInstruction() || before++ < rom) continue;
        errors.EnterLine(line.number);
        errors.Fail({{}, 1}, "The program needs " + std::to_string(needed) +
                                 " instructions; this card's ROM holds " + std::to_string(rom) +
                                 ".");
        return;
    }
}

}  // namespace

Assembly Assemble(std::string_view text, const CardConfig& config) {
    const SourceLines source(text);
    ErrorList errors;
    Symbols symbols = ReadSymbols(source, errors);
    Encoder encoder(config, symbols, errors);
    Assembly assembly;
    assembly.instructions.reserve(source.All().size());
    for (const SourceLine& line : source.All()) {
        if (!line.HasInstruction()) continue;
        ++assembly.lines;
        errors.EnterLine(line.number);
        if (encoder.Encode(line, source.Operands(line))) {
            assembly.instructions.push_back(encoder.Made());
        }
    }
    CheckRom(source, assembly.lines, config.rom, errors);
    assembly.errors = errors.Release();
    assembly.labels = symbols.labels.Release();
    assembly.constants = symbols.constants.Release();
    return assembly;
}

}  // namespace kp
