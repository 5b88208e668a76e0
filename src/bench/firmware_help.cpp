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

// The instruction of a line, and which of its operands a column is at.
struct Typed {
    const kp::InstructionInfo* info = nullptr;
    Span name;
    int operand = 0;
};

std::optional<Typed> InstructionAt(std::u16string_view line, const std::vector<Span>& spans,
                                   int column) {
    const auto name = std::ranges::find(spans, Role::CodeOp, &Span::role);
    if (name == spans.end() || column < name->column) return std::nullopt;
    Typed typed{.info = nullptr, .name = *name};
    typed.info = kp::FindInstruction(base::ToUtf8(line.substr(
        static_cast<std::size_t>(name->column), static_cast<std::size_t>(name->length))));
    for (auto span = name; span != spans.end() && span->column < column; ++span) {
        if (span->role == Role::CodeNote) return std::nullopt;
        typed.operand += line[static_cast<std::size_t>(span->column)] == u',' ? 1 : 0;
    }
    return typed.info ? std::optional(typed) : std::nullopt;
}

bool Runs(const kp::CardConfig& card, kp::Op op) {
    switch (op) {
        case kp::Op::Crc:
            return card.crc;
        case kp::Op::Tmr:
            return card.timer;
        case kp::Op::Hin:
        case kp::Op::Hout:
            return card.host;
        default:
            return true;
    }
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

std::vector<CompletionItem> Instructions(const kp::CardConfig& card) {
    std::vector<CompletionItem> items;
    for (const kp::InstructionInfo& info : kp::Instructions()) {
        if (Runs(card, info.op))
            items.push_back({std::string(info.name), std::string(info.effect)});
    }
    items.push_back({"def", "names a constant"});
    return items;
}

// Those that suit the operand come first.
std::vector<CompletionItem> Operands(const kp::CardConfig& card, const kp::Assembly& firmware,
                                     std::optional<kp::OperandKind> wanted) {
    using enum kp::OperandKind;
    const bool names_register = wanted != Label;
    std::vector<CompletionItem> items, others;
    for (int number = 0; number < static_cast<int>(kp::kRegisterNames.size()); ++number) {
        if (!IsFitted(card, number)) continue;
        const bool written = wanted == Register || wanted == MovTarget;
        const bool suits = names_register && !(written && number > kp::kCrc);
        const auto name = kp::kRegisterNames[static_cast<std::size_t>(number)];
        (suits ? items : others).push_back({std::string(name), "register"});
    }
    for (const kp::Symbol& label : firmware.labels) {
        (wanted == Label ? items : others).push_back({label.name, "label"});
    }
    for (const kp::Symbol& constant : firmware.constants) {
        (wanted == Value || wanted == MovSource ? items : others)
            .push_back({constant.name, "constant " + std::to_string(constant.value)});
    }
    items.insert(items.end(), others.begin(), others.end());
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
    if (const auto typed = InstructionAt(before, spans, static_cast<int>(before.size()))) {
        const bool one_of_them = typed->operand < typed->info->most;
        return Operands(
            card, firmware,
            one_of_them
                ? std::optional(typed->info->operands[static_cast<std::size_t>(typed->operand)])
                : std::nullopt);
    }
    const bool defines = std::ranges::count(spans, Role::CodeDef, &Span::role) > 0;
    return defines ? Operands(card, firmware, kp::OperandKind::Value) : Instructions(card);
}

zo::ui::TypingHint DescribeInstruction(std::u16string_view line, int column) {
    const auto typed = InstructionAt(line, SpansOf(line), column);
    if (!typed) return {};
    const kp::InstructionInfo& info = *typed->info;
    const bool behind_name = column > typed->name.column + typed->name.length;
    zo::ui::TypingHint hint{.text = std::string(info.name)};
    hint.length = static_cast<int>(hint.text.size());
    for (int k = 0; k < info.most; ++k) {
        const bool optional = k >= info.Least();
        hint.text += optional ? "[" : "";
        hint.text += k == 0 ? " " : ", ";
        const bool due = k == typed->operand && behind_name;
        if (due) hint.from = static_cast<int>(hint.text.size());
        hint.text += NameOf(info, k);
        if (due) hint.length = static_cast<int>(hint.text.size()) - hint.from;
        hint.text += optional ? "]" : "";
    }
    hint.text += ": ";
    hint.text += info.effect;
    return hint;
}

}  // namespace Kest
