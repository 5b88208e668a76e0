#include "hum/compile.h"

#include "checker.h"
#include "generator.h"
#include "parser.h"
#include "preprocessor.h"

namespace hum {

std::optional<Fault> Compile(const ProgramText& text, Program& program) {
    program = {};
    Tokens tokens;
    InternKeywords(tokens.names);
    Tree tree;
    Checked checked;
    std::optional<Fault> fault = Preprocess(text, tokens);
    if (!fault) fault = Parse(tokens, tree);
    if (!fault) fault = Check(tokens, tree, checked);
    if (!fault) fault = Generate(tokens, tree, checked, program);
    return fault;
}

}  // namespace hum
