#include "ui/label.h"

#include "base/utf.h"
#include "ui/text_cells.h"

namespace zo::ui {

Label::Label(std::string_view marked) : before(marked) {
    const std::size_t from = marked.find('~');
    if (from == std::string_view::npos) return;
    const std::size_t to = marked.find('~', from + 1);
    if (to == std::string_view::npos) return;
    before = marked.substr(0, from);
    hot = marked.substr(from + 1, to - from - 1);
    after = marked.substr(to + 1);
}

int Label::Cells() const {
    return zo::ui::Cells(before) + zo::ui::Cells(hot) + zo::ui::Cells(after);
}

char32_t Label::Hotkey() const {
    if (hot.empty()) return 0;
    std::size_t at = 0;
    const char32_t key = base::NextCodePoint(hot, at);
    return key >= U'A' && key <= U'Z' ? key - U'A' + U'a' : key;
}

}  // namespace zo::ui
