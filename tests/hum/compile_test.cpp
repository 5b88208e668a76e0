// Runs the programs of faults.txt and listings.txt, and builds those that are too large to write.

#include "compiled.h"

#include <doctest/doctest.h>

#include "hum/listing.h"
#include "support/cases.h"

namespace {

std::string Repeated(std::string_view text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

// The text times over, each '#' replaced by a number from 0.
std::string Numbered(std::string_view text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        for (const char c : text) all += c == '#' ? std::to_string(i) : std::string(1, c);
    }
    return all;
}

// The message alone.
std::string Message(const Compiled& compiled) {
    const std::size_t colon = compiled.fault.find(": ");
    return colon == std::string::npos ? "" : compiled.fault.substr(colon + 2);
}

}  // namespace

TEST_CASE("a program that is wrong is told what and where") {
    HeldIncludes includes;
    includes.texts = {{"a", "float from_a;\n"},
                      {"once", "#pragma once\nfloat held;\n"},
                      {"bad", "\n  master { x; }"},
                      {"itself", "#include \"itself\"\n"}};
    for (const support::Case& steps : support::Cases("hum/faults.txt")) {
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            CAPTURE(step.value);
            const Compiled compiled = CompileText(step.value, &includes);
            CHECK(compiled.fault + (compiled.fault.empty() ? "" : "\n") == step.text);
        }
    }
}

TEST_CASE("a listing shows the code") {
    for (const support::Case& steps : support::Cases("hum/listings.txt")) {
        CAPTURE(steps[0].where);
        const Compiled compiled = CompileText(steps[0].All());
        CHECK(compiled.fault == "");
        CHECK(hum::Listing(compiled.program) == steps[1].text);
    }
}

TEST_CASE("every limit holds, and one less is taken") {
    const std::string open = "struct O { int n; };\n";
    const auto nested = [](std::string_view before, std::string_view after, int depth) {
        return "master { int x; " + Repeated(before, depth) + "x" + Repeated(after, depth) + "; }";
    };
    const auto body = [](const std::string& text) { return "master { int x; " + text + " }"; };
    std::string doubling;
    for (int i = 0; i < 40; ++i) {
        const std::string next = " B" + std::to_string(i + 1);
        doubling += "#define B" + std::to_string(i) + next + next + "\n";
    }
    const struct {
        const char* what;
        std::string good, bad;
        std::string_view message;
    } rows[] = {
        {"functions", Numbered("int f#() {}", 383), Numbered("int f#() {}", 384),
         "too many functions"},
        {"modules", open + Numbered("module O *m#{}", 255), open + Numbered("module O *m#{}", 256),
         "too many modules"},
        {"structs", Numbered("struct S# { int n; };", 80), Numbered("struct S# { int n; };", 81),
         "too many structs"},
        {"globals", Numbered("int g#;", 2047), Numbered("int g#;", 2048), "too many globals"},
        {"locals", body(Numbered("int a#;", 510)), body(Numbered("int a#;", 511)),
         "too many locals"},
        {"params", Numbered("param float p# = 1;", 64), Numbered("param float p# = 1;", 65),
         "too many params (the limit is 64)"},
        {"statements", body(Repeated(";", 1022)), body(Repeated(";", 1023)), "block too large"},
        {"fields", "struct S {" + Numbered("int f#;", 1023) + "};",
         "struct S {" + Numbered("int f#;", 1024) + "};", "block too large"},
        {"initializer", "int a[2000] = {" + Repeated("1,", 1023) + "};",
         "int a[2000] = {" + Repeated("1,", 1024) + "};", "initializer too large"},
        {"frame", "master { int a[524288]; }", "master { int a[524287]; int b; int c; }",
         "module frame is too large"},
        {"memory", open + Numbered("module O *m# { int a[524288]; }", 60),
         open + Numbered("module O *m# { int a[524288]; }", 65), "module frame is too large"},
        {"outputs", "struct B { int a[4194304]; }; module B *m {}",
         "struct B { int a[4194304]; };" + Numbered("module B *m# {}", 9),
         "module frame is too large"},
        {"arguments", "int f(" + Numbered("int a#,", 15) + "int z);",
         "int f(" + Numbered("int a#,", 16) + "int z);", "too many arguments"},
        {"arguments of a call", "int f(int a) {}" + body("f(1);"),
         body("f(" + Repeated("1,", 16) + "1);"), "too many arguments"},
        {"arguments of one kind",
         "int f(" + Numbered("int a#,", 12) + "float z) {}" +
             body("f(" + Repeated("1,", 12) + "2);"),
         "int f(" + Numbered("int a#,", 12) + "int z) {}" + body("f(" + Repeated("1,", 12) + "2);"),
         "too many arguments of one kind in a call"},
        {"loops", body(Repeated("while (1) ", 31) + ";"), body(Repeated("while (1) ", 32) + ";"),
         "loops are nested too deeply"},
        {"dimensions", "int a" + Repeated("[1]", 7) + ";", "int a" + Repeated("[1]", 8) + ";",
         "too many array dimensions"},
        {"array", "int a[2048][2048];", "int a[2048][2049];", "array is too large"},
        {"repeat", "score s \"(C)256\";", "score s \"(C)257\";",
         "score: repeat expects a count 1..256, as in (C E G)4 (at character 3)"},
        {"int registers", body("x = " + Repeated("x + (", 11) + "x" + Repeated(")", 11) + ";"),
         body("x = " + Repeated("x + (", 12) + "x" + Repeated(")", 12) + ";"),
         "ran out of integer registers"},
        {"float registers",
         body("float y; y = " + Repeated("y + (", 11) + "y" + Repeated(")", 11) + ";"),
         body("float y; y = " + Repeated("y + (", 12) + "y" + Repeated(")", 12) + ";"),
         "ran out of float registers"},
        {"parentheses", nested("(", ")", 200), nested("(", ")", 100000),
         "ran out of integer registers"},
        {"signs", nested("- ", "", 200), nested("- ", "", 100000), "ran out of integer registers"},
        {"fields of fields", body("x;"), body("x" + Repeated(".f", 100000) + ";"),
         "ran out of integer registers"},
        {"blocks", body(Repeated("{", 200) + Repeated("}", 200)),
         body(Repeated("{", 100000) + Repeated("}", 100000)), "block too large"},
        {"braces", "int a[1] = {1};", "int a[1] = " + Repeated("{", 100000),
         "initializer too large"},
        {"tokens", "int a;", "int " + Repeated("a,", 131072), "too many tokens"},
        // Twice each, these would be 2 to the 40 macros without one token.
        {"macros", "#define A 1\n" + body("x = A;"), doubling + "#define B40\nint B0;",
         "too many tokens"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.what);
        CHECK(CompileText(row.good).fault == "");
        CHECK(Message(CompileText(row.bad)) == row.message);
    }
}

TEST_CASE("a chain of operators or of else-ifs may be of any length") {
    CHECK(CompileText("master { int x; x = 1" + Repeated(" + x", 20000) + "; }").fault == "");
    CHECK(CompileText("master { int x; " + Repeated("if (x) ; else ", 20000) + "; }").fault == "");
}

TEST_CASE("more code than a program may hold is refused") {
    const std::string line = Repeated("x = x * x + x;", 1000);
    std::string text;
    for (int i = 0; i < 30; ++i) {
        text += "int f" + std::to_string(i) + "(int x) {" + line + "}";
    }
    text += "master {" + Numbered("f#(1);", 30) + "}";
    CHECK(Message(CompileText(text)) == "code too large");
}

TEST_CASE("sources nest 128 deep, and never for ever") {
    HeldIncludes includes;
    for (int i = 1; i < 200; ++i) {
        includes.texts["i" + std::to_string(i)] = "#include \"i" + std::to_string(i + 1) + "\"\n";
    }
    includes.texts["i128"] = "int deepest;";
    CHECK(CompileText("#include \"i2\"\nmaster { deepest = 1; }", &includes).fault == "");
    CHECK(Message(CompileText("#include \"i1\"", &includes)) == "source nested too deeply");
    // Twice each, these would be 2 to the 60 sources without one token.
    for (int i = 1; i < 60; ++i) {
        std::string& text = includes.texts["t" + std::to_string(i)];
        text = "#include \"t" + std::to_string(i + 1) + "\"\n";
        text += text;
    }
    includes.texts["t60"] = "";
    CHECK(Message(CompileText("#include \"t1\"", &includes)) == "source nested too deeply");
}

TEST_CASE("a fault in the library or an included source names that source") {
    HeldIncludes includes;
    includes.texts["bad"] = "\n  master { x; }";
    CHECK(CompileText("#include \"bad\"", &includes).fault == "bad:2:12: unknown identifier 'x'");
    CHECK(CompileText("master {}", nullptr, "int f() { return x; }").fault ==
          "music:1:18: unknown identifier 'x'");
}
