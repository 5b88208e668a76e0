#pragma once

#include <string>

#include "shell/screen.h"
#include "ui/code_editor.h"
#include "ui/text_pane.h"

namespace Kest {

// The bench without a ticket: it says which one there is not, beside an editor for nothing.
class MissingTicket final : public Screen {
public:
    MissingTicket(Shell& shell, std::string_view id);

    std::string_view Name() const override { return "bench"; }
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override;

private:
    zo::ui::TextPane text_;
    zo::ui::CodeEditor editor_;
};

}  // namespace Kest
