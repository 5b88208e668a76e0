#pragma once

#include <functional>
#include <string>
#include <vector>

#include "music/effects.h"
#include "shell/screen.h"

namespace Kest {

// A question with one or two buttons over the screen.
class ConfirmDialog final : public Screen {
public:
    struct Contents {
        std::string title = {};
        std::string message = {};
        std::vector<std::string> buttons = {};  // one or two
        int focused = 0;
        std::function<void(int button)> answered = {};  // Esc answers with the last button
    };
    ConfirmDialog(Shell& shell, Contents contents);

    std::string_view Name() const override { return "confirm"; }
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override;
    int Highlight() const override { return dialog_.buttons.Focused(); }

private:
    int LastButton() const;
    Effect SoundOf(int button) const;
    void Answer(int button, Effect sound);

    Contents contents_;
    zo::ui::Dialog dialog_;
};

}  // namespace Kest
