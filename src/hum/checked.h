#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "hum/program.h"
#include "tree.h"
#include "types.h"

namespace hum {

enum class SymbolKind : std::uint8_t {
    None,
    Base,      // an abstract module, which is no value; value: as of Module
    Constant,  // value: the bits
    Host,      // value: the address, as of all down to Clip
    Param,
    Global,
    Score,
    Clip,
    Module,    // value: the place in Checked::modules
    Function,  // value: the place in Checked::functions
    Builtin,   // value: the built-in's number
    Local,     // value: the offset in its frame
};

struct Symbol {
    SymbolKind kind = SymbolKind::None;
    bool read_only = false;
    TypeId type = kNoType;
    std::uint32_t value = 0;
    std::uint32_t scope = 0;  // that it was declared in; 0 is the top level
    std::uint32_t token = 0;  // its name, where it is the program's own
};

// What a Binary, Assign or comparison computes with.
enum class Operands : std::uint16_t { Int, Float, PointerAndInt, IntAndPointer, Pointers };

enum class Callee : std::uint16_t { Function, Builtin };

// Code with a frame: a function, a module, master or main.
struct Body {
    std::uint32_t token = 0;  // the name's
    NodeId block = 0;         // none: declared only
    std::uint32_t frame_words = 0;
    std::vector<StartWord> start_words;  // within the frame; of modules, master and main
};

struct Function {
    Body body;
    TypeId result = kVoid;
    NodeId first_parameter = 0;
    std::vector<TypeId> parameters;
    std::uint8_t ints = 0;  // parameters that are not floats
    std::uint8_t floats = 0;
    bool known = false;        // its head has been checked
    std::uint16_t writes = 0;  // bit n: something is written through parameter n
};

inline constexpr std::uint32_t kNoModule = 0xffffffff;

struct Module {
    Body body;
    TypeId output = kNoType;
    std::uint32_t parent = kNoModule;  // an abstract module whose body is run first
    bool abstract = false;
    bool checked = false;
    std::uint32_t parent_token = 0;
    std::uint32_t output_token = 0;  // the output type's
    std::uint32_t output_address = 0;
    std::uint32_t frame_address = 0;
};

struct StructType {
    enum class State : std::uint8_t { Named, UnderWay, Done };
    struct Field {
        std::uint32_t name = 0;
        TypeId type = kNoType;
        std::uint32_t offset = 0;
    };
    std::uint32_t name = 0;
    TypeId type = kNoType;
    std::vector<Field> fields;
    std::uint32_t top = 0;  // its place in Tree::top, where it is the program's own
    State state = State::Named;
};

// A program that is known to be right: the tree's expressions have types and its names symbols.
struct Checked {
    Types types;
    std::vector<Symbol> symbols;
    std::vector<StructType> structs;
    std::vector<Function> functions;
    std::vector<Module> modules;
    Body main;
    Body master;
    std::vector<StartWord> params;  // the names are those of the tokens below
    std::vector<std::uint32_t> param_tokens;
    std::vector<StartWord> start_words;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> persistent;  // addresses and words
    std::uint32_t data_end = 0;  // the first address behind scores, clips and globals
};

}  // namespace hum
