#include "fast_code.h"

#include <algorithm>
#include <cstddef>

#include "hum/builtins.h"

namespace hum {
namespace {

struct Renamed {
    Op op;
    FastOp fast;
};

// Two instructions, or four, that one opcode does; unused places hold FastOp::Count.
struct Fused {
    FastOp parts[4];
    FastOp all;
    std::size_t length;
    std::uint8_t Instruction::*link;  // of the second, to the first's rd; op links nothing
};

struct Direct {
    std::uint32_t builtin;
    FastOp fast;
};

// Instructions that are called the same in both.
constexpr Renamed kRenamed[] = {
#define HUM_SAME(name, mnemonic, form) {Op::name, FastOp::name},
    HUM_OPCODES(HUM_SAME)
#undef HUM_SAME
};

// The longest first, since the first that fits is taken.
constexpr Fused kFused[] = {
#define HUM_FOUR(a, b, c, d)                       \
    {{FastOp::a, FastOp::b, FastOp::c, FastOp::d}, \
     FastOp::a##_##b##_##c##_##d,                  \
     4,                                            \
     &Instruction::op},
#define HUM_TWO(a, b, link) \
    {{FastOp::a, FastOp::b, FastOp::Count, FastOp::Count}, FastOp::a##_##b, 2, &Instruction::link},
    HUM_FAST_COUNTERS(HUM_FOUR) HUM_FAST_HEADS(HUM_FOUR) HUM_FAST_PAIRS(HUM_TWO)
        HUM_FAST_BRANCHES(HUM_TWO) HUM_FAST_CHECKED(HUM_TWO)
#undef HUM_FOUR
#undef HUM_TWO
};

constexpr Direct kDirect[] = {
#define HUM_BUILTIN(name, function) {BuiltinNumber(#name), FastOp::Call_##name},
    HUM_FAST_BUILTINS(HUM_BUILTIN)
#undef HUM_BUILTIN
};

constexpr std::size_t kFastOps = static_cast<std::size_t>(FastOp::Count);
static_assert(kFastOps < 256);

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
            fast_[pc].op = static_cast<std::uint8_t>(ops_[pc]);
            fast_[pc].aux = handlers[fast_[pc].op];
        }
        return std::move(fast_);
    }

private:
    FastOp Translate(std::size_t pc) {
        const Instruction& in = prepared_[pc];
        if (in.op == kUnknownOp) return FastOp::Unknown;
        if (in.op == kEndOp) return FastOp::End;
        const bool is_proven = in.rb == kAbsolute &&
                               static_cast<std::uint32_t>(in.imm) - kNullWords < size_ - kNullWords;
        switch (static_cast<Op>(in.op)) {
            case Op::Load:
                return is_proven ? FastOp::LoadAt : FastOp::Load;
            case Op::Loadf:
                return is_proven ? FastOp::LoadfAt : FastOp::Loadf;
            case Op::Store:
                return is_proven ? FastOp::StoreAt : FastOp::Store;
            case Op::Storef:
                return is_proven ? FastOp::StorefAt : FastOp::Storef;
            case Op::Lea:
                return in.rb == kAbsolute ? FastOp::LeaAt : FastOp::Lea;
            case Op::Jmp:
                return Jump(pc, FastOp::Jmp, FastOp::JmpBad);
            case Op::Jz:
                return Jump(pc, FastOp::Jz, FastOp::JzBad);
            case Op::Jnz:
                return Jump(pc, FastOp::Jnz, FastOp::JnzBad);
            case Op::Call:
                return IsTarget(in.imm) ? FastOp::Call : FastOp::CallBad;
            case Op::Svc:
                return Builtin(static_cast<std::uint32_t>(in.imm));
            default:
                return kRenamed[in.op].fast;
        }
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
            const Fused* fused = GroupAt(pc);
            if (fused != nullptr) ops_[pc] = fused->all;
            pc += fused != nullptr ? fused->length : 1;
        }
    }

    const Fused* GroupAt(std::size_t pc) const {
        for (const Fused& fused : kFused) {
            if (pc + fused.length <= ops_.size() &&
                std::equal(fused.parts, fused.parts + fused.length,
                           ops_.begin() + static_cast<std::ptrdiff_t>(pc)) &&
                AreLinked(fused, &prepared_[pc])) {
                return &fused;
            }
        }
        return nullptr;
    }

    static bool AreLinked(const Fused& fused, const Instruction* in) {
        if (fused.length == 4) {
            return in[2].ra == in[0].rd && in[2].rb == in[1].rd && in[3].ra == in[2].rd;
        }
        return fused.link == &Instruction::op || in[1].*fused.link == in[0].rd;
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
