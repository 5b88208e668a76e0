// Listings that are written by hand, and listings read back.

#include "hum/assemble.h"

#include <doctest/doctest.h>

#include "compiled.h"
#include "hum/listing.h"
#include "support/cases.h"

namespace {

std::string FaultOf(std::string_view text) {
    hum::Program program;
    const auto fault = hum::Assemble("", text, program);
    return fault ? hum::FaultText(*fault) : "";
}

}  // namespace

TEST_CASE("a listing read back is the same program") {
    for (const support::Case& steps : support::Cases("hum/results.txt")) {
        for (const support::Step& step : steps) {
            CAPTURE(step.value);
            const std::string listing = hum::Listing(CompileText(step.value).program);
            hum::Program again;
            CHECK_FALSE(hum::Assemble("", listing, again));
            CHECK(hum::Listing(again) == listing);
        }
    }
}

TEST_CASE("every form of an instruction may be written by hand") {
    hum::Program program;
    const std::string_view text =
        "; a comment\n"
        ".struct Out 3\n.module a Out\n  this i1 ; its output\n  halt\n.module b Out\n.entry f\n"
        "push i1\npop i2\npushf f1\npopf f11\nlf f0, -1e-3\nload i0, [ i3-4 ]\n"
        "store [0xffffffff], i5\nfcmplt i0, f1, f2\nnop rd=1 ra=2 rb=3 imm=-4 stride=5\n"
        "op200 rd=0 ra=0 rb=0 imm=0\n.master\n";
    CHECK_FALSE(hum::Assemble("", text, program));
    CHECK(hum::Listing(program) ==
          ".struct Out 3\n.module a Out\nthis    i1\nhalt\n.module b Out\n.entry f\n"
          "push    i1\npop     i2\npushf   f1\npopf    f11\nlf      f0, -0.001\n"
          "load    i0, [i3-4]\nstore   [0xffffffff], i5\nfcmplt  i0, f1, f2\nnop\n"
          "op200   rd=0 ra=0 rb=0 imm=0\n");
    CHECK(program.modules[1].output_address == 323);
    CHECK(program.data_words == 320 + 65536);
    CHECK(program.code[10] == hum::Instruction{0, 1, 2, 3, -4, program.code[10].pos, 5});
    CHECK(program.master == 12);
}

TEST_CASE("an assembler's fault has its place") {
    const struct {
        std::string_view text, fault;
    } rows[] = {
        {"halt\n  frob i0", "<input>:2:3: unknown instruction 'frob'"},
        {".frob", "<input>:1:1: unknown directive '.frob'"},
        {".master\n.master", "<input>:2:8: 'master' is already declared"},
        {"li i12, 3", "<input>:1:4: expected a register i0 to i11"},
        {"li f0, 3", "<input>:1:4: expected a register i0 to i11"},
        {"li i0 3", "<input>:1:7: expected ','"},
        {"li i0, x", "<input>:1:8: expected a number"},
        {"li i0, 3000000000", "<input>:1:8: number out of range"},
        {"load i0, 3", "<input>:1:10: expected '['"},
        {"call 3", "<input>:1:6: expected 'rd='"},
        {".struct A 99999999", "<input>:1:19: number out of range"},
        {".struct A 20000000\n.module a A\n.module b A", "<input>:3:12: module frame is too large"},
        {"halt 3", "<input>:1:6: expected the end of the line"},
    };
    for (const auto& row : rows) CHECK(FaultOf(row.text) == row.fault);
}
