// The tick engine, tested in its own language: a comment "; expect tx $55 at 0, tx $55 at 4" behind
// an instruction lists everything that the instruction made happen in a recorded run, in order.

#include <doctest/doctest.h>

#include <map>

#include "base/format.h"
#include "card/byte_text.h"
#include "rig.h"

using kp::Happening;
using support::Rig;

namespace {

std::string Describe(const kp::TraceEvent& event) {
    constexpr const char* kNames[] = {"tx",   "in",    "rx",       "lost",    "hin",
                                      "hout", "tmr",   "tmr stop", "ran out", "timeout",
                                      "halt", "fault", "wrap"};
    const std::string name = kNames[static_cast<std::size_t>(event.kind)];
    switch (event.kind) {
        case Happening::Transmitted:
        case Happening::ReadByte:
        case Happening::Delivered:
            return base::Format("%s $%02X at %u", name.c_str(), event.value, event.tick);
        case Happening::ReadHost:
            return event.value == 0xFFFF ? base::Format("hin end at %u", event.tick)
                                         : base::Format("hin $%02X at %u", event.value, event.tick);
        case Happening::TimerStarted:
            return base::Format("tmr %d at %u", event.value, event.tick);
        default:
            return base::Format("%s at %u", name.c_str(), event.tick);
    }
}

std::map<int, std::string> Expectations(std::string_view firmware) {
    constexpr std::string_view kMark = "; expect ";
    std::map<int, std::string> lines;
    for (int number = 1; !firmware.empty(); ++number) {
        const std::size_t end = std::min(firmware.find('\n'), firmware.size());
        const std::string_view line = firmware.substr(0, end);
        if (const auto at = line.find(kMark); at != std::string_view::npos) {
            lines[number] = line.substr(at + kMark.size());
        }
        firmware.remove_prefix(std::min(end + 1, firmware.size()));
    }
    return lines;
}

void CheckFirmware(std::string_view ticket, std::string_view firmware, std::string_view verdict) {
    CAPTURE(firmware);
    Rig rig(ticket, firmware);
    CHECK(rig.Run().message == verdict);
    std::map<int, std::string> happened;
    for (const kp::TraceEvent& event : rig.session.Trace()) {
        if (event.line == 0) continue;
        std::string& line = happened[event.line];
        line += (line.empty() ? "" : ", ") + Describe(event);
    }
    CHECK(happened == Expectations(firmware));
}

constexpr std::string_view kPlain = R"({"id": "t", "max_ticks": 200, "tests": [{}]})";
constexpr std::string_view kTimed = R"({"id": "t", "max_ticks": 200,
    "machine": {"timer": true, "clock": true, "crc": true, "stack": 2, "ram": 4, "rx_buffer": 2},
    "tests": [{"rx": [{"hex": "41 42", "at": 8, "gap": 12}],
               "host": ["H", {"text": "", "at": 30}]}]})";

}  // namespace

TEST_CASE("a card sends, waits and counts its ticks") {
    CheckFirmware(kPlain, R"(
        tx $55      ; expect tx $55 at 0
        nop
        tx $1AA     ; expect tx $AA at 2
        halt        ; expect halt at 3
    )",
                  "");
    CheckFirmware(kPlain, R"(
        tx 'P'      ; expect tx $50 at 0
        wait 6
        tx 'Q'      ; expect tx $51 at 7
        wait 0
        wait -5
        tx 'R'      ; expect tx $52 at 10
        halt        ; expect halt at 11
    )",
                  "");
    CheckFirmware(R"({"id": "t", "machine": {"tx_gap": 4}, "tests": [{}]})", R"(
        tx 1        ; expect tx $01 at 0
        tx 2        ; expect tx $02 at 4
        nop
        tx 3        ; expect tx $03 at 8
        halt        ; expect halt at 9
    )",
                  "");
}

TEST_CASE("words wrap at 16 bits and compare signed") {
    CheckFirmware(kPlain, R"(
        mov a, 1
        shl a, 15
        jlt a, 0, signed
        tx $E0
signed: shl a, 1
        jne a, 0, wrong
        sub a, 1
        shr a, 16
        jne a, 0, wrong
        mov a, $FFFF
        shr a, -1
        jne a, 0, wrong
        mov a, $00F0
        and a, $3C
        or a, 1
        xor a, $FF
        jeq a, $CE, fine
wrong:  tx $EE
fine:   jgt 1, -1, low
        tx $EF
low:    mov b, 0
loop:   djn b, out
out:    tx b        ; expect tx $FF at 19
        halt        ; expect halt at 20
    )",
                  "");
}

TEST_CASE("execution past the last line starts again and says so once") {
    CheckFirmware(R"({"id": "t", "machine": {"host": false},
        "tests": [{"rx": [{"text": "AB", "at": 2, "gap": 3}]}]})",
                  R"(
        rx a        ; expect rx $41 at 2, rx $42 at 5
        tx a        ; expect tx $41 at 3, wrap at 3, tx $42 at 6
    )",
                  "");
    // A call on the last line returns to the first; a jump past the end is no wrap.
    CheckFirmware(kPlain, R"(
        jeq a, 2, done
        jeq a, 1, again
        jmp last
bump:   add a, 1
        ret
done:   tx a        ; expect tx $02 at 11
        halt        ; expect halt at 12
again:  add a, 1
        jmp end
last:   call bump
end:
    )",
                  "");
}

TEST_CASE("the timer runs out, is cleared, and gives a waiting line its target") {
    CheckFirmware(kTimed, R"(
        mov a, 0
        tmr 5       ; expect tmr 5 at 1
        rx a, late  ; expect timeout at 6
        tx $EE
late:   tmr 3       ; expect tmr 3 at 7
        rx a, wrong ; expect rx $41 at 8
        wait 4
        rx b, out   ; expect timeout at 13
wrong:  tx $EE
out:    tmr 1       ; expect tmr 1 at 14
        nop
        tmr 0       ; expect tmr stop at 16
        rx b, wrong ; expect rx $42 at 20
        halt        ; expect halt at 21
    )",
                  "");
}

TEST_CASE("the host's messages come at their ticks and end once each") {
    CheckFirmware(kTimed, R"(
        hin a       ; expect hin $48 at 0
        hin a       ; expect hin end at 1
        hout a      ; expect hout $FF at 2
        hin a       ; expect hin end at 30
        halt        ; expect halt at 31
    )",
                  "");
}

TEST_CASE("registers of the card read as they are fitted") {
    CheckFirmware(kTimed, R"(
        tx clk      ; expect tx $00 at 0
        tx rxn      ; expect tx $00 at 1
        wait 8
        tx rxn      ; expect tx $01 at 10
        mov [3], clk
        mov b, 3
        mov c, [b]
        tx c        ; expect tx $0B at 14
        mov [b], crc
        mov d, [3]
        tx d        ; expect tx $FF at 17
        halt        ; expect halt at 18
    )",
                  "");
}

TEST_CASE("a fault stops the card with its sentence") {
    const struct {
        std::string_view firmware, message;
    } cases[] = {
        {"mov a, -1\nmov [a], 1", "Line 2: RAM address 65535 is outside this card's RAM (0 to 3)."},
        {"mov a, 4\nmov b, [a]", "Line 2: RAM address 4 is outside this card's RAM (0 to 3)."},
        {"l: call l", "Line 1: call went 3 levels deep, past the card's call stack."},
        {"nop\nret", "Line 2: ret ran with no call to return to."},
    };
    for (const auto& c : cases) {
        CAPTURE(c.firmware);
        Rig rig(kTimed, c.firmware);
        const kp::Verdict& verdict = rig.Run();
        CHECK(verdict.message == c.message);
        CHECK(verdict.kind == kp::FailureKind::Fault);
        CHECK(rig.session.Trace().back().kind == Happening::CardFaulted);
    }
}

TEST_CASE("a byte that finds the receive buffer full ends the test on its tick") {
    Rig rig(
        R"({"id": "t", "machine": {"rx_buffer": 2}, "tests": [{"rx": [{"hex": "01 02 03", "at": 5}]}]})",
        "loop: jmp loop");
    CHECK(rig.Run().message ==
          "Tick 7: byte $03 arrived while the receive buffer was full (2 bytes). The card has to "
          "read bytes about as fast as they arrive.");
    CHECK(rig.session.Card().State() == kp::CardState::Faulted);
    CHECK(rig.session.CurrentTick() == 8);
}

TEST_CASE("an empty program halts on its first tick") {
    Rig rig(kPlain, "; nothing");
    CHECK(rig.Run().passed);
    CHECK(rig.session.CurrentTick() == 1);
    CHECK(Describe(rig.session.Trace().back()) == "halt at 0");
}

TEST_CASE("a step runs until one instruction is done") {
    Rig rig(kTimed, "tx 1\nwait 5\nrx a\nhalt");
    rig.Begin();
    std::vector<kp::Tick> ticks;
    while (rig.session.StepInstruction()) ticks.push_back(rig.session.CurrentTick());
    CHECK(ticks == std::vector<kp::Tick>{1, 2, 9});
    CHECK(rig.session.CurrentTick() == 10);
    CHECK_FALSE(rig.session.StepTick());
}
