#include "fast_code.h"

#include <algorithm>
#include <cstddef>

#include "hum/builtins.h"

namespace hum {
namespace {

// A register that an instruction of a group reads, and the place in the group of the one that fills
// it.
struct Link {
    int reader;
    std::uint8_t Instruction::*field;
    int filler;  // negative: nothing is known
};

// Two to four instructions that one opcode does; unused places hold FastOp::Count.
struct Group {
    FastOp parts[4];
    FastOp all;
    std::size_t length;
    Link links[6];
};

struct Direct {
    std::uint32_t builtin;
    FastOp fast;
};

// Instructions that are called the same in both.
constexpr FastOp kRenamed[] = {
#define HUM_SAME(name, mnemonic, form) FastOp::name,
    HUM_OPCODES(HUM_SAME)
#undef HUM_SAME
};

// The longest first, since the first that fits is taken.
constexpr Group kGroups[] = {
#define HUM_FOUR(a, b, b1, b2, c, c1, c2, d, d1, d2) \
    {{FastOp::a, FastOp::b, FastOp::c, FastOp::d},   \
     FastOp::a##_##b##_##c##_##d,                    \
     4,                                              \
     {{1, &Instruction::ra, b1},                     \
      {1, &Instruction::rb, b2},                     \
      {2, &Instruction::ra, c1},                     \
      {2, &Instruction::rb, c2},                     \
      {3, &Instruction::ra, d1},                     \
      {3, &Instruction::rb, d2}}},
#define HUM_THREE(a, b, b1, b2, c, c1, c2)             \
    {{FastOp::a, FastOp::b, FastOp::c, FastOp::Count}, \
     FastOp::a##_##b##_##c,                            \
     3,                                                \
     {{1, &Instruction::ra, b1},                       \
      {1, &Instruction::rb, b2},                       \
      {2, &Instruction::ra, c1},                       \
      {2, &Instruction::rb, c2},                       \
      {0, nullptr, -1},                                \
      {0, nullptr, -1}}},
#define HUM_TWO(a, b, b1, b2)                              \
    {{FastOp::a, FastOp::b, FastOp::Count, FastOp::Count}, \
     FastOp::a##_##b,                                      \
     2,                                                    \
     {{1, &Instruction::ra, b1},                           \
      {1, &Instruction::rb, b2},                           \
      {0, nullptr, -1},                                    \
      {0, nullptr, -1},                                    \
      {0, nullptr, -1},                                    \
      {0, nullptr, -1}}},
    HUM_FAST_FOURS(HUM_FOUR) HUM_FAST_FOUR_JUMPS(HUM_FOUR) HUM_FAST_THREES(HUM_THREE)
        HUM_FAST_THREE_JUMPS(HUM_THREE) HUM_FAST_TWOS(HUM_TWO) HUM_FAST_TWO_JUMPS(HUM_TWO)
#undef HUM_FOUR
#undef HUM_THREE
#undef HUM_TWO
};

constexpr Direct kDirect[] = {
#define HUM_BUILTIN(name, function) {BuiltinNumber(#name), FastOp::Call_##name},
    HUM_FAST_BUILTINS(HUM_BUILTIN)
#undef HUM_BUILTIN
};

enum class Fill : std::uint8_t { None, Int, Float };

// The kind of register that an instruction fills, of those that stand in groups.
Fill FillOf(const Instruction& in) {
    switch (kOpcodes[in.op].form) {
        case Form::LoadInt:
        case Form::Ints2:
        case Form::FloatToInt:
        case Form::Ints3:
        case Form::CompareFloats:
        case Form::MemoryToInt:
            return Fill::Int;
        case Form::LoadFloat:
        case Form::Floats2:
        case Form::IntToFloat:
        case Form::Floats3:
        case Form::MemoryToFloat:
            return Fill::Float;
        default:
            return Fill::None;
    }
}

class FastCode {
public:
    FastCode(const std::vector<Instruction>& prepared, std::uint32_t size)
        : prepared_(prepared), size_(size), fast_(prepared), ops_(prepared.size()) {}

    std::vector<Instruction> Make() {
        for (std::size_t pc = 0; pc < prepared_.size(); ++pc) {
            fast_[pc].pos = static_cast<std::uint32_t>(prepared_[pc].aux);
            ops_[pc] = Translate(pc);
        }
        Fuse();
        const std::int32_t* handlers = FastHandlers();
        for (std::size_t pc = 0; pc < fast_.size(); ++pc) {
            fast_[pc].aux = handlers[static_cast<std::size_t>(ops_[pc])];
        }
        return std::move(fast_);
    }

private:
    FastOp Translate(std::size_t pc) {
        const Instruction& in = prepared_[pc];
        if (in.op == kUnknownOp) return FastOp::Unknown;
        if (in.op == kEndOp) return FastOp::End;
        switch (static_cast<Op>(in.op)) {
            case Op::Load:
                return Memory(in, FastOp::LoadAt, FastOp::LoadLocal, FastOp::LoadBy, FastOp::Load);
            case Op::Loadf:
                return Memory(in, FastOp::LoadfAt, FastOp::LoadfLocal, FastOp::LoadfBy,
                              FastOp::Loadf);
            case Op::Store:
                return Memory(in, FastOp::StoreAt, FastOp::StoreLocal, FastOp::StoreBy,
                              FastOp::Store);
            case Op::Storef:
                return Memory(in, FastOp::StorefAt, FastOp::StorefLocal, FastOp::StorefBy,
                              FastOp::Storef);
            case Op::Lea:
                return in.rb == kAbsolute ? FastOp::LeaAt : FastOp::Lea;
            case Op::Jmp:
                return Jump(pc, FastOp::Jmp, FastOp::JmpBad);
            case Op::Jz:
                return Jump(pc, FastOp::Jz, FastOp::JzBad);
            case Op::Jnz:
                return Jump(pc, FastOp::Jnz, FastOp::JnzBad);
            case Op::Call:
                if (!IsTarget(in.imm)) return FastOp::CallBad;
                return EntersAtOnce(in) ? FastOp::CallInto : FastOp::Call;
            case Op::Ret:
                return in.imm == 1 ? FastOp::RetInt : in.imm == 2 ? FastOp::RetFloat : FastOp::Ret;
            case Op::Svc:
                return Builtin(static_cast<std::uint32_t>(in.imm));
            default:
                return kRenamed[in.op];
        }
    }

    FastOp Memory(const Instruction& in, FastOp at, FastOp local, FastOp by, FastOp outside) const {
        if (in.rb == kFrameRegister) return local;
        if (in.rb != kAbsolute) return by;
        return static_cast<std::uint32_t>(in.imm) - kNullWords < size_ - kNullWords ? at : outside;
    }

    // A function begins there that takes its arguments from registers that there are.
    bool EntersAtOnce(const Instruction& call) const {
        const Instruction& enter = prepared_[static_cast<std::size_t>(call.imm)];
        return enter.op == static_cast<std::uint8_t>(Op::Enter) &&
               call.ra + enter.ra <= static_cast<int>(kIntRegisters) &&
               call.rb + enter.rb <= static_cast<int>(kFloatRegisters);
    }

    bool IsTarget(std::int32_t target) const {
        return static_cast<std::uint32_t>(target) < prepared_.size() - 1;
    }

    FastOp Jump(std::size_t pc, FastOp good, FastOp bad) {
        if (!IsTarget(prepared_[pc].imm)) return bad;
        fast_[pc].imm = prepared_[pc].imm - static_cast<std::int32_t>(pc);
        return good;
    }

    static FastOp Builtin(std::uint32_t number) {
        for (const Direct& direct : kDirect) {
            if (direct.builtin == number) return direct.fast;
        }
        return FastOp::Svc;
    }

    // From the first on: the others of a group stay as they are, and the search goes on behind.
    void Fuse() {
        for (std::size_t pc = 0; pc < ops_.size();) {
            const Group* group = GroupAt(pc);
            if (group != nullptr) ops_[pc] = group->all;
            pc += group != nullptr ? group->length : 1;
        }
    }

    const Group* GroupAt(std::size_t pc) const {
        for (const Group& group : kGroups) {
            if (pc + group.length <= ops_.size() &&
                std::equal(group.parts, group.parts + group.length,
                           ops_.begin() + static_cast<std::ptrdiff_t>(pc)) &&
                std::ranges::all_of(group.links, [&](const Link& link) {
                    return link.filler < 0 || Holds(link, &prepared_[pc]);
                })) {
                return &group;
            }
        }
        return nullptr;
    }

    // What is read is what was filled there, and nothing between has filled it again.
    static bool Holds(const Link& link, const Instruction* group) {
        const Instruction& filler = group[link.filler];
        for (int k = link.filler + 1; k < link.reader; ++k) {
            if (FillOf(group[k]) == FillOf(filler) && group[k].rd == filler.rd) return false;
        }
        return group[link.reader].*link.field == filler.rd;
    }

    const std::vector<Instruction>& prepared_;
    std::uint32_t size_;
    std::vector<Instruction> fast_;
    std::vector<FastOp> ops_;
};

}  // namespace

std::vector<Instruction> MakeFastCode(const std::vector<Instruction>& prepared,
                                      std::uint32_t size) {
    return FastCode(prepared, size).Make();
}

}  // namespace hum
