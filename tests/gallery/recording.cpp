#include "recording.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/format.h"
#include "support/cases.h"

namespace gallery {
namespace {

constexpr std::string_view kWhole = "classic 80x25";

std::string KeyOf(const zo::ui::Grid& grid) {
    const char* look = grid.look == zo::ui::Look::Classic ? "classic" : "modern";
    return base::Format("%s %dx%d", look, grid.columns, grid.rows);
}

// FNV-1a
std::string Digest(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    }
    return base::Format("%016llx", static_cast<unsigned long long>(hash));
}

std::string Behind(std::string_view bar, std::string_view text) {
    std::string lines;
    while (!text.empty()) {
        const std::string_view line = support::Cut(text, "\n");
        lines += line.empty() ? std::string(bar) : std::string(bar) + " " + std::string(line);
        lines += '\n';
    }
    return lines;
}

void Write(const std::filesystem::path& path, std::string_view text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

}  // namespace

std::string FileName(std::string_view scene) {
    std::string name(scene);
    std::ranges::replace(name, ':', '+');
    return name;
}

void Recording::Add(const zo::ui::Frame& frame) {
    texts_.emplace(KeyOf(frame.grid), zo::ui::TextDump(frame));
}

std::string Recording::Finish() {
    std::ostringstream recorded;
    recorded << "# Recorded by KEST_RECORD=1 build/check/bin/gallery_tests\n== " << scene_ << "\n";
    for (const auto& [key, text] : texts_) {
        recorded << key;
        if (key == kWhole) {
            recorded << "\n" << Behind("|", text);
        } else {
            recorded << " " << Digest(text) << "\n";
        }
    }
    const std::string name = "gallery/texts/" + FileName(scene_) + ".txt";
    if (std::getenv("KEST_RECORD")) {
        Write(support::PathOf(name), recorded.str());
        return {};
    }
    if (!std::filesystem::exists(support::PathOf(name))) return name + " is not recorded\n";

    std::string differing;
    std::map<std::string, std::string> known;
    const std::vector<support::Case> cases = support::Cases(name);
    for (const support::Step& step : cases.front()) {
        std::string_view value = step.value;
        const std::string key = step.key + " " + std::string(support::Cut(value, " "));
        known[key] = step.text.empty() ? std::string(value) : Digest(step.text);
    }
    for (const auto& [key, text] : texts_) {
        if (known[key] == Digest(text)) continue;
        const std::string file = FileName(scene_) + " " + key + ".txt";
        Write(std::filesystem::path(KEST_GALLERY) / file, text);
        differing += key + " is not as recorded: see " + file + " in the gallery\n";
    }
    return differing;
}

}  // namespace gallery
