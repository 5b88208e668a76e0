#pragma once

#include <optional>
#include <string_view>

#include "shell/screen.h"

namespace Kest {

// The machine starts: a few lines type themselves, then the game's name stands where the title will
// have it. Any key or button goes on.
class Splash final : public Screen {
public:
    using Screen::Screen;

    std::string_view Name() const override { return "splash"; }
    void Entered() override;
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override { record.bars = false; }
    std::optional<double> NextFrameAt() const override;
    void Describe(Speech& speech) const override;
    bool Key(const zo::ui::KeyPress& key) override;
    bool AnyButton() override;
    std::optional<MusicScene> Music() const override { return MusicScene::Title; }
    // "start" stays with the lines, all typed.
    bool CaptureRequest(std::string_view request) override;

private:
    double Seconds() const;  // since it came up
    void DrawStart(zo::ui::Canvas& canvas) const;

    double entered_at_ = 0;
    bool stays_ = false;
    bool named_ = false;  // as drawn last
};

}  // namespace Kest
