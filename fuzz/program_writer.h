#pragma once

#include <string>
#include <vector>

#include "random.h"

namespace fuzz {

// Writes Hum programs that use the whole of the language and mostly compile: names are declared
// before they are used, and expressions fit their types more often than not.
class ProgramWriter {
public:
    explicit ProgramWriter(Random& random) : random_(random) {}
    std::string Program();

private:
    enum class Kind { Int, Float, Pointer, FloatPointer };
    struct Variable {
        std::string name;
        Kind kind;
        int dimensions = 0;
        bool writable = true;
    };
    struct Function {
        std::string name;
        std::string parameters;  // one letter each: i, f, p a pointer to float
        char result;
    };

    void Structs();
    void Data();
    void Globals();
    void Functions();
    void Modules();
    void Master();
    void Block(int depth);
    void Statement(int depth);
    void Loop(int depth);
    void Pause(int depth);
    void Local();
    void Assignment();
    std::string Score(int depth);
    std::string Expression(Kind kind, int depth);
    std::string IntExpression(int depth);
    std::string FloatExpression(int depth);
    std::string Pointer(int depth);
    std::string Builtin(char result, int depth);
    std::string Call(char result, int depth);
    std::string Place(Kind kind, int depth);
    std::string Constant(Kind kind);
    std::string Fresh(std::string_view stem);
    void Line(const std::string& text) { text_ += text + "\n"; }

    Random& random_;
    std::string text_;
    int names_ = 0;
    int statements_ = 0;
    int loops_ = 0;
    bool may_pause_ = false;
    bool in_module_ = false;
    std::vector<Variable> variables_;
    std::vector<Function> functions_;
    std::vector<std::string> structs_;
    std::vector<std::string> scores_;
    std::vector<std::string> clips_;
    std::vector<std::string> modules_;
};

// Damages a text as typing and cutting do: bytes, tokens and lines lost, doubled, moved, replaced.
std::string Mutated(std::string text, Random& random);

}  // namespace fuzz
