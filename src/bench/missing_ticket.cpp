#include "missing_ticket.h"

#include "bench/bench.h"
#include "shell/shell.h"
#include "ui/widgets.h"

namespace Kest {

using zo::ui::Rect;

std::unique_ptr<Screen> MakeBench(Shell& shell, std::string_view ticket_id) {
    const kp::LoadedTicket* loaded = shell.Content().FindTicket(ticket_id);
    if (loaded == nullptr) return std::make_unique<MissingTicket>(shell, ticket_id);
    return std::make_unique<Bench>(shell, *loaded);
}

MissingTicket::MissingTicket(Shell& shell, std::string_view id) : Screen(shell) {
    text_.Set({{.text = "Ticket not found: " + std::string(id)}});
    editor_.SetReadOnly(true);
}

void MissingTicket::Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) {
    const int side = CardPaneWidth(canvas.Columns(), canvas.Rows());
    const int height = canvas.Rows() - 3;
    const Rect firmware{0, 1, canvas.Columns() - side, height};
    const Rect ticket{firmware.Right(), 1, side, height};
    zo::ui::DrawPane(canvas, firmware, "FIRMWARE", false);
    editor_.Draw(canvas, pressables, firmware, false);
    zo::ui::DrawPane(canvas, ticket, "TICKET", true);
    text_.Draw(canvas, pressables, ticket);
}

void MissingTicket::DescribeFrame(FrameRecord& record) const {
    record.title = "BENCH";
    if (shell_.Offers(Place::Pause)) {
        record.keys.push_back({{.key = zo::ui::Key::Escape}, "", "Menu"});
    }
}

bool MissingTicket::Key(const zo::ui::KeyPress& key) {
    if (!key.Is(zo::ui::Key::Escape) && !key.Is(zo::ui::Key::F10)) return false;
    shell_.Open(Place::Pause);
    return true;
}

}  // namespace Kest
