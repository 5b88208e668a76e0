#include <optional>
#include <utility>

#include "content/content.h"

namespace kp {
namespace {

constexpr std::string_view kCampaignFile = "missions/campaign.json";
constexpr std::string_view kMailFile = "missions/mail.json";
constexpr std::string_view kTicketFolder = "missions/";
constexpr std::string_view kTicketEnding = ".json";
constexpr std::size_t kShortIdLength = 4;  // "1-02" of "1-02-loopback"

// From a ticket's own file to a ticket proven solvable. The failure is without the ticket's id.
base::Result<LoadedTicket> ProveTicket(const ContentStore& store, std::string_view id,
                                       const json::Value& file, Session& session,
                                       json::Remarks* remarks = nullptr) {
    const base::Result<std::string_view> text = store.Lookup(ReferenceFile(id));
    if (!text) return base::Failure{"reference firmware is missing"};
    base::Result<Ticket> ticket = ParseTicket(file, remarks);
    if (!ticket) return base::Failure{ticket.Message()};
    if (ticket->id != id) return base::Failure{"the file's id is " + ticket->id};
    base::Result<Reference> reference = ProveReference(*ticket, *text, session);
    if (!reference) return base::Failure{reference.Message()};
    return LoadedTicket{std::move(*ticket), std::string(*text), std::move(*reference)};
}

// One load: the store that is read, the content as it grows, and a session for all proofs.
class Loader {
public:
    Loader(const ContentStore& store, json::Remarks* remarks) : store_(store), remarks_(remarks) {}

    Content Load() {
        LoadCampaign();
        Take(LoadBinder(store_, remarks_), content_.pages);
        Take(LoadCoach(store_, remarks_), content_.coach);
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

    json::Fields FieldsOf(const json::Value& file, std::string_view name) {
        return {file, remarks_, remarks_ != nullptr ? std::string(name) : std::string()};
    }

    void LoadCampaign() {
        const std::optional<json::Value> file = Read(kCampaignFile);
        if (!file) return;
        json::Fields campaign = FieldsOf(*file, kCampaignFile);
        content_.title = campaign.Text("title");
        const std::size_t count = campaign.List("shifts").size();
        for (std::size_t k = 0; k < count; ++k) LoadShift(campaign.Item("shifts", k));
        campaign.RemarkUnknown();
    }

    void LoadShift(json::Fields value) {
        Shift shift;
        shift.number =
            value.Number("number", static_cast<std::int32_t>(content_.shifts.size()) + 1);
        shift.title = value.Text("title");
        shift.subtitle = value.Text("subtitle");
        shift.intro = value.Text("intro");
        shift.outro = value.Text("outro");
        for (const json::Value& id : value.List("missions")) LoadTicket(json::String(id), shift);
        value.RemarkUnknown();
        content_.shifts.push_back(std::move(shift));
    }

    void LoadTicket(const std::string& id, Shift& shift) {
        const std::optional<json::Value> file = Read(TicketFile(id));
        if (!file) {
            content_.left_out.push_back({id, content_.problems.back()});
            return;
        }
        json::Remarks remarks;
        base::Result<LoadedTicket> ticket =
            ProveTicket(store_, id, *file, session_, remarks_ != nullptr ? &remarks : nullptr);
        if (!ticket) {
            content_.problems.push_back(id + ": " + ticket.Message());
            content_.left_out.push_back({id, ticket.Message()});
            return;
        }
        shift.tickets.push_back(std::move(*ticket));
        for (const std::string& remark : remarks) remarks_->push_back(id + ": " + remark);
    }

    // A part of the content with a file of its own: its items, or a problem.
    template <class Item>
    void Take(base::Result<std::vector<Item>> items, std::vector<Item>& into) {
        if (items) {
            into = std::move(*items);
        } else {
            content_.problems.push_back(items.Message());
        }
    }

    void LoadMail() {
        const std::optional<json::Value> file = Read(kMailFile);
        if (!file) return;
        json::Fields mail = FieldsOf(*file, kMailFile);
        const std::size_t count = mail.List("messages").size();
        for (std::size_t k = 0; k < count; ++k) {
            json::Fields message = mail.Item("messages", k);
            content_.mail.push_back({message.Text("id"), message.Text("from"),
                                     message.Text("subject"), message.Text("after"),
                                     message.Texts("body")});
            message.RemarkUnknown();
        }
        mail.RemarkUnknown();
    }

    const ContentStore& store_;
    json::Remarks* remarks_;
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

Content LoadContent(const ContentStore& store, json::Remarks* remarks) {
    return Loader(store, remarks).Load();
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
