#include "program_writer.h"

#include "hum/builtins.h"

namespace fuzz {
namespace {

constexpr int kDeepest = 4;
constexpr int kMostStatements = 40;

constexpr std::string_view kInts[] = {
    "0",    "1",          "2",          "3",           "-1",   "7",         "64",
    "1000", "0xffffffff", "2147483647", "-2147483648", "true", "KIT_SNARE", "REST"};
constexpr std::string_view kFloats[] = {"0.0", "1.0",  "0.5",    "-0.25",  "440.0", "1e-3",
                                        "2f",  "1e30", "-1e-30", "EIGHTH", "PI",    "TAU"};
constexpr std::string_view kIntOperators[] = {"+",  "-",  "*",  "/",   "%",  "&",  "|",
                                              "^",  "<<", ">>", ">>>", "==", "!=", "<",
                                              "<=", ">",  ">=", "&&",  "||"};
constexpr std::string_view kFloatOperators[] = {"+", "-", "*", "/", "%"};
constexpr std::string_view kComparisons[] = {"==", "!=", "<", "<=", ">", ">="};
constexpr std::string_view kIntUpdates[] = {
    "=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<=", ">>=", ">>>="};
constexpr std::string_view kFloatUpdates[] = {"=", "=", "+=", "-=", "*=", "/=", "%="};
constexpr std::string_view kHostInts[] = {"sample", "ksmps", "bar", "playing", "timesig_n", "nch"};
constexpr std::string_view kHostFloats[] = {
    "sr", "time", "bpm", "beat", "bar_beat", "input->channel1", "midi->msg[1].value"};
constexpr std::string_view kWaits[] = {"wait", "wait_bar", "wait_beats", "wait_note"};
constexpr std::string_view kSustains[] = {"sustain",    "sustain_bar",  "sustain_beats",
                                          "sustain_ms", "sustain_note", "sustain_sec"};
constexpr std::string_view kScoreTokens[] = {"C",  "D#8", "R4", "E.",  "V90",      "O5",
                                             "L8", "N60", "^8", "G&G", "[C E G]2", "A4.."};
constexpr std::string_view kScraps[] = {"{",
                                        "}",
                                        "(",
                                        ")",
                                        "[",
                                        "]",
                                        ";",
                                        ",",
                                        "*",
                                        "&",
                                        "&&",
                                        "=",
                                        "->",
                                        ".",
                                        "?",
                                        ":",
                                        "#",
                                        "\"",
                                        "0",
                                        "1.5",
                                        "int",
                                        "float",
                                        "struct",
                                        "module",
                                        "master",
                                        "this",
                                        "while",
                                        "for",
                                        "sustain",
                                        "yield",
                                        "wait",
                                        "return",
                                        "static",
                                        "const",
                                        "score",
                                        "clip",
                                        "param",
                                        "sizeof",
                                        "abstract",
                                        "0x",
                                        "1e",
                                        "/*",
                                        "//",
                                        "\n#define A B",
                                        "\n#ifdef A",
                                        "\n#endif",
                                        "\n#include \"x\"",
                                        "-",
                                        "wrap",
                                        "S0",
                                        "g1",
                                        "sin",
                                        "sound",
                                        "len",
                                        "Note",
                                        "99999999999",
                                        "\x80",
                                        "main",
                                        "break"};

}  // namespace

std::string ProgramWriter::Program() {
    if (random_.OneIn(4)) Line("#define TWICE 2 *\n#ifndef NONE\n#define HALF_OF(x)\n#endif");
    Structs();
    Data();
    Globals();
    Functions();
    Modules();
    if (random_.OneIn(4)) {
        Line("main {");
        Block(2);
        Line("}");
    }
    Master();
    return std::move(text_);
}

std::string ProgramWriter::Fresh(std::string_view stem) {
    return std::string(stem) + std::to_string(names_++);
}

void ProgramWriter::Structs() {
    const std::uint32_t count = 1 + random_.Below(2);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::string name = "S" + std::to_string(i);
        std::string fields = "float l, r; int n; float state[8]; ";
        if (i > 0) fields += structs_.back() + " inner; " + name + " *next; ";
        Line("struct " + name + " { " + fields + "};");
        structs_.push_back(name);
    }
}

std::string ProgramWriter::Score(int depth) {
    std::string text;
    const std::uint32_t tokens = 1 + random_.Below(6);
    for (std::uint32_t i = 0; i < tokens; ++i) {
        text += i == 0 ? "" : " ";
        if (depth > 0 && random_.OneIn(8)) {
            text += "(" + Score(depth - 1) + ")" + std::to_string(1 + random_.Below(4));
        } else {
            text += random_.Pick(kScoreTokens);
        }
    }
    return text;
}

void ProgramWriter::Data() {
    for (std::uint32_t i = random_.Below(3); i > 0; --i) {
        scores_.push_back(Fresh("tune"));
        Line("score " + scores_.back() + " \"" + Score(2) + "\";");
    }
    if (random_.OneIn(2)) {
        clips_.push_back(Fresh("clip_"));
        Line("clip " + clips_.back() + " = {0, 0.5, 1, PI} loop cubic;");
    }
    for (std::uint32_t i = random_.Below(3); i > 0; --i) {
        variables_.push_back({Fresh("param_"), Kind::Float, 0, false});
        Line("param float " + variables_.back().name + " = " + Constant(Kind::Float) + ";");
    }
}

void ProgramWriter::Globals() {
    for (std::uint32_t i = 2 + random_.Below(5); i > 0; --i) {
        Variable variable{Fresh("g"), random_.OneIn(2) ? Kind::Int : Kind::Float};
        std::string text = random_.OneIn(6) ? "persist " : random_.OneIn(6) ? "shared " : "";
        text += variable.kind == Kind::Int ? "int " : "float ";
        text += variable.name;
        variable.dimensions = static_cast<int>(random_.OneIn(2) ? random_.Below(4) : 0);
        for (int k = 0; k < variable.dimensions; ++k) text += "[" + std::to_string(2 + k) + "]";
        if (variable.dimensions > 0 && random_.OneIn(2)) text += " wrap";
        if (variable.dimensions == 1 && random_.OneIn(2)) {
            text += " = {" + Constant(variable.kind) + ", " + Constant(variable.kind) + "}";
        } else if (variable.dimensions == 0 && random_.OneIn(2)) {
            text += " = " + Constant(variable.kind);
        }
        Line(text + ";");
        variables_.push_back(variable);
    }
}

void ProgramWriter::Functions() {
    for (std::uint32_t i = random_.Below(4); i > 0; --i) {
        Function function{Fresh("f"), {}, random_.OneIn(2) ? 'i' : 'f'};
        const std::size_t outer = variables_.size();
        std::string text = function.result == 'i' ? "int " : "float ";
        text += function.name + "(";
        for (std::uint32_t k = random_.Below(4); k > 0; --k) {
            constexpr std::string_view kTypes[] = {"int ", "float ", "float *"};
            const std::uint32_t type = random_.Below(3);
            function.parameters += "ifp"[type];
            variables_.push_back({Fresh("a"), type == 0   ? Kind::Int
                                              : type == 1 ? Kind::Float
                                                          : Kind::FloatPointer});
            text += function.parameters.size() > 1 ? ", " : "";
            text += std::string(kTypes[type]) + variables_.back().name;
        }
        Line(text + ") {");
        may_pause_ = random_.OneIn(6);
        Block(2);
        Line("return " + Expression(function.result == 'i' ? Kind::Int : Kind::Float, 2) + ";\n}");
        variables_.resize(outer);
        functions_.push_back(function);
    }
}

void ProgramWriter::Modules() {
    const std::string& output = structs_[0];
    const bool has_base = random_.OneIn(4);
    if (has_base) Line("abstract module " + output + " *base { int shared_n = 3; shared_n++; }");
    for (std::uint32_t i = random_.Below(4); i > 0; --i) {
        const std::string name = Fresh("m");
        const bool continues = has_base && random_.OneIn(2);
        Line("module " + output + " *" + name + (continues ? " : base {" : " {"));
        const std::size_t outer = variables_.size();
        in_module_ = may_pause_ = true;
        if (continues) variables_.push_back({"shared_n", Kind::Int});
        Block(1);
        Line("while (1) {");
        ++loops_;
        Block(2);
        --loops_;
        Line("yield(" + std::string(random_.OneIn(3) ? "2" : "0") + ");\n}\n}");
        in_module_ = may_pause_ = false;
        variables_.resize(outer);
        modules_.push_back(name);
    }
}

void ProgramWriter::Master() {
    Line("master {");
    may_pause_ = false;
    Block(1);
    Line("sound->channel1 = " + Expression(Kind::Float, 3) + ";");
    Line("sound->channel2 = " + Expression(Kind::Int, 3) + ";");
    if (random_.OneIn(4)) Line("bpm = " + Expression(Kind::Float, 2) + ";");
    Line("}");
}

void ProgramWriter::Block(int depth) {
    const std::size_t outer = variables_.size();
    for (std::uint32_t i = 1 + random_.Below(4); i > 0; --i) Statement(depth);
    variables_.resize(outer);
}

void ProgramWriter::Statement(int depth) {
    if (++statements_ > kMostStatements || depth > kDeepest) return Line(";");
    switch (random_.Below(9)) {
        case 0:
        case 1:
            return Local();
        case 2:
            Line("if (" + Expression(Kind::Int, depth) + ") {");
            Block(depth + 1);
            Line(random_.OneIn(2) ? "} else {"
                                  : "} if (!" + Expression(Kind::Float, depth) + ") {");
            Block(depth + 1);
            return Line("}");
        case 3:
            return Loop(depth);
        case 4:
            if (may_pause_) return Pause(depth);
            [[fallthrough]];
        default:
            return Assignment();
    }
}

void ProgramWriter::Loop(int depth) {
    const std::string index = Fresh("i");
    const std::string count = std::to_string(1 + random_.Below(5));
    Line("for (int " + index + " = 0; " + index + " < " + count + "; " + index + "++) {");
    variables_.push_back({index, Kind::Int, 0, false});
    ++loops_;
    Block(depth + 1);
    if (random_.OneIn(4)) Line(random_.OneIn(2) ? "break;" : "continue;");
    --loops_;
    variables_.pop_back();
    Line("}");
}

void ProgramWriter::Pause(int depth) {
    if (random_.OneIn(2)) {
        return Line(std::string(random_.Pick(kWaits)) + "(" + Expression(Kind::Float, depth) +
                    ");");
    }
    Line(std::string(random_.Pick(kSustains)) + "(" + Expression(Kind::Float, depth) + ") {");
    Block(depth + 1);
    Line(random_.OneIn(3) ? "break; }" : "}");
}

void ProgramWriter::Local() {
    const std::uint32_t choice = random_.Below(6);
    Variable variable{Fresh("v"), Kind::Int};
    std::string text = random_.OneIn(5) ? "static " : "";
    const bool is_static = !text.empty();
    if (choice == 0) {
        variable.kind = Kind::FloatPointer;
        text = "float *" + variable.name + " = " + Pointer(2);
    } else if (choice == 1) {
        variable.kind = Kind::Float;
        variable.dimensions = 1;
        text += "float " + variable.name + "[8]" + (random_.OneIn(2) ? " wrap" : "");
    } else {
        variable.kind = random_.OneIn(2) ? Kind::Int : Kind::Float;
        text += (variable.kind == Kind::Int ? "int " : "float ") + variable.name;
        if (random_.OneIn(2)) {
            text += " = " + (is_static ? Constant(variable.kind) : Expression(variable.kind, 2));
        }
    }
    Line(text + ";");
    variables_.push_back(variable);
}

void ProgramWriter::Assignment() {
    if (in_module_ && random_.OneIn(3)) {
        return Line("this->" + std::string(random_.OneIn(2) ? "l" : "state[sample & 7]") + " = " +
                    Expression(Kind::Float, 2) + ";");
    }
    const Kind kind = random_.OneIn(2) ? Kind::Int : Kind::Float;
    const std::string place = Place(kind, 2);
    if (place.empty()) return Line(Expression(kind, 2) + ";");
    if (random_.OneIn(6)) return Line(random_.OneIn(2) ? place + "++;" : "--" + place + ";");
    const std::string_view update =
        kind == Kind::Int ? random_.Pick(kIntUpdates) : random_.Pick(kFloatUpdates);
    Line(place + " " + std::string(update) + " " + Expression(kind, 1) + ";");
}

// A variable of the kind that can be written; empty where there is none.
std::string ProgramWriter::Place(Kind kind, int depth) {
    std::vector<const Variable*> fitting;
    for (const Variable& variable : variables_) {
        if (variable.kind == kind && variable.writable) fitting.push_back(&variable);
    }
    if (fitting.empty()) return {};
    const Variable variable = *fitting[random_.Below(fitting.size())];
    std::string text = variable.name;
    for (int i = 0; i < variable.dimensions; ++i) {
        const bool known = random_.OneIn(3);
        text += "[" +
                (known ? std::to_string(random_.Below(2)) : Expression(Kind::Int, depth + 2)) +
                (known || random_.OneIn(12) ? "]" : " & 1]");
    }
    return text;
}

std::string ProgramWriter::Constant(Kind kind) {
    return std::string(kind == Kind::Int ? random_.Pick(kInts) : random_.Pick(kFloats));
}

std::string ProgramWriter::Expression(Kind kind, int depth) {
    // Ints and floats convert, but not everywhere.
    if (random_.OneIn(80)) kind = kind == Kind::Int ? Kind::Float : Kind::Int;
    return kind == Kind::Int ? IntExpression(depth) : FloatExpression(depth);
}

std::string ProgramWriter::IntExpression(int depth) {
    if (depth > kDeepest) return Constant(Kind::Int);
    const auto inner = [&] { return IntExpression(depth + 1); };
    switch (random_.Below(12)) {
        case 0:
        case 1:
        case 2:
            return "(" + inner() + " " + std::string(random_.Pick(kIntOperators)) + " " + inner() +
                   ")";
        case 3:
            return "(" + FloatExpression(depth + 1) + " " +
                   std::string(random_.Pick(kComparisons)) + " " + FloatExpression(depth + 1) + ")";
        case 4:
            return std::string(random_.OneIn(2) ? "~" : "- ") + inner();
        case 5:
            return "(" + inner() + " ? " + inner() + " : " + inner() + ")";
        case 6:
            return "(int)" + FloatExpression(depth + 1);
        case 7:
            return std::string(random_.Pick(kHostInts));
        case 8:
            return Call('i', depth);
        case 9:
            if (scores_.empty()) return "sizeof(" + structs_[0] + ")";
            return scores_[0] + "[" + inner() + "].midi";
        default: {
            const std::string place = Place(Kind::Int, depth);
            return place.empty() ? Constant(Kind::Int) : place;
        }
    }
}

std::string ProgramWriter::FloatExpression(int depth) {
    if (depth > kDeepest) return Constant(Kind::Float);
    const auto inner = [&] { return FloatExpression(depth + 1); };
    switch (random_.Below(12)) {
        case 0:
        case 1:
        case 2:
            return "(" + inner() + " " + std::string(random_.Pick(kFloatOperators)) + " " +
                   inner() + ")";
        case 3:
            return "-(" + inner() + ")";
        case 4:
            return "(" + IntExpression(depth + 1) + " ? " + inner() + " : " + inner() + ")";
        case 5:
            return std::string(random_.Pick(kHostFloats));
        case 6:
        case 7:
            return Builtin('f', depth);
        case 8:
            return Call('f', depth);
        case 9:
            if (modules_.empty()) return "(float)" + IntExpression(depth + 1);
            return modules_[random_.Below(modules_.size())] +
                   (random_.OneIn(2) ? ".l" : "->state[1]");
        case 10:
            return Pointer(depth) + "[" + std::to_string(random_.Below(3)) + "]";
        default: {
            const std::string place = Place(Kind::Float, depth);
            return place.empty() ? Constant(Kind::Float) : place;
        }
    }
}

std::string ProgramWriter::Pointer(int depth) {
    if (in_module_ && random_.OneIn(3)) return random_.OneIn(2) ? "this->state" : "(&this->l)";
    for (const Variable& variable : variables_) {
        if (variable.kind == Kind::FloatPointer && random_.OneIn(2)) {
            return random_.OneIn(4) ? "(" + variable.name + " + " + IntExpression(depth + 2) + ")"
                                    : variable.name;
        }
    }
    const std::string place = Place(Kind::Float, depth + 1);
    return place.empty() || random_.OneIn(20) ? "((float *)0)" : "(&" + place + ")";
}

std::string ProgramWriter::Builtin(char result, int depth) {
    const hum::Builtin& builtin = hum::kBuiltins[random_.Below(hum::kBuiltinCount)];
    if (builtin.hidden || builtin.result != result || builtin.name == "len") {
        return "sine(" + FloatExpression(depth + 1) + ", " + Pointer(depth) + ")";
    }
    std::string text = std::string(builtin.name) + "(";
    for (std::size_t i = 0; i < builtin.arguments.size(); ++i) {
        text += i == 0 ? "" : ", ";
        switch (builtin.arguments[i]) {
            case 'f':
                text += FloatExpression(depth + 1);
                break;
            case 'i':
                text += IntExpression(depth + 1);
                break;
            case 'c':
                text += clips_.empty() ? IntExpression(depth + 1) : clips_[0];
                break;
            case 'w':
                text += "((int *)" + Pointer(depth) + ")";
                break;
            default:
                text += Pointer(depth);
                break;
        }
    }
    return text + ")";
}

std::string ProgramWriter::Call(char result, int depth) {
    for (const Function& function : functions_) {
        if (function.result != result || random_.OneIn(2)) continue;
        std::string text = function.name + "(";
        for (std::size_t i = 0; i < function.parameters.size(); ++i) {
            text += i == 0 ? "" : ", ";
            const char letter = function.parameters[i];
            text += letter == 'i'   ? IntExpression(depth + 2)
                    : letter == 'f' ? FloatExpression(depth + 2)
                                    : Pointer(depth + 1);
        }
        return text + ")";
    }
    return result == 'i' ? "irand(" + IntExpression(depth + 1) + ")" : "noise()";
}

std::string Mutated(std::string text, Random& random) {
    for (std::uint32_t times = 1 + random.Below(4); times > 0 && !text.empty(); --times) {
        const std::size_t at = random.Below(text.size());
        const std::size_t length = 1 + random.Below(random.OneIn(4) ? 40 : 6);
        switch (random.Below(6)) {
            case 0:
                text.erase(at, length);
                break;
            case 1:
                text.insert(at, text.substr(random.Below(text.size()), length));
                break;
            case 2:
                text[at] = static_cast<char>(random.Next());
                break;
            case 3:
                text.replace(at, length, " " + std::string(random.Pick(kScraps)) + " ");
                break;
            case 4:
                text.insert(at, " " + std::string(random.Pick(kScraps)) + " ");
                break;
            default: {
                // A token's worth over and over: nesting, long lists, many of one kind.
                const std::string part = text.substr(at, length);
                const std::uint32_t copies = random.OneIn(50) ? 400 : 2 + random.Below(6);
                std::string many;
                for (std::uint32_t i = 0; i < copies; ++i) many += part;
                text.insert(at, many);
                break;
            }
        }
    }
    return text;
}

}  // namespace fuzz
