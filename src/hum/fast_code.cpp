#include "fast_code.h"

#include <cstddef>
#include <optional>

#include "hum/builtins.h"

namespace hum {
namespace {

struct Renamed {
    Op op;
    FastOp fast;
};

struct Fused {
    FastOp first, second, both;
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

constexpr Fused kFused[] = {
#define HUM_TWO(first, second) {FastOp::first, FastOp::second, FastOp::first##_##second},
    HUM_FAST_PAIRS(HUM_TWO) HUM_FAST_BRANCHES(HUM_TWO)
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

    // From the first on: a pair leaves its second instruction to stand as it is, and the search
    // goes on behind it.
    void Fuse() {
        for (std::size_t pc = 0; pc + 1 < ops_.size(); ++pc) {
            if (const std::optional<FastOp> both = Both(ops_[pc], ops_[pc + 1])) {
                ops_[pc++] = *both;
            }
        }
    }

    static std::optional<FastOp> Both(FastOp first, FastOp second) {
        for (const Fused& fused : kFused) {
            if (fused.first == first && fused.second == second) return fused.both;
        }
        return std::nullopt;
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
