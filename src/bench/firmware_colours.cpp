#include "bench/firmware_colours.h"

#include <algorithm>
#include <string>

#include "base/utf.h"
#include "card/instructions.h"

namespace Kest {
namespace {

using zo::ui::Role;

bool IsBlank(char16_t c) {
    return c == u' ' || c == u'\t';
}
bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}
bool IsName(char16_t c) {
    return IsDigit(c) || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_' ||
           c == u'.';
}

bool StartsNumber(std::u16string_view line, std::size_t at) {
    const char16_t c = line[at];
    if (c == u'-') return at + 1 < line.size() && IsDigit(line[at + 1]);
    return c == u'$' || c == u'%' || IsDigit(c);
}

std::size_t EndOfQuote(std::u16string_view line, std::size_t at) {
    for (std::size_t i = at + 1; i < line.size(); ++i) {
        if (line[i] == u'\\') {
            ++i;
        } else if (line[i] == u'\'') {
            return i + 1;
        }
    }
    return line.size();
}

std::size_t EndOfName(std::u16string_view line, std::size_t at) {
    while (at < line.size() && IsName(line[at])) ++at;
    return at;
}

// "crc" is an instruction as well as a register: the first name of a line is the instruction.
Role RoleOfName(std::u16string_view name, bool has_instruction) {
    const std::string plain = base::ToUtf8(name);
    if (plain == "def" || plain == "DEF") return Role::CodeDef;
    if (!has_instruction && kp::FindInstruction(plain) != nullptr) return Role::CodeOp;
    return kp::FindRegister(plain) ? Role::CodeReg : Role::CodeLabel;
}

}  // namespace

void ColourFirmware(std::u16string_view line, std::vector<zo::ui::Span>& spans) {
    bool has_instruction = false;
    for (std::size_t at = 0; at < line.size();) {
        const char16_t c = line[at];
        std::size_t end = at + 1;
        Role role = Role::CodePunct;
        if (IsBlank(c)) {
            ++at;
            continue;
        }
        if (c == u';') {
            end = line.size(), role = Role::CodeNote;
        } else if (c == u'\'') {
            end = EndOfQuote(line, at), role = Role::CodeStr;
        } else if (StartsNumber(line, at)) {
            end = EndOfName(line, at + 1), role = Role::CodeNum;
        } else if (IsName(c)) {
            end = EndOfName(line, at);
            const bool defines_label = end < line.size() && line[end] == u':';
            role = defines_label ? Role::CodeLabel
                                 : RoleOfName(line.substr(at, end - at), has_instruction);
            has_instruction |= role == Role::CodeOp;
        }
        spans.push_back({static_cast<int>(at), static_cast<int>(end - at), role});
        at = end;
    }
}

}  // namespace Kest
