#include "subject.h"

#include <cstdio>
#include <filesystem>
#include <utility>

#include "base/disk.h"
#include "base/format.h"
#include "content/content.h"
#include "json/parser.h"
#include "native/system_disk.h"

namespace lc1 {
namespace {

bool NamesFiles(const Request& request) {
    return (request.given & kTicket) != 0;
}

// One of the texts that a built-in ticket consists of; `file` tells which.
std::optional<Problem> ReadBuiltIn(const Request& request, std::string (*file)(std::string_view),
                                   std::string& text) {
    const kp::ContentStore store = kp::ContentStore::BuiltIn();
    const base::Result<std::string> id = kp::FindTicketId(store, request.files.front());
    if (!id) return Problem{id.Message()};
    const base::Result<std::string_view> found = store.Lookup(file(*id));
    if (!found) return Problem{found.Message()};
    text = *found;
    return std::nullopt;
}

std::optional<Problem> ReadReference(const Request& request, std::string& text) {
    if (NamesFiles(request)) return ReadFile(request.reference, text);
    return ReadBuiltIn(request, kp::ReferenceFile, text);
}

std::string ReadStandardInput() {
    std::string text;
    char chunk[16384];
    while (const std::size_t got = std::fread(chunk, 1, sizeof chunk, stdin)) {
        text.append(chunk, got);
    }
    return text;
}

}  // namespace

std::optional<Problem> LoadTicket(const Request& request, kp::Ticket& ticket) {
    std::string text;
    std::optional<Problem> unread = NamesFiles(request)
                                        ? ReadFile(request.ticket, text)
                                        : ReadBuiltIn(request, kp::TicketFile, text);
    if (unread) return unread;
    json::Value value;
    json::Error error;
    if (!json::Parse(text, value, error)) {
        const std::string& path = NamesFiles(request) ? request.ticket : request.files.front();
        const std::string name = base::PathText(base::TextPath(path).filename());
        return Problem{name + base::Format(":%u:%u: ", error.line, error.column) + error.message,
                       error.line, error.column};
    }
    base::Result<kp::Ticket> parsed = kp::ParseTicket(value);
    if (!parsed) return Problem{parsed.Message()};
    ticket = std::move(*parsed);
    return std::nullopt;
}

std::optional<Problem> LoadSubject(const Request& request, Subject& subject, kp::Session& session) {
    if (std::optional<Problem> problem = LoadTicket(request, subject.ticket)) return problem;
    std::string text;
    if (std::optional<Problem> problem = ReadReference(request, subject.reference_text))
        return problem;
    base::Result<kp::Reference> reference =
        kp::ProveReference(subject.ticket, subject.reference_text, session);
    if (!reference) return Problem{reference.Message()};
    subject.reference = std::move(*reference);
    if (std::optional<Problem> problem = ReadFirmware(request, text)) return problem;
    subject.firmware = kp::Assemble(text, subject.ticket.machine);
    return std::nullopt;
}

std::optional<Problem> ReadFirmware(const Request& request, std::string& firmware) {
    const std::string& path = request.files.back();
    if (path != "-") return ReadFile(path, firmware);
    firmware = ReadStandardInput();
    return std::nullopt;
}

std::optional<Problem> ReadFile(const std::string& path, std::string& text) {
    zo::platform::SystemDisk disk;
    base::Result<std::string> read = disk.Read(base::TextPath(path));
    if (!read) return Problem{"cannot read " + path + ": " + read.Message()};
    text = std::move(*read);
    return std::nullopt;
}

}  // namespace lc1
