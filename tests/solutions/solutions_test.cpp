#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/disk.h"
#include "content/content.h"

// Each ticket has a folder here: `plain.lc1` is the obvious solution, `pass` holds other good
// ideas, and `fail` wrong programs. A wrong program opens with a line of its own:
//     ; fails Two texts: The test ended after the host received 7 of 15 expected bytes.
// It names the first test that must catch the mistake and a part of the sentence the player reads.

namespace fs = std::filesystem;

namespace {

const kp::Content& BuiltIn() {
    static const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    return content;
}

fs::path FolderOf(const kp::LoadedTicket& loaded) {
    return fs::path(KEST_SOLUTIONS) / loaded.ticket.id;
}

std::string Read(const fs::path& path) {
    base::SystemDisk disk;
    auto text = disk.Read(path);
    REQUIRE_MESSAGE(text, path.string() << ": " << text.Message());
    return *text;
}

std::vector<fs::path> FirmwareIn(const fs::path& folder) {
    std::vector<fs::path> files;
    if (!fs::is_directory(folder)) return files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".lc1") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

kp::VerifyResult VerifyFirmware(const kp::LoadedTicket& loaded, std::string_view firmware) {
    kp::Session session;
    return kp::Verify(loaded.ticket, loaded.reference,
                      kp::Assemble(firmware, loaded.ticket.machine), session);
}

// What the first line of a wrong program says of it.
struct Claim {
    std::string test;
    std::string sentence;
};

Claim ReadClaim(std::string_view firmware) {
    constexpr std::string_view kOpening = "; fails ";
    const std::string_view line = firmware.substr(0, firmware.find('\n'));
    const std::size_t colon = line.find(": ");
    if (!line.starts_with(kOpening) || colon == line.npos) return {};
    return {std::string(line.substr(kOpening.size(), colon - kOpening.size())),
            std::string(line.substr(colon + 2))};
}

}  // namespace

TEST_CASE("the built-in tickets load, and every folder of firmware belongs to one") {
    CHECK(BuiltIn().problems == std::vector<std::string>{});
    for (const auto& entry : fs::directory_iterator(KEST_SOLUTIONS)) {
        if (!entry.is_directory()) continue;
        const std::string id = entry.path().filename().string();
        CHECK_MESSAGE(BuiltIn().FindTicket(id) != nullptr, id);
    }
}

TEST_CASE("the plain solution and the other good ideas pass the whole deck") {
    for (const kp::LoadedTicket* loaded : BuiltIn().Tickets()) {
        std::vector<fs::path> files = FirmwareIn(FolderOf(*loaded) / "pass");
        files.push_back(FolderOf(*loaded) / "plain.lc1");
        for (const fs::path& file : files) {
            const kp::VerifyResult result = VerifyFirmware(*loaded, Read(file));
            CHECK_MESSAGE(result.AllPassed(), file.string() << ": " << result.message);
        }
    }
}

TEST_CASE("a wrong program fails first in the test that its first line names") {
    for (const kp::LoadedTicket* loaded : BuiltIn().Tickets()) {
        const std::vector<fs::path> files = FirmwareIn(FolderOf(*loaded) / "fail");
        CHECK_MESSAGE(files.size() >= 3, loaded->ticket.id);
        for (const fs::path& file : files) {
            CAPTURE(file);
            const std::string firmware = Read(file);
            const Claim claim = ReadClaim(firmware);
            CHECK_FALSE(claim.sentence.empty());
            const kp::VerifyResult result = VerifyFirmware(*loaded, firmware);
            CAPTURE(result.message);
            REQUIRE(result.tests.size() == loaded->ticket.tests.size());
            const auto failed = std::find_if(result.tests.begin(), result.tests.end(),
                                             [](const auto& test) { return !test.verdict.passed; });
            REQUIRE(failed != result.tests.end());
            CHECK(loaded->ticket.tests[failed - result.tests.begin()].name == claim.test);
            CHECK(failed->verdict.message.find(claim.sentence) != std::string::npos);
        }
    }
}

TEST_CASE("a starter assembles and is no solution yet") {
    for (const kp::LoadedTicket* loaded : BuiltIn().Tickets()) {
        if (loaded->ticket.starter.empty()) continue;
        const kp::VerifyResult result = VerifyFirmware(*loaded, loaded->ticket.starter);
        CAPTURE(loaded->ticket.id);
        CHECK_FALSE(result.tests.empty());
        CHECK_FALSE(result.AllPassed());
    }
}
