#include "base/format.h"
#include "commands.h"
#include "json_line.h"
#include "subject.h"
#include "text.h"

namespace lc1 {
namespace {

std::string SeedText(const kp::Test& test) {
    return base::Format("0x%016llx", static_cast<unsigned long long>(test.seed));
}

void WriteHost(JsonLine& out, const kp::Test& test) {
    out.Array("host");
    for (const kp::HostMessage& message : test.host) {
        out.Object();
        out.Number("at", message.at);
        out.Numbers("bytes", message.bytes);
        out.End();
    }
    out.End();
}

void WriteRx(JsonLine& out, const kp::Test& test) {
    out.Array("rx");
    for (const kp::LineEntry& entry : test.rx) {
        out.Object();
        out.Number("at", entry.at);
        out.Number("gap", entry.gap);
        out.Text("label", entry.label);
        out.Number("reply_within", entry.reply_within);
        out.Numbers("bytes", entry.bytes);
        out.End();
    }
    out.End();
}

void WriteReplies(JsonLine& out, const kp::Test& test) {
    out.Array("replies");
    for (const kp::Reply& reply : test.replies) {
        out.Object();
        out.Numbers("after", reply.after);
        out.Numbers("send", reply.send);
        out.Number("delay", reply.delay);
        out.Text("label", reply.label);
        out.End();
    }
    out.End();
}

void WriteJson(const kp::Ticket& ticket) {
    JsonLine out;
    out.Text("id", ticket.id);
    out.Array("tests");
    for (const kp::Test& test : ticket.tests) {
        out.Object();
        out.Text("name", test.name);
        out.Text("seed", SeedText(test));
        WriteHost(out, test);
        WriteRx(out, test);
        out.Array("frames");
        for (const kp::Bytes& frame : test.frames) out.Numbers({}, frame);
        out.End();
        WriteReplies(out, test);
        out.End();
    }
    out.End();
}

std::string HexText(const kp::Bytes& bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes)
        text += base::Format(text.empty() ? "%02X" : " %02X", byte);
    return text.empty() ? "no bytes" : text;
}

// What stands behind an entry's bytes: only what is not the default.
std::string EntryExtras(const kp::LineEntry& entry) {
    std::string text;
    if (entry.gap != 1) text += base::Format("  gap %u", entry.gap);
    if (entry.reply_within != 0) text += base::Format("  reply within %d", entry.reply_within);
    if (!entry.label.empty()) text += "  (" + entry.label + ")";
    return text;
}

void PrintTest(const kp::Test& test, bool colour) {
    PutLine(test.name + "  " + Inked(SeedText(test), Ink::Dim, colour));
    TextTable table({{}, {}, {}});
    for (const kp::HostMessage& message : test.host) {
        table.Add({"  host", base::Format("at %u", message.at), HexText(message.bytes)});
    }
    for (const kp::LineEntry& entry : test.rx) {
        table.Add(
            {"  line", base::Format("at %u", entry.at), HexText(entry.bytes) + EntryExtras(entry)});
    }
    for (const kp::Bytes& frame : test.frames) table.Add({"  frame", "", HexText(frame)});
    for (const kp::Reply& reply : test.replies) {
        table.Add({"  reply", base::Format("%d later", reply.delay),
                   HexText(reply.send) + "  after " + HexText(reply.after) +
                       (reply.label.empty() ? "" : "  (" + reply.label + ")")});
    }
    table.Print(colour);
}

}  // namespace

Outcome RunBytes(const Request& request) {
    kp::Ticket ticket;
    if (std::optional<Problem> problem = LoadTicket(request, ticket)) return *problem;
    if (request.json) {
        WriteJson(ticket);
        return ExitCode::Pass;
    }
    for (const kp::Test& test : ticket.tests) PrintTest(test, request.colour);
    return ExitCode::Pass;
}

}  // namespace lc1
