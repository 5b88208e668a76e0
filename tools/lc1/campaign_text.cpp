#include "campaign_text.h"

#include <sstream>

#include "base/format.h"
#include "text.h"

namespace lc1 {
namespace {

constexpr int kMostDifficult = 5;

std::size_t Words(const std::string& text) {
    std::istringstream stream(text);
    std::size_t words = 0;
    for (std::string word; stream >> word;) ++words;
    return words;
}

std::size_t Words(const std::vector<std::string>& texts) {
    std::size_t words = 0;
    for (const std::string& text : texts) words += Words(text);
    return words;
}

// Lines and ticks of a solution that passes; empty cells for any other, and for none.
class Scores {
public:
    explicit Scores(const std::vector<kp::Solutions>* kept) : kept_(kept) {}

    void AddTo(std::vector<std::string>& cells, const kp::LoadedTicket& loaded) {
        const kp::Solutions* solutions = Of(loaded.ticket.id);
        const bool attempts = solutions != nullptr && !solutions->attempts.empty();
        AddTo(cells, loaded,
              solutions != nullptr && solutions->plain ? &*solutions->plain : nullptr);
        AddTo(cells, loaded, attempts ? &solutions->attempts.back() : nullptr);
    }

private:
    const kp::Solutions* Of(const std::string& ticket) const {
        if (kept_ == nullptr) return nullptr;
        for (const kp::Solutions& solutions : *kept_) {
            if (solutions.ticket == ticket) return &solutions;
        }
        return nullptr;
    }

    void AddTo(std::vector<std::string>& cells, const kp::LoadedTicket& loaded,
               const kp::KeptFirmware* firmware) {
        kp::VerifyResult result;
        if (firmware != nullptr) {
            result = kp::Verify(loaded.ticket, loaded.reference,
                                kp::Assemble(firmware->text, loaded.ticket.machine), session_);
        }
        cells.push_back(result.AllPassed() ? std::to_string(result.lines) : "");
        cells.push_back(result.AllPassed() ? std::to_string(result.ticks) : "");
    }

    const std::vector<kp::Solutions>* kept_;
    kp::Session session_;
};

}  // namespace

std::string DifficultyText(int difficulty) {
    std::string text;
    for (int k = 1; k <= kMostDifficult; ++k) text += k <= difficulty ? "♦" : "·";
    return text;
}

void PrintCampaign(const kp::Content& content, bool colour,
                   const std::vector<kp::Solutions>* kept) {
    using enum TextTable::Align;
    TextTable table({{"ticket"},
                     {"title"},
                     {"client"},
                     {""},
                     {"lines", Right},
                     {"ticks", Right},
                     {"plain", Right},
                     {"ticks", Right},
                     {"second", Right},
                     {"ticks", Right}});
    Scores scores(kept);
    for (const kp::Shift& shift : content.shifts) {
        std::vector<std::string> head(10);
        head.front() = base::Format("Shift %d, ", shift.number) + shift.title;
        table.Add(std::move(head), Ink::Good);
        for (const kp::LoadedTicket& loaded : shift.tickets) {
            const kp::Ticket& ticket = loaded.ticket;
            std::vector<std::string> cells = {"  " + ticket.id,
                                              ticket.title,
                                              ticket.client,
                                              DifficultyText(ticket.difficulty),
                                              std::to_string(loaded.reference.lines),
                                              std::to_string(loaded.reference.ticks)};
            scores.AddTo(cells, loaded);
            table.Add(std::move(cells));
        }
    }
    table.Print(colour);
}

void PrintTotals(const kp::Content& content) {
    std::size_t tests = 0, text = 0, hints = 0, hint_words = 0, pages = 0;
    for (const kp::LoadedTicket* loaded : content.Tickets()) {
        tests += loaded->ticket.tests.size();
        text += Words(loaded->ticket.text);
        hints += loaded->ticket.hints.size();
        hint_words += Words(loaded->ticket.hints);
    }
    for (const kp::BinderPage& page : content.pages) pages += Words(page.body);
    PutLine(base::Format("%zu tickets with %zu tests, %zu words of text, %zu hints in %zu words",
                         content.Tickets().size(), tests, text, hints, hint_words));
    PutLine(base::Format("%zu binder pages in %zu words", content.pages.size(), pages));
}

}  // namespace lc1
