#pragma once

#include "shell/screen.h"

namespace Kest {

// The screen that the game opens on: its name in large letters and a short menu, which grows with
// the player's progress.
class Title final : public Screen {
public:
    using Screen::Screen;

    std::string_view Name() const override { return "title"; }
    void Entered() override;
    void Uncovered() override;
    std::optional<MusicScene> Music() const override { return MusicScene::Title; }
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override { return menu_.Key(key); }
    int Highlight() const override { return menu_.Chosen(); }

private:
    void Fill();
    std::string ContinueHint() const;

    zo::ui::Menu menu_;
};

}  // namespace Kest
