#include <bit>

#include "checker.h"
#include "checker_state.h"
#include "hum/builtins.h"
#include "hum/memory_map.h"
#include "score.h"

namespace hum {
namespace {

constexpr std::string_view kNotConstant = "an initial value here must be a constant expression";
constexpr std::uint32_t kScoreWords = 5;  // of an event
constexpr std::uint32_t kClipWords = 5;   // of a clip's head

}  // namespace

bool Checker::Globals() {
    // Clips follow the scores, and globals the clips.
    for (std::uint32_t i = 0; i < tree_.top.size(); ++i) {
        if (tree_.top[i].kind != TopKind::Clip) continue;
        constants_seen_ = i;
        if (!Clip(i)) return false;
    }
    std::uint32_t globals = 0;
    for (std::uint32_t i = 0; i < tree_.top.size(); ++i) {
        constants_seen_ = i;
        bool good = true;
        switch (tree_.top[i].kind) {
            case TopKind::Param:
                good = Param(i);
                break;
            case TopKind::Global:
                good = ++globals <= kMaxGlobals ? Global(i)
                                                : Fail(tree_.top[i].token, "too many globals");
                break;
            case TopKind::Function:
                good = Signature(i);
                break;
            case TopKind::Module:
                good = ModuleHead(i);
                break;
            default:
                break;
        }
        if (!good) return false;
    }
    constants_seen_ = static_cast<std::uint32_t>(tree_.top.size());
    return Bases();
}

bool Checker::Reserve(std::uint32_t words, std::uint32_t token, std::uint32_t& address) {
    if (words > kMaxMemory - next_address_) return Fail(token, "array is too large");
    address = next_address_;
    next_address_ += words;
    return true;
}

bool Checker::Score(std::uint32_t top) {
    const TopLevel& form = tree_.top[top];
    std::string text;
    for (std::uint32_t i = 0; i < form.count; ++i) {
        text += tokens_.strings[tokens_.list[form.first + i].value];
    }
    std::vector<ScoreEvent> events;
    ScoreFault fault;
    if (!ReadScore(text, events, fault)) {
        return Fail(form.first, "score: " + fault.message + " (at character " +
                                    std::to_string(fault.character) + ")");
    }
    const std::uint32_t count = static_cast<std::uint32_t>(events.size());
    std::uint32_t address = 0;
    if (!Reserve(count * kScoreWords, form.token, address)) return false;
    Symbol& symbol = checked_.symbols[top_symbol_[top]];
    symbol.type = checked_.types.ArrayOf(checked_.structs[0].type, count, true);
    symbol.value = address;
    for (const ScoreEvent& event : events) {
        for (const std::uint32_t word :
             {static_cast<std::uint32_t>(event.midi), std::bit_cast<std::uint32_t>(event.beats),
              std::bit_cast<std::uint32_t>(event.velocity),
              std::bit_cast<std::uint32_t>(event.start),
              std::bit_cast<std::uint32_t>(event.step)}) {
            if (word != 0) checked_.start_words.push_back({address, word});
            ++address;
        }
    }
    return true;
}

bool Checker::Clip(std::uint32_t top) {
    const TopLevel& form = tree_.top[top];
    const std::uint32_t frames = form.body != 0 ? tree_[form.body].b : 0;
    std::uint32_t address = 0;
    if (!Reserve(kClipWords + frames, form.token, address)) return false;
    Symbol& symbol = checked_.symbols[top_symbol_[top]];
    symbol.type = kClip;
    symbol.value = address;
    std::int32_t source = 0;
    if (form.body != 0) {
        source = frames == 0 ? 0 : static_cast<std::int32_t>(address + kClipWords);
    } else {
        source = HostClip(form.count == 0 ? tokens_.names.Text(NameAt(form.token))
                                          : tokens_.strings[tokens_.list[form.first].value]);
    }
    const auto put = [&](std::uint32_t offset, std::uint32_t word) {
        if (word != 0) checked_.start_words.push_back({address + offset, word});
    };
    put(0, frames);  // of host data the machine's host knows how many
    put(1, 1);
    put(2, form.wrap);
    put(3, form.filter);
    put(4, static_cast<std::uint32_t>(source));
    if (form.body == 0) return true;
    address += kClipWords;
    for (NodeId entry = tree_[form.body].a; entry != 0; entry = tree_[entry].next) {
        if (!StartValue(kFloat, entry, address++, checked_.start_words)) return false;
    }
    return true;
}

bool Checker::Param(std::uint32_t top) {
    const TopLevel& form = tree_.top[top];
    const std::uint32_t number = static_cast<std::uint32_t>(checked_.params.size());
    if (number == kMaxParams) {
        return Fail(form.token,
                    "too many params (the limit is " + std::to_string(kMaxParams) + ")");
    }
    Symbol& symbol = checked_.symbols[top_symbol_[top]];
    symbol.type = kFloat;
    symbol.value = kParamsAddress + number;
    std::vector<StartWord> words;
    if (!StartValue(kFloat, form.body, symbol.value, words)) return false;
    checked_.params.push_back(words.empty() ? StartWord{kParamsAddress + number, 0} : words[0]);
    checked_.param_tokens.push_back(form.token);
    return true;
}

bool Checker::Global(std::uint32_t top) {
    const TopLevel& form = tree_.top[top];
    const std::uint32_t symbol = top_symbol_[top];
    if (checked_.symbols[symbol].kind == SymbolKind::Constant) return true;
    const TypeId type = DeclaredType(form.first);
    if (type == kNoType) return false;
    std::uint32_t address = 0;
    if (!Reserve(checked_.types[type].words, form.token, address)) return false;
    checked_.symbols[symbol].type = type;
    checked_.symbols[symbol].value = address;
    if ((form.flags & kPersist) != 0) {
        checked_.persistent.emplace_back(address, checked_.types[type].words);
    }
    const NodeId value = tree_[form.first].b;
    if (value == 0) return true;
    return StartValue(type, value, address, checked_.start_words);
}

// Works out a constant initial value down to the words that are not zero.
bool Checker::StartValue(TypeId type, NodeId value, std::uint32_t address,
                         std::vector<StartWord>& words) {
    if (checked_.types.IsAggregate(type)) {
        return EachEntry(type, value, [&](TypeId part, NodeId entry, std::uint32_t offset) {
            return StartValue(part, entry, address + offset, words);
        });
    }
    if (checked_.types.IsPointer(type)) {
        return Fail(FirstToken(value), "this type cannot have an initial value");
    }
    if (tree_[value].kind == NodeKind::Braces) {
        return Fail(tree_[value].token, "expected expression");
    }
    if (!ConstantNumber(value, kNotConstant)) return false;
    const TypeId made = tree_[value].type == type ? type : ConvertConstant(value, type);
    const std::uint32_t word = tree_[value].a;
    if (word != 0) words.push_back({address, word});
    return made != kNoType;
}

bool Checker::Signature(std::uint32_t top) {
    const TopLevel& form = tree_.top[top];
    const auto refuse = [&] {
        return Fail(form.token, "'" + NameText(NameAt(form.token)) +
                                    "' takes a struct by value; pass a pointer instead");
    };
    TypeId result = BaseOf(tree_.types[form.type]);
    for (int stars = tree_.types[form.type].stars; stars > 0; --stars) {
        result = checked_.types.PointerTo(result);
    }
    if (checked_.types.IsStruct(result)) return refuse();
    std::vector<TypeId> parameters;
    for (NodeId parameter = form.first; parameter != 0; parameter = tree_[parameter].next) {
        TypeId type = DeclaredType(parameter);
        if (type == kNoType) return false;
        if (checked_.types.IsStruct(type)) return refuse();
        parameters.push_back(Decayed(type));
    }
    const std::uint32_t number = checked_.symbols[top_symbol_[top]].value;
    Function& function = checked_.functions[number];
    if (function.known) {
        if (function.result == result && function.parameters == parameters) return true;
        return Fail(form.token, "'" + NameText(NameAt(form.token)) + "' is already declared");
    }
    function.known = true;
    function.result = result;
    function.parameters = std::move(parameters);
    for (const TypeId type : function.parameters)
        ++(type == kFloat ? function.floats : function.ints);
    return true;
}

bool Checker::ModuleHead(std::uint32_t top) {
    const TopLevel& form = tree_.top[top];
    Module& module = checked_.modules[checked_.symbols[top_symbol_[top]].value];
    const std::uint32_t structure = struct_of_[NameAt(form.type)];
    if (structure == 0) {
        return Fail(form.type, "unknown struct '" + NameText(NameAt(form.type)) + "' for module");
    }
    module.output = checked_.structs[structure - 1].type;
    checked_.symbols[top_symbol_[top]].type = checked_.types.PointerTo(module.output);
    if (form.parent == 0) return true;
    const Symbol& parent = checked_.symbols[SymbolOf(NameAt(form.parent))];
    const bool is_base = parent.kind == SymbolKind::Base;
    module.parent = is_base ? parent.value : kNoModule;
    module.parent_token = form.parent;
    module.output_token = form.type;
    return is_base || NotABase(module);
}

bool Checker::NotABase(const Module& module) {
    return Fail(module.parent_token,
                "parent '" + NameText(NameAt(module.parent_token)) + "' is not an abstract module");
}

// When all modules are known, each can be held against its base.
bool Checker::Bases() {
    for (const Module& module : checked_.modules) {
        if (module.parent == kNoModule) continue;
        if (checked_.modules[module.parent].output != module.output) {
            return Fail(module.output_token, "child output type must match the abstract parent");
        }
        std::size_t steps = 0;
        for (std::uint32_t at = module.parent; at != kNoModule; at = checked_.modules[at].parent) {
            if (++steps > checked_.modules.size()) return NotABase(module);
        }
    }
    return true;
}

}  // namespace hum
