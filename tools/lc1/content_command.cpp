#include "base/disk.h"
#include "base/format.h"
#include "campaign_text.h"
#include "commands.h"
#include "json_line.h"
#include "native/system_disk.h"
#include "text.h"

namespace lc1 {
namespace {

void WriteTicket(JsonLine& out, const kp::LoadedTicket& loaded) {
    out.Object();
    out.Text("id", loaded.ticket.id);
    out.Text("title", loaded.ticket.title);
    out.Number("difficulty", loaded.ticket.difficulty);
    out.Number("lines", loaded.reference.lines);
    out.Number("ticks", loaded.reference.ticks);
    out.End();
}

void WriteJson(const kp::Content& content) {
    JsonLine out;
    out.Text("title", content.title);
    out.Array("shifts");
    for (const kp::Shift& shift : content.shifts) {
        out.Object();
        out.Number("number", shift.number);
        out.Text("title", shift.title);
        out.Array("tickets");
        for (const kp::LoadedTicket& loaded : shift.tickets) WriteTicket(out, loaded);
        out.End();
        out.End();
    }
    out.End();
    out.Array("pages");
    for (const kp::BinderPage& page : content.pages) out.Text({}, page.id);
    out.End();
    out.Texts("problems", content.problems);
}

void PrintText(const kp::Content& content, bool colour) {
    PutLine(content.title);
    PrintCampaign(content, colour);
    PutLine(base::Format("%zu tickets, %zu binder pages, %zu problems", content.Tickets().size(),
                         content.pages.size(), content.problems.size()));
    for (const std::string& problem : content.problems) {
        PutLine(Inked(kFailMark, Ink::Bad, colour) + ' ' + problem);
    }
}

}  // namespace

Outcome RunContent(const Request& request) {
    zo::platform::SystemDisk disk;
    const base::Result<kp::ContentStore> store =
        kp::ContentStore::FromFolder(disk, base::TextPath(request.files.front()));
    if (!store) return FirstProblem(store.Message());
    const kp::Content content = kp::LoadContent(*store);
    if (request.json) {
        WriteJson(content);
    } else {
        PrintText(content, request.colour);
    }
    return content.problems.empty() ? ExitCode::Pass : ExitCode::Fail;
}

}  // namespace lc1
