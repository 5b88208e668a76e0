#pragma once

#include <optional>
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
    std::optional<MusicScene> Music() const override { return MusicScene::Reading; }
    void Entered() override;
    void Update(double now) override;
    std::optional<double> NextFrameAt() const override { return tone_at_; }
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override;
    int Highlight() const override { return chosen_; }

private:
    // What the test tone lets the player judge.
    struct Volumes {
        float effects = 0;
        float line = 0;
        bool operator==(const Volumes&) const = default;
    };

    Volumes VolumesNow() const;
    bool MoveKey(const zo::ui::KeyPress& key);
    bool LetterKey(char32_t letter);
    void Close();
    int Stops() const;

    void DrawRow(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& at,
                 int index);
    void DrawClose(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& box);

    bool wide_ = false;  // as drawn last: with the explanations and a button to close
    int chosen_;         // a row, or behind the last the button
    Volumes volumes_;    // as changed last
    std::optional<double> tone_at_ = std::nullopt;  // when the sliders have rested
};

}  // namespace Kest
