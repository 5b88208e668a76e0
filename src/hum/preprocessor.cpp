#include "preprocessor.h"

#include <string>
#include <vector>

#include "base/format.h"
#include "lexer.h"

namespace hum {
namespace {

constexpr std::size_t kMaxSourceDepth = 128;
// Sources opened and macro tokens looked at. Neither need leave a token behind, so that the limit
// on tokens alone would let a small program keep the compiler busy for ever.
constexpr std::size_t kMaxOpened = 4096;
constexpr std::size_t kMaxExpansion = 16 * kMaxTokens;
constexpr std::uint32_t kNone = 0xffffffff;

struct Macro {
    std::uint32_t first = 0;  // in the pool of macro tokens
    std::uint32_t count = 0;
    bool expanding = false;
};

// A macro being expanded, and how far.
struct Expansion {
    std::uint32_t macro;
    std::uint32_t at;
};

std::string LastComponent(std::string_view path) {
    const std::size_t slash = path.find_last_of("/\\");
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

class Preprocessor {
public:
    Preprocessor(Tokens& tokens, Includes* includes) : tokens_(tokens), includes_(includes) {}

    bool ReadAll(const ProgramText& program) {
        Open("music", "", program.library);
        if (!ReadSources()) return false;
        Open(program.name.empty() ? "<input>" : program.name, program.path, program.text);
        if (!ReadSources()) return false;
        tokens_.list.push_back(end_);
        return true;
    }

    std::optional<Fault> TakeFault() { return std::move(fault_); }

private:
    // A source being read and the #ifdef regions that it has open.
    struct Reading {
        Lexer lexer;
        std::uint32_t open_regions = 0;
    };

    bool Fail(Spot spot, std::string message) {
        fault_ = FaultAt(tokens_, spot, std::move(message));
        return false;
    }
    bool FailInLexer(const Lexer& lexer) {
        return Fail(lexer.Place(), std::string(lexer.Message()));
    }
    void Open(std::string_view name, std::string_view path, std::string_view text);
    void OpenAgain(std::uint16_t source) { readings_.push_back({Lexer(tokens_, source)}); }
    bool ReadSources();
    bool Add(const Token& token);
    std::uint32_t MacroOf(const Token& token) const {
        if (token.kind != Tok::Name || token.value >= macro_of_.size()) return kNone;
        return macro_of_[token.value];
    }
    bool Expand(const Token& use, std::uint32_t macro);
    bool Directive(const Token& hash);
    bool Include();
    bool ResolveInclude(const Token& name);
    bool Pragma();
    bool Define();
    bool IfDefined(bool wanted);
    bool EndIf(const Token& hash);
    bool SkipRegion();
    bool NextOnLine(Token& token);
    bool NameOnLine(Token& token);
    bool FinishLine();

    Tokens& tokens_;
    Includes* includes_;
    std::vector<Reading> readings_;
    std::size_t opened_ = 0;
    std::size_t expanded_ = 0;
    std::vector<Macro> macros_;
    std::vector<std::uint32_t> macro_of_;  // by name
    std::vector<Token> macro_tokens_;
    std::vector<Expansion> expansions_;
    Token end_;
    std::optional<Fault> fault_;
};

void Preprocessor::Open(std::string_view name, std::string_view path, std::string_view text) {
    Source& source = tokens_.sources.emplace_back();
    source.name = name;
    source.path = path;
    source.text = text;
    OpenAgain(static_cast<std::uint16_t>(tokens_.sources.size() - 1));
}

bool Preprocessor::ReadSources() {
    Token token;
    while (!readings_.empty()) {
        Reading& reading = readings_.back();
        if (!reading.lexer.Next(token)) return FailInLexer(reading.lexer);
        if (token.kind == Tok::End) {
            if (reading.open_regions != 0) return Fail(SpotOf(token), "missing #endif");
            readings_.pop_back();
            end_ = token;
        } else if (token.kind == Tok::Bad && reading.lexer.IsDirective(token)) {
            if (!Directive(token)) return false;
        } else if (const std::uint32_t macro = MacroOf(token); macro != kNone) {
            if (!Expand(token, macro)) return false;
        } else if (!Add(token)) {
            return false;
        }
    }
    return true;
}

bool Preprocessor::Add(const Token& token) {
    if (tokens_.list.size() == kMaxTokens) return Fail(SpotOf(token), "too many tokens");
    tokens_.list.push_back(token);
    return true;
}

bool Preprocessor::Expand(const Token& use, std::uint32_t macro) {
    const auto enter = [this](std::uint32_t number) {
        macros_[number].expanding = true;
        expansions_.push_back({number, 0});
    };
    enter(macro);
    while (!expansions_.empty()) {
        Expansion& top = expansions_.back();
        const Macro& of = macros_[top.macro];
        if (top.at == of.count) {
            macros_[top.macro].expanding = false;
            expansions_.pop_back();
            continue;
        }
        if (++expanded_ > kMaxExpansion) return Fail(SpotOf(use), "too many tokens");
        Token token = macro_tokens_[of.first + top.at++];
        const std::uint32_t inner = MacroOf(token);
        if (inner != kNone && !macros_[inner].expanding) {
            enter(inner);
            continue;
        }
        token.source = use.source;
        token.line = use.line;
        token.offset = use.offset;
        if (!Add(token)) return false;
    }
    return true;
}

bool Preprocessor::NextOnLine(Token& token) {
    Lexer& lexer = readings_.back().lexer;
    return lexer.NextOnLine(token) || FailInLexer(lexer);
}

bool Preprocessor::NameOnLine(Token& token) {
    if (!NextOnLine(token)) return false;
    return token.kind == Tok::Name || Fail(SpotOf(token), "expected identifier");
}

// What stands behind a directive counts for nothing, but a comment may go on for lines.
bool Preprocessor::FinishLine() {
    Token token;
    do {
        if (!NextOnLine(token)) return false;
    } while (token.kind != Tok::End);
    return true;
}

bool Preprocessor::Directive(const Token& hash) {
    Token word;
    if (!NextOnLine(word)) return false;
    const bool is_word =
        word.kind == Tok::Name || (word.kind >= Tok::Abstract && word.kind <= Tok::Yield);
    const std::string_view name = is_word ? tokens_.names.Text(word.value) : "";
    if (name == "include") return Include();
    if (name == "pragma") return Pragma();
    if (name == "define") return Define();
    if (name == "ifdef") return IfDefined(true);
    if (name == "ifndef") return IfDefined(false);
    if (name == "endif") return EndIf(hash);
    return Fail(SpotOf(hash), "unknown directive '#" + std::string(name) + "'");
}

bool Preprocessor::Include() {
    Token name;
    if (!NextOnLine(name)) return false;
    if (name.kind != Tok::String) return Fail(SpotOf(name), "#include expects \"name\"");
    if (!FinishLine()) return false;
    if (tokens_.strings[name.value] == "music") return true;
    return ResolveInclude(name);
}

bool Preprocessor::ResolveInclude(const Token& name) {
    const std::string wanted(tokens_.strings[name.value]);
    Includes::Text found;
    if (includes_ != nullptr) found = includes_->Find(tokens_.sources[name.source].path, wanted);
    switch (found.found) {
        case Includes::Found::No:
            return Fail(SpotOf(name), "cannot find include \"" + wanted + "\"");
        case Includes::Found::Unreadable:
            return Fail(SpotOf(name), "could not read include \"" + wanted + "\"");
        case Includes::Found::Yes:
            break;
    }
    std::size_t known = 0;
    while (known < tokens_.sources.size() && tokens_.sources[known].path != found.path) ++known;
    const bool is_new = known == tokens_.sources.size();
    if (!is_new && tokens_.sources[known].once) return true;
    if (readings_.size() == kMaxSourceDepth || opened_++ == kMaxOpened) {
        return Fail(SpotOf(name), "source nested too deeply");
    }
    if (!is_new) {
        OpenAgain(static_cast<std::uint16_t>(known));
        return true;
    }
    Source& source = tokens_.sources.emplace_back();
    source.name = LastComponent(wanted);
    source.path = std::move(found.path);
    source.held = std::move(found.text);
    source.text = source.held;
    OpenAgain(static_cast<std::uint16_t>(known));
    return true;
}

bool Preprocessor::Pragma() {
    Token word;
    if (!NextOnLine(word)) return false;
    if (word.kind == Tok::Name && tokens_.names.Text(word.value) == "once") {
        tokens_.sources[word.source].once = true;
    }
    return word.kind == Tok::End || FinishLine();
}

bool Preprocessor::Define() {
    Token name;
    if (!NameOnLine(name)) return false;
    Macro macro;
    macro.first = static_cast<std::uint32_t>(macro_tokens_.size());
    for (Token token;;) {
        if (!NextOnLine(token)) return false;
        if (token.kind == Tok::End) break;
        macro_tokens_.push_back(token);
    }
    macro.count = static_cast<std::uint32_t>(macro_tokens_.size()) - macro.first;
    if (macro_of_.size() <= name.value) macro_of_.resize(name.value + 1, kNone);
    macro_of_[name.value] = static_cast<std::uint32_t>(macros_.size());
    macros_.push_back(macro);
    return true;
}

bool Preprocessor::IfDefined(bool wanted) {
    Token name;
    if (!NameOnLine(name)) return false;
    const bool defined = MacroOf(name) != kNone;
    if (!FinishLine()) return false;
    if (defined != wanted) return SkipRegion();
    ++readings_.back().open_regions;
    return true;
}

bool Preprocessor::EndIf(const Token& hash) {
    Reading& reading = readings_.back();
    if (reading.open_regions == 0) return Fail(SpotOf(hash), "unmatched #endif");
    --reading.open_regions;
    return FinishLine();
}

// Drops whole lines, which need not be made of tokens, up to the #endif of the region.
bool Preprocessor::SkipRegion() {
    Lexer& lexer = readings_.back().lexer;
    for (int depth = 1; depth > 0;) {
        if (lexer.AtEnd()) return Fail(lexer.Here(), "missing #endif");
        const std::string_view word = lexer.DirectiveWord();
        if (word == "ifdef" || word == "ifndef") ++depth;
        if (word == "endif") --depth;
        lexer.SkipLine();
    }
    return true;
}

}  // namespace

std::optional<Fault> Preprocess(const ProgramText& program, Tokens& tokens) {
    Preprocessor preprocessor(tokens, program.includes);
    preprocessor.ReadAll(program);
    return preprocessor.TakeFault();
}

}  // namespace hum
