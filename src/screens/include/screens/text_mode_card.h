#pragma once

#include "shell/screen.h"

namespace Kest {

// Shows every kind of glyph and the main colours of the display, beside the choices that decide
// them. A new player meets it before the title, once.
class TextModeCard final : public Screen {
public:
    using Screen::Screen;

    std::string_view Name() const override { return "textmode"; }
    void Entered() override;
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override;
    int Highlight() const override { return chosen_; }

private:
    static constexpr int kChoices = 3;
    static constexpr int kContinue = kChoices;

    bool MoveKey(const zo::ui::KeyPress& key);
    bool LetterKey(char32_t letter);
    void Choose(int row, int value);
    void DrawChoice(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& at,
                    int row);

    int chosen_ = kContinue;  // a choice, or the button
};

}  // namespace Kest
