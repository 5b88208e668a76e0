#include "subject.h"

#include <cstdio>
#include <filesystem>

#include "base/disk.h"
#include "base/format.h"
#include "base/utf.h"
#include "hum/assemble.h"
#include "hum/compile.h"
#include "music/song_texts.h"
#include "native/system_disk.h"

namespace hum_command {
namespace {

constexpr std::string_view kStandardInput = "-";

// Files beside the one that includes them.
class FileIncludes final : public hum::Includes {
public:
    explicit FileIncludes(base::Disk& disk) : disk_(disk) {}

    Text Find(std::string_view from, std::string_view name) override {
        const std::filesystem::path path =
            base::TextPath(from).parent_path() / base::TextPath(name);
        const std::filesystem::path known = path.lexically_normal();
        if (name.empty() || !disk_.Exists(known)) return {Found::No, {}, {}};
        const base::Result<std::string> text = disk_.Read(known);
        if (!text) return {Found::Unreadable, {}, {}};
        return {Found::Yes, base::PathText(known), *text};
    }

private:
    base::Disk& disk_;
};

std::string ReadStandardInput() {
    std::string text;
    char part[65536];
    for (std::size_t count = 0; (count = std::fread(part, 1, sizeof part, stdin)) > 0;) {
        text.append(part, count);
    }
    return text;
}

}  // namespace

std::optional<Problem> LoadSubject(const Request& request, Subject& subject) {
    zo::platform::SystemDisk disk;
    FileIncludes includes(disk);
    const std::string& file = request.files[0];
    hum::ProgramText program;
    program.includes = &includes;
    std::string text;
    std::string name;
    std::string path;
    const std::string_view song =
        disk.Exists(base::TextPath(file)) ? std::string_view() : Kest::SongSource(file);
    if (file == kStandardInput) {
        text = ReadStandardInput();
    } else if (!song.empty()) {
        text = song;
        name = file + ".hum";
    } else {
        base::Result<std::string> read = disk.Read(base::TextPath(file));
        if (!read) return Problem{"cannot read " + file + ": " + read.Message()};
        text = std::move(*read);
        path = base::PathText(base::TextPath(file).lexically_normal());
        name = base::PathText(base::TextPath(file).filename());
    }
    program.name = name;
    program.path = path;
    program.text = text;
    if (request.library) program.library = Kest::SongLibrary();
    const bool is_listing = base::TextPath(file).extension() == ".hasm";
    subject.fault = is_listing ? hum::Assemble(name, text, subject.program)
                               : hum::Compile(program, subject.program);
    return std::nullopt;
}

ExitCode ReportFault(const Request& request, const hum::Fault& fault) {
    if (request.Json()) {
        std::printf(
            "{\"ok\": false, \"name\": %s, \"line\": %u, \"column\": %u, \"message\": %s}\n",
            JsonText(fault.name).c_str(), fault.line, fault.column,
            JsonText(fault.message).c_str());
    } else {
        std::fprintf(stderr, "%s\n", hum::FaultText(fault).c_str());
    }
    return ExitCode::Fault;
}

std::string JsonText(std::string_view text) {
    std::string json = "\"";
    for (std::size_t at = 0; at < text.size();) {
        const char32_t code = base::NextCodePoint(text, at);
        if (code == U'"' || code == U'\\') {
            json += '\\';
            json += static_cast<char>(code);
        } else if (code < 0x20) {
            json += base::Format("\\u%04x", static_cast<unsigned>(code));
        } else {
            base::AppendUtf8(json, code);
        }
    }
    return json + '"';
}

}  // namespace hum_command
