#include "bench/firmware_help.h"

#include <algorithm>
#include <optional>

#include "base/utf.h"
#include "bench/firmware_colours.h"
#include "card/instructions.h"

namespace Kest {
namespace {

using zo::ui::CompletionItem;
using zo::ui::Role;
using zo::ui::Span;

std::vector<Span> SpansOf(std::u16string_view line) {
    std::vector<Span> spans;
    ColourFirmware(line, spans);
    return spans;
}

// Whether text goes on in a comment or in quotes there, where nothing can be completed.
bool IsInText(std::u16string_view before, const std::vector<Span>& spans) {
    if (spans.empty()) return false;
    const Span& last = spans.back();
    const auto end = static_cast<std::size_t>(last.column + last.length);
    const bool open_quote = last.role == Role::CodeStr && end == before.size() &&
                            (last.length == 1 || before.back() != u'\'');
    return last.role == Role::CodeNote || open_quote;
}

bool HasInstruction(const std::vector<Span>& spans) {
    return std::ranges::any_of(spans, [](const Span& span) {
        return span.role == Role::CodeOp || span.role == Role::CodeDef;
    });
}

bool IsFitted(const kp::CardConfig& card, int number) {
    switch (number) {
        case kp::kCrc:
            return card.crc;
        case kp::kClk:
            return card.clock;
        case kp::kRxn:
            return true;
        default:
            return card.HasRegister(number);
    }
}

std::vector<CompletionItem> Instructions() {
    std::vector<CompletionItem> items;
    for (const kp::InstructionInfo& info : kp::Instructions()) {
        items.push_back({std::string(info.name), std::string(info.effect)});
    }
    items.push_back({"def", "names a constant"});
    return items;
}

std::vector<CompletionItem> Operands(const kp::CardConfig& card, const kp::Assembly& firmware) {
    std::vector<CompletionItem> items;
    for (std::size_t number = 0; number < kp::kRegisterNames.size(); ++number) {
        if (!IsFitted(card, static_cast<int>(number))) continue;
        items.push_back({std::string(kp::kRegisterNames[number]), "register"});
    }
    for (const kp::Symbol& label : firmware.labels) items.push_back({label.name, "label"});
    for (const kp::Symbol& constant : firmware.constants) {
        items.push_back({constant.name, "constant " + std::to_string(constant.value)});
    }
    return items;
}

// The names that the effects of the instruction table use.
std::string_view NameOf(const kp::InstructionInfo& info, int operand) {
    const auto kind = [&](int which) { return info.operands[static_cast<std::size_t>(which)]; };
    switch (kind(operand)) {
        case kp::OperandKind::MovTarget:
            return "target";
        case kp::OperandKind::MovSource:
            return "source";
        case kp::OperandKind::Register:
            return "r";
        case kp::OperandKind::Label:
            return "label";
        case kp::OperandKind::Value:
            break;
    }
    const bool compares = info.most > 1 && kind(0) == kp::OperandKind::Value;
    if (!compares) return "v";
    return operand == 0 ? "x" : "y";
}

}  // namespace

std::vector<CompletionItem> CompleteFirmware(std::u16string_view before, const kp::CardConfig& card,
                                             const kp::Assembly& firmware) {
    const std::vector<Span> spans = SpansOf(before);
    if (IsInText(before, spans)) return {};
    return HasInstruction(spans) ? Operands(card, firmware) : Instructions();
}

zo::ui::TypingHint DescribeInstruction(std::u16string_view line, int column) {
    const std::vector<Span> spans = SpansOf(line);
    const auto op = std::ranges::find(spans, Role::CodeOp, &Span::role);
    if (op == spans.end() || column < op->column) return {};
    const bool in_comment = std::ranges::any_of(spans, [column](const Span& span) {
        return span.role == Role::CodeNote && column > span.column;
    });
    if (in_comment) return {};
    const auto start = static_cast<std::size_t>(op->column);
    const kp::InstructionInfo* info =
        kp::FindInstruction(base::ToUtf8(line.substr(start, static_cast<std::size_t>(op->length))));
    if (!info) return {};
    const int at_operand = static_cast<int>(std::ranges::count_if(spans, [&](const Span& span) {
        return span.role == Role::CodePunct && span.column > op->column && span.column < column &&
               line[static_cast<std::size_t>(span.column)] == u',';
    }));
    zo::ui::TypingHint hint{.text = std::string(info->name)};
    hint.length = static_cast<int>(hint.text.size());
    for (int k = 0; k < info->most; ++k) {
        const bool optional = k >= info->Least();
        hint.text += optional ? "[" : "";
        hint.text += k == 0 ? " " : ", ";
        const bool due = k == at_operand && column > op->column + op->length;
        if (due) hint.from = static_cast<int>(hint.text.size());
        hint.text += NameOf(*info, k);
        if (due) hint.length = static_cast<int>(hint.text.size()) - hint.from;
        hint.text += optional ? "]" : "";
    }
    hint.text += ": ";
    hint.text += info->effect;
    return hint;
}

}  // namespace Kest
