#pragma once

#include "shell/screen.h"

namespace Kest {

// The menu over the bench and the board.
class Pause final : public Screen {
public:
    using Screen::Screen;

    std::string_view Name() const override { return "pause"; }
    std::optional<MusicScene> Music() const override { return MusicScene::Reading; }
    void Entered() override;
    void Uncovered() override;
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override { return menu_.Key(key); }
    int Highlight() const override { return menu_.Chosen(); }

private:
    void Fill();

    zo::ui::Menu menu_;
};

}  // namespace Kest
