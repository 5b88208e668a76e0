#include "base/wrap.h"
#include "commands.h"
#include "content/binder.h"
#include "text.h"

namespace lc1 {
namespace {

constexpr int kWidth = 72;  // of a line of prose, so that a page can be printed with a margin

void PrintPage(const kp::BinderPage& page, bool colour) {
    const std::size_t taken = page.title.size() + page.section.size();
    const std::size_t gap = taken + 2 < kWidth ? kWidth - taken : 2;
    PutLine(Inked(page.title, Ink::Good, colour) + std::string(gap, ' ') + page.section);
    PutLine();
    for (const std::string& item : page.body) {
        if (kp::IsKept(item)) {
            PutLine(item);
            continue;
        }
        for (const std::string& line : base::WrapPlain(item, kWidth)) PutLine(line);
    }
}

void PrintList(const std::vector<kp::BinderPage>& pages, bool colour) {
    std::string_view section;
    for (const kp::BinderPage& page : pages) {
        if (page.section != section) {
            section = page.section;
            PutLine(Inked(section, Ink::Good, colour));
        }
        PutLine("  " + page.title);
    }
}

// The list of pages, then each behind a line that begins a new sheet on a printer.
void PrintAll(const std::vector<kp::BinderPage>& pages, bool colour) {
    PutLine(Inked("Spec Binder", Ink::Good, colour));
    PutLine();
    PrintList(pages, colour);
    for (const kp::BinderPage& page : pages) {
        PutLine("\f");
        PrintPage(page, colour);
    }
}

}  // namespace

Outcome RunBinder(const Request& request) {
    const base::Result<std::vector<kp::BinderPage>> pages =
        kp::LoadBinder(kp::ContentStore::BuiltIn());
    if (!pages) return Problem{pages.Message()};
    if (request.files.empty()) {
        PrintAll(*pages, request.colour);
        return ExitCode::Pass;
    }
    const kp::BinderPage* page = kp::FindPage(*pages, request.files[0]);
    if (page == nullptr) {
        return Problem{"there is no binder page " + request.files[0] +
                       "; a page has an id and a number, such as ack-nak or 3.6"};
    }
    PrintPage(*page, request.colour);
    return ExitCode::Pass;
}

}  // namespace lc1
