#pragma once

#include <string>
#include <string_view>

#include "shell/screen.h"

namespace Kest {

// The player's settings over any screen. Each change takes effect and is kept at once.
class Options final : public Screen {
public:
    // `row` is the number of the row that is chosen first, from 1; without one the first.
    Options(Shell& shell, std::string_view row);

    std::string_view Name() const override { return "options"; }
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override;

private:
    bool MoveKey(const zo::ui::KeyPress& key);
    bool LetterKey(char32_t letter);
    void Close();
    int Stops() const;

    void DrawRow(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& at,
                 int index);
    void DrawClose(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& box);

    bool wide_ = false;  // as drawn last: with the explanations and a button to close
    int chosen_;         // a row, or behind the last the button
};

}  // namespace Kest
