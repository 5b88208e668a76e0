#include <bit>
#include <numbers>

#include "checker.h"
#include "checker_state.h"
#include "hum/builtins.h"
#include "hum/memory_map.h"

namespace hum {
namespace {

struct ConstantRow {
    std::string_view name;
    TypeId type;
    float value;
};

constexpr ConstantRow kConstants[] = {
    {"PI", kFloat, std::numbers::pi_v<float>},
    {"TAU", kFloat, 2 * std::numbers::pi_v<float>},
    {"WHOLE", kFloat, 4},
    {"HALF", kFloat, 2},
    {"QUARTER", kFloat, 1},
    {"EIGHTH", kFloat, 0.5f},
    {"SIXTEENTH", kFloat, 0.25f},
    {"THIRTY_SECOND", kFloat, 0.125f},
    {"SIXTY_FOURTH", kFloat, 0.0625f},
    {"REST", kInt, -1},
    {"INST_PIANO", kInt, 0},
    {"KIT_KICK", kInt, 0},
    {"KIT_SNARE", kInt, 1},
    {"KIT_HAT", kInt, 2},
    {"KIT_OHAT", kInt, 3},
    {"KIT_TOM", kInt, 4},
    {"KIT_CLAP", kInt, 5},
    {"KIT_RIM", kInt, 6},
    {"KIT_RIDE", kInt, 7},
    {"MIDI_NOTE_OFF", kInt, 128},
    {"MIDI_NOTE_ON", kInt, 144},
    {"MIDI_CC", kInt, 176},
    {"MIDI_PRESSURE", kInt, 208},
    {"MIDI_BEND", kInt, 224},
};

struct FieldRow {
    Known structure;
    std::string_view name;
    char type;  // i, f, or m for an array of 32 MidiMsg
};

// In the order of the structures' names.
constexpr FieldRow kFields[] = {
    {Known::Note, "midi", 'i'},       {Known::Note, "beats", 'f'},
    {Known::Note, "vel", 'f'},        {Known::Note, "start", 'f'},
    {Known::Note, "step", 'f'},       {Known::MidiMsg, "kind", 'i'},
    {Known::MidiMsg, "channel", 'i'}, {Known::MidiMsg, "key", 'i'},
    {Known::MidiMsg, "value", 'i'},   {Known::Midi, "count", 'i'},
    {Known::Midi, "msg", 'm'},        {Known::Input, "channel1", 'f'},
    {Known::Input, "channel2", 'f'},  {Known::Sound, "channel1", 'f'},
    {Known::Sound, "channel2", 'f'},
};

constexpr std::uint32_t kMidiMessages = 32;

}  // namespace

// The names have been put among the program's before it was read: names that it does not hold
// need no symbol.
void Checker::DeclareBuiltinStructs() {
    constexpr auto kFirst = static_cast<std::uint32_t>(Known::Note);
    constexpr auto kLast = static_cast<std::uint32_t>(Known::Sound);
    Types& types = checked_.types;
    for (std::uint32_t name = kFirst; name <= kLast; ++name) {
        StructType structure;
        structure.name = name;
        structure.state = StructType::State::Done;
        structure.type = types.AddStruct(name - kFirst);
        checked_.structs.push_back(structure);
        struct_of_[name] = name - kFirst + 1;
    }
    for (const FieldRow& row : kFields) {
        const std::uint32_t number = static_cast<std::uint32_t>(row.structure) - kFirst;
        StructType& structure = checked_.structs[number];
        const TypeId message = checked_.structs[1].type;
        const TypeId type = row.type == 'i'   ? kInt
                            : row.type == 'f' ? kFloat
                                              : types.ArrayOf(message, kMidiMessages, false);
        const std::uint32_t offset = types[structure.type].words;
        structure.fields.push_back({tokens_.names.Find(row.name), type, offset});
        types.SetWords(structure.type, offset + types[type].words);
    }
}

void Checker::DeclareBuiltins() {
    const auto declare = [this](std::string_view name, SymbolKind kind, TypeId type,
                                std::uint32_t value) {
        const std::uint32_t number = tokens_.names.Find(name);
        if (number == Names::kUnknown) return;
        const std::uint32_t symbol = AddSymbol(kind, type, value, 0);
        checked_.symbols[symbol].read_only = true;
        binding_[number] = symbol;
    };
    for (const ConstantRow& row : kConstants) {
        const std::uint32_t bits =
            row.type == kInt ? static_cast<std::uint32_t>(static_cast<std::int32_t>(row.value))
                             : std::bit_cast<std::uint32_t>(row.value);
        declare(row.name, SymbolKind::Constant, row.type, bits);
    }
    for (const HostVariable& row : kHostVariables) {
        TypeId type = row.type == 'f' ? kFloat : kInt;
        if (row.type == 's' || row.type == 'n' || row.type == 'm') {
            const Known known = row.type == 's'   ? Known::Sound
                                : row.type == 'n' ? Known::Input
                                                  : Known::Midi;
            const std::uint32_t number = struct_of_[static_cast<std::uint32_t>(known)] - 1;
            type = checked_.types.PointerTo(checked_.structs[number].type);
        }
        declare(row.name, SymbolKind::Host, type, row.address);
    }
    std::uint32_t number = 0;
    for (const Builtin& row : kBuiltins) {
        if (!row.hidden) declare(row.name, SymbolKind::Builtin, kNoType, number);
        ++number;
    }
}

bool Checker::DeclareTopLevel() {
    for (std::uint32_t i = 0; i < tree_.top.size(); ++i) {
        if (!DeclareOne(i)) return false;
    }
    return true;
}

bool Checker::DeclareOne(std::uint32_t top) {
    const TopLevel& form = tree_.top[top];
    SymbolKind kind = SymbolKind::Global;
    switch (form.kind) {
        case TopKind::Struct:
            return DeclareStruct(top);
        case TopKind::Function:
            return DeclareFunction(top);
        case TopKind::Module:
            return DeclareModule(top);
        case TopKind::Main:
        case TopKind::Master:
            return DeclareBody(top);
        case TopKind::Score:
            kind = SymbolKind::Score;
            break;
        case TopKind::Clip:
            kind = SymbolKind::Clip;
            break;
        case TopKind::Param:
            kind = SymbolKind::Param;
            break;
        case TopKind::Global:
            break;
    }
    const std::uint32_t symbol = AddSymbol(kind, kNoType, 0, form.token);
    checked_.symbols[symbol].read_only = kind != SymbolKind::Global || (form.flags & kConst) != 0;
    top_symbol_[top] = symbol;
    return Declare(NameAt(form.token), symbol);
}

bool Checker::DeclareStruct(std::uint32_t top) {
    const std::uint32_t token = tree_.top[top].token;
    const std::uint32_t name = NameAt(token);
    if (IsKnown(name, Known::Note)) return Fail(token, "Note is a builtin struct");
    if (struct_of_[name] != 0) return Fail(token, "'" + NameText(name) + "' is already declared");
    constexpr std::uint32_t kBuiltinStructs = 5;
    if (checked_.structs.size() == kBuiltinStructs + kMaxStructs) {
        return Fail(token, "too many structs");
    }
    StructType structure;
    structure.name = name;
    structure.top = top;
    structure.type = checked_.types.AddStruct(static_cast<std::uint32_t>(checked_.structs.size()));
    checked_.structs.push_back(structure);
    struct_of_[name] = static_cast<std::uint32_t>(checked_.structs.size());
    return true;
}

bool Checker::DeclareFunction(std::uint32_t top) {
    const TopLevel& form = tree_.top[top];
    const std::uint32_t name = NameAt(form.token);
    const std::uint32_t known = binding_[name];
    if (known != kNoSymbol && checked_.symbols[known].kind == SymbolKind::Function) {
        const Function& function = checked_.functions[checked_.symbols[known].value];
        if (form.body != 0 && function.body.block != 0) {
            return Fail(form.token, "'" + NameText(name) + "' is already declared");
        }
        top_symbol_[top] = known;
    } else {
        if (checked_.functions.size() == kMaxFunctions) {
            return Fail(form.token, "too many functions");
        }
        const std::uint32_t number = static_cast<std::uint32_t>(checked_.functions.size());
        const std::uint32_t symbol = AddSymbol(SymbolKind::Function, kNoType, number, form.token);
        if (!Declare(name, symbol)) return false;
        checked_.functions.emplace_back();
        top_symbol_[top] = symbol;
    }
    if (form.body == 0) return true;
    Function& function = checked_.functions[checked_.symbols[top_symbol_[top]].value];
    function.body.token = form.token;
    function.body.block = form.body;
    function.first_parameter = form.first;
    return true;
}

bool Checker::DeclareModule(std::uint32_t top) {
    const TopLevel& form = tree_.top[top];
    if (checked_.modules.size() == kMaxModules) return Fail(form.token, "too many modules");
    const std::uint32_t number = static_cast<std::uint32_t>(checked_.modules.size());
    Module& module = checked_.modules.emplace_back();
    module.body.token = form.token;
    module.body.block = form.body;
    module.abstract = form.flags != 0;
    const SymbolKind kind = module.abstract ? SymbolKind::Base : SymbolKind::Module;
    const std::uint32_t symbol = AddSymbol(kind, kNoType, number, form.token);
    top_symbol_[top] = symbol;
    return Declare(NameAt(form.token), symbol);
}

bool Checker::DeclareBody(std::uint32_t top) {
    const TopLevel& form = tree_.top[top];
    const bool is_master = form.kind == TopKind::Master;
    Body& body = is_master ? checked_.master : checked_.main;
    if (body.block != 0) {
        return Fail(form.token,
                    is_master ? "'master' is already declared" : "'main' is already declared");
    }
    body.token = form.token;
    body.block = form.body;
    return true;
}

}  // namespace hum
