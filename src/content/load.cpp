#include <optional>
#include <utility>

#include "content/content.h"

namespace kp {
namespace {

constexpr std::string_view kCampaignFile = "missions/campaign.json";
constexpr std::string_view kBinderFile = "missions/binder.json";
constexpr std::string_view kMailFile = "missions/mail.json";
constexpr std::string_view kTicketFolder = "missions/";
constexpr std::string_view kTicketEnding = ".json";
constexpr std::size_t kShortIdLength = 4;  // "1-02" of "1-02-loopback"

// From a ticket's own file to a ticket proven solvable. The failure is without the ticket's id.
base::Result<LoadedTicket> ProveTicket(const ContentStore& store, std::string_view id,
                                       const json::Value& file, Session& session) {
    const base::Result<std::string_view> text = store.Lookup(ReferenceFile(id));
    if (!text) return base::Failure{"reference firmware is missing"};
    base::Result<Ticket> ticket = ParseTicket(file);
    if (!ticket) return base::Failure{ticket.Message()};
    if (ticket->id != id) return base::Failure{"the file's id is " + ticket->id};
    base::Result<Reference> reference = ProveReference(*ticket, *text, session);
    if (!reference) return base::Failure{reference.Message()};
    return LoadedTicket{std::move(*ticket), std::string(*text), std::move(*reference)};
}

// One load: the store that is read, the content as it grows, and a session for all proofs.
class Loader {
public:
    explicit Loader(const ContentStore& store) : store_(store) {}

    Content Load() {
        LoadCampaign();
        LoadBinder();
        if (store_.Holds(kMailFile)) LoadMail();
        return std::move(content_);
    }

private:
    std::optional<json::Value> Read(std::string_view name) {
        base::Result<json::Value> value = store_.ReadJson(name);
        if (value) return std::move(*value);
        content_.problems.push_back(value.Message());
        return std::nullopt;
    }

    void LoadCampaign() {
        const std::optional<json::Value> campaign = Read(kCampaignFile);
        if (!campaign) return;
        content_.title = json::StringOr(*campaign, "title", "");
        for (const json::Value& shift : json::Member(*campaign, "shifts").items) LoadShift(shift);
    }

    void LoadShift(const json::Value& value) {
        Shift shift;
        shift.number =
            json::IntOr(value, "number", static_cast<std::int32_t>(content_.shifts.size()) + 1);
        shift.title = json::StringOr(value, "title", "");
        shift.subtitle = json::StringOr(value, "subtitle", "");
        shift.intro = json::StringOr(value, "intro", "");
        shift.outro = json::StringOr(value, "outro", "");
        for (const json::Value& id : json::Member(value, "missions").items) {
            LoadTicket(json::String(id), shift);
        }
        content_.shifts.push_back(std::move(shift));
    }

    void LoadTicket(const std::string& id, Shift& shift) {
        const std::optional<json::Value> file = Read(TicketFile(id));
        if (!file) return;
        base::Result<LoadedTicket> ticket = ProveTicket(store_, id, *file, session_);
        if (ticket) {
            shift.tickets.push_back(std::move(*ticket));
        } else {
            content_.problems.push_back(id + ": " + ticket.Message());
        }
    }

    void LoadBinder() {
        const std::optional<json::Value> binder = Read(kBinderFile);
        if (!binder) return;
        for (const json::Value& page : json::Member(*binder, "pages").items) {
            content_.pages.push_back(
                {json::StringOr(page, "id", ""), json::StringOr(page, "title", ""),
                 json::StringOr(page, "section", ""), ReadTextList(json::Member(page, "body"))});
        }
    }

    void LoadMail() {
        const std::optional<json::Value> mail = Read(kMailFile);
        if (!mail) return;
        for (const json::Value& message : json::Member(*mail, "messages").items) {
            content_.mail.push_back(
                {json::StringOr(message, "id", ""), json::StringOr(message, "from", ""),
                 json::StringOr(message, "subject", ""), json::StringOr(message, "after", ""),
                 ReadTextList(json::Member(message, "body"))});
        }
    }

    const ContentStore& store_;
    Session session_;
    Content content_;
};

// The id that a ticket's file name holds; nothing for a file of another kind.
std::optional<std::string_view> IdOfFile(std::string_view name) {
    if (!name.starts_with(kTicketFolder) || !name.ends_with(kTicketEnding)) return std::nullopt;
    name.remove_prefix(kTicketFolder.size());
    name.remove_suffix(kTicketEnding.size());
    return name;
}

}  // namespace

std::string TicketFile(std::string_view id) {
    return std::string(kTicketFolder) + std::string(id) + std::string(kTicketEnding);
}

std::string ReferenceFile(std::string_view id) {
    return "missions/reference/" + std::string(id) + ".lc1";
}

Content LoadContent(const ContentStore& store) {
    return Loader(store).Load();
}

base::Result<std::string> FindTicketId(const ContentStore& store, std::string_view name) {
    if (store.Holds(TicketFile(name))) return std::string(name);
    const std::string beginning = std::string(name) + '-';
    for (const std::string& file : store.Names()) {
        const std::optional<std::string_view> id = IdOfFile(file);
        if (name.size() == kShortIdLength && id && id->starts_with(beginning)) {
            return std::string(*id);
        }
    }
    return base::Failure{"there is no ticket " + std::string(name)};
}

base::Result<LoadedTicket> LoadOneTicket(const ContentStore& store, std::string_view name) {
    const base::Result<std::string> id = FindTicketId(store, name);
    if (!id) return base::Failure{id.Message()};
    const base::Result<json::Value> file = store.ReadJson(TicketFile(*id));
    if (!file) return base::Failure{file.Message()};
    Session session;
    return ProveTicket(store, *id, *file, session);
}

}  // namespace kp
