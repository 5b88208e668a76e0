#include "speech_rows.h"

#include <algorithm>
#include <vector>

#include "base/utf.h"
#include "base/wrap.h"

namespace zo::term {

void SpeechRows::Say(std::string_view line) {
    lines_.emplace_back(line);
    if (lines_.size() > static_cast<std::size_t>(kMost)) lines_.pop_front();
}

void SpeechRows::Draw(ui::Frame& frame, int top, int rows) const {
    std::vector<std::string> text;
    for (const std::string& line : lines_) {
        for (std::string& row : base::WrapEven(line, std::max(frame.grid.columns, 1))) {
            text.push_back(std::move(row));
        }
    }
    const std::size_t from = text.size() - std::min(text.size(), static_cast<std::size_t>(rows));
    const ui::Ink colours = ui::Colours(ui::Look::Classic, 0, ui::Role::Status);
    for (int y = 0; y < rows; ++y) {
        const std::size_t row = from + static_cast<std::size_t>(y);
        const std::u32string glyphs = row < text.size() ? base::ToUtf32(text[row]) : U"";
        for (int x = 0; x < frame.grid.columns; ++x) {
            const auto at = static_cast<std::size_t>(x);
            frame.At(x, top + y) = {.glyph = at < glyphs.size() ? glyphs[at] : U' ',
                                    .ink = colours.ink,
                                    .ground = colours.ground,
                                    .role = ui::Role::Status};
        }
    }
}

}  // namespace zo::term
