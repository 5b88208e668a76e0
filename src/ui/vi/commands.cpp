#include "vi/commands.h"

#include <algorithm>
#include <optional>

namespace zo::ui::vi {
namespace {

constexpr OperatorRow kOperators[] = {
    {U"d", Operator::Delete, U"d"},     {U"c", Operator::Change, U"c"},
    {U"y", Operator::Yank, U"y"},       {U">", Operator::Indent, U">"},
    {U"<", Operator::Outdent, U"<"},    {U"g~", Operator::SwapCase, U"~"},
    {U"gu", Operator::LowerCase, U"u"}, {U"gU", Operator::UpperCase, U"U"},
};

// Keys that stand for others.
struct Alias {
    std::u32string_view keys;
    std::u32string_view meaning;
};
constexpr Alias kNormalAliases[] = {
    {U"x", U"dl"},     {U"\x7F", U"dl"},  {U"X", U"dh"},     {U"D", U"d$"},
    {U"C", U"c$"},     {U"s", U"cl"},     {U"S", U"cc"},     {U"Y", U"yy"},
    {U"g~g~", U"g~~"}, {U"gugu", U"guu"}, {U"gUgU", U"gUU"},
};

// In Visual mode an operator acts at once; some of its keys mean the whole lines.
struct VisualOperator {
    std::u32string_view keys;
    Operator op;
    bool lines = false;
};
constexpr VisualOperator kVisualOperators[] = {
    {U"d", Operator::Delete},       {U"x", Operator::Delete},       {U"\x7F", Operator::Delete},
    {U"D", Operator::Delete, true}, {U"X", Operator::Delete, true}, {U"c", Operator::Change},
    {U"s", Operator::Change},       {U"C", Operator::Change, true}, {U"S", Operator::Change, true},
    {U"R", Operator::Change, true}, {U"y", Operator::Yank},         {U"Y", Operator::Yank, true},
    {U">", Operator::Indent},       {U"<", Operator::Outdent},      {U"~", Operator::SwapCase},
    {U"g~", Operator::SwapCase},    {U"u", Operator::LowerCase},    {U"gu", Operator::LowerCase},
    {U"U", Operator::UpperCase},    {U"gU", Operator::UpperCase},
};

// Reads the keys of one command from their start.
class Reader {
public:
    explicit Reader(std::u32string_view keys) : rest_(keys) {}

    bool Empty() const { return rest_.empty(); }
    bool Prefix() const { return prefix_; }

    bool Take(std::u32string_view keys) {
        if (rest_.starts_with(keys)) {
            rest_.remove_prefix(keys.size());
            return true;
        }
        prefix_ |= keys.starts_with(rest_);
        return false;
    }
    // The row whose keys come next. Without one, Prefix tells whether more keys could make one.
    template <class Rows>
    auto Take(const Rows& rows) -> decltype(&*std::begin(rows)) {
        for (const auto& row : rows) {
            if (Take(row.keys)) return &row;
        }
        return nullptr;
    }
    // 0 without a count; the digit 0 cannot begin one.
    int Count() {
        int count = 0;
        while (!rest_.empty() && rest_[0] >= (count > 0 ? U'0' : U'1') && rest_[0] <= U'9') {
            count = std::min(count * 10 + static_cast<int>(rest_[0] - U'0'), kMostTimes);
            rest_.remove_prefix(1);
        }
        return count;
    }
    bool TakeCharacter(char32_t& character) {
        if (rest_.empty()) return false;
        character = rest_[0];
        return true;
    }

private:
    std::u32string_view rest_;
    bool prefix_ = false;
};

int Product(int a, int b) {
    if (a == 0 || b == 0) return a + b;
    return std::min(a * b, kMostTimes);
}

Parsed Missed(const Reader& reader) {
    return reader.Prefix() ? Parsed::Incomplete : Parsed::Unknown;
}

Parsed ParseMotion(Reader& reader, Command& command) {
    command.motion = reader.Take(Motions());
    if (!command.motion) return Missed(reader);
    switch (command.motion->takes) {
        case Motion::Takes::Nothing:
            return Parsed::Complete;
        case Motion::Takes::Text:
            return Parsed::NeedsText;
        case Motion::Takes::Character:
            break;
    }
    return reader.TakeCharacter(command.character) ? Parsed::Complete : Parsed::Incomplete;
}

Parsed ParseBehindOperator(Reader& reader, Command& command) {
    command.count = Product(command.count, reader.Count());
    if (reader.Empty()) return Parsed::Incomplete;
    if (reader.Take(command.op->again)) {
        command.lines = true;
        return Parsed::Complete;
    }
    command.object = reader.Take(TextObjects());
    if (command.object) return Parsed::Complete;
    const Parsed parsed = ParseMotion(reader, command);
    command.lines = parsed == Parsed::Complete && command.motion->keys == U"_";
    return parsed;
}

// Nothing when the keys are no act's.
std::optional<Parsed> ParseAct(Reader& reader, std::span<const ActRow> acts, Command& command) {
    command.act = reader.Take(acts);
    if (!command.act) command.act = reader.Take(ActsInEitherMode());
    if (!command.act) return std::nullopt;
    if (!command.act->takes_character) return Parsed::Complete;
    return reader.TakeCharacter(command.character) ? Parsed::Complete : Parsed::Incomplete;
}

Parsed ParseVisual(Reader& reader, Command& command) {
    if (const VisualOperator* row = reader.Take(kVisualOperators)) {
        command.op = RowOf(row->op);
        command.lines = row->lines;
        return Parsed::Complete;
    }
    if (const auto parsed = ParseAct(reader, VisualActs(), command)) return *parsed;
    command.object = reader.Take(TextObjects());
    if (command.object) return Parsed::Complete;
    return ParseMotion(reader, command);
}

}  // namespace

const OperatorRow* RowOf(Operator op) {
    return &*std::ranges::find(kOperators, op, &OperatorRow::op);
}

Parsed Parse(std::u32string_view keys, Mode mode, Command& command) {
    Reader reader(keys);
    command = {};
    command.count = reader.Count();
    if (reader.Empty()) return Parsed::Incomplete;
    if (IsVisual(mode)) return ParseVisual(reader, command);
    if (const Alias* alias = reader.Take(kNormalAliases)) {
        const int count = command.count;
        const Parsed parsed = Parse(alias->meaning, mode, command);
        command.count = count;
        return parsed;
    }
    if (const auto parsed = ParseAct(reader, NormalActs(), command)) return *parsed;
    command.op = reader.Take(kOperators);
    return command.op ? ParseBehindOperator(reader, command) : ParseMotion(reader, command);
}

}  // namespace zo::ui::vi
