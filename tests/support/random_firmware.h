#pragma once

#include <string>

#include "card/instructions.h"
#include "support/rounds.h"
#include "ticket/generator.h"

namespace support {

// Firmware of random instructions that assembles on a card with everything fitted and 8 RAM cells.
// It mostly loops, waits and talks, as a player's does.
inline std::string RandomFirmware(kp::Generator& generator) {
    const auto draw = [&](int low, int high) {
        return static_cast<int>(generator.Draw(low, high));
    };
    const int size = draw(1, 14);
    const auto reg = [&] {
        return std::string(kp::kRegisterNames[static_cast<std::size_t>(draw(0, 4))]);
    };
    const auto number = [&] {
        return std::to_string(draw(0, 3) == 0 ? draw(-300, 300) : draw(0, 9));
    };
    const auto value = [&] {
        return draw(0, 1) == 0
                   ? number()
                   : std::string(kp::kRegisterNames[static_cast<std::size_t>(draw(0, 6))]);
    };
    const auto cell = [&] {
        return "[" + (draw(0, 1) == 0 ? std::to_string(draw(0, 7)) : reg()) + "]";
    };
    const auto operand = [&](kp::OperandKind kind) {
        switch (kind) {
            case kp::OperandKind::MovTarget:
                return draw(0, 2) == 0 ? cell() : reg();
            case kp::OperandKind::MovSource:
            case kp::OperandKind::Value:
                return value();
            case kp::OperandKind::Register:
                return reg();
            case kp::OperandKind::Label:
                return "l" + std::to_string(draw(0, size));
        }
        return std::string();
    };
    std::string firmware;
    for (int line = 0; line < size; ++line) {
        static constexpr kp::Op kTalk[] = {kp::Op::Tx,  kp::Op::Rx,   kp::Op::Hin, kp::Op::Hout,
                                           kp::Op::Tmr, kp::Op::Wait, kp::Op::Tx,  kp::Op::Rx};
        const kp::Op op = draw(0, 1) == 0 ? kTalk[draw(0, 7)] : static_cast<kp::Op>(draw(0, 23));
        const kp::InstructionInfo& info = kp::Info(op);
        firmware += "l" + std::to_string(line) + ": " + std::string(info.name);
        const int count = draw(info.Least(), info.most);
        for (int k = 0; k < count; ++k) {
            firmware += (k == 0 ? " " : ", ") + operand(info.operands[static_cast<std::size_t>(k)]);
        }
        firmware += '\n';
    }
    return firmware + "l" + std::to_string(size) + ":\n";
}

}  // namespace support
