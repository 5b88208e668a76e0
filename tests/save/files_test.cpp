// Runs files.txt.

#include <doctest/doctest.h>

#include "save/progress.h"
#include "save/settings.h"
#include "support/cases.h"
#include "support/fake_disk.h"

namespace {

// Line feeds stand as \n in a case's line.
std::string Unescaped(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const std::size_t left = text.size();
        const std::string_view part = support::Cut(text, "\\n");
        plain += part;
        if (left > part.size()) plain += '\n';
    }
    return plain;
}

base::Status SaveAgain(base::Disk& disk, std::string_view what, bool reset) {
    if (what == "settings") {
        return Kest::SaveSettings(disk, "data", Kest::LoadSettings(disk, "data"));
    }
    Kest::Progress progress = Kest::LoadProgress(disk, "data");
    if (reset) Kest::ResetProgress(progress);
    return Kest::SaveProgress(disk, "data", progress);
}

void Follow(fake::Disk& disk, const support::Step& step) {
    CAPTURE(step.where);
    std::string_view rest = step.value;
    const std::string_view name = support::Cut(rest, " ");
    std::string& file = disk.files["data/" + std::string(name)];
    if (step.key == "on") {
        file = rest;
    } else if (step.key == "is") {
        CHECK(file == rest);
    } else if (step.key == "gives") {
        CHECK(file == step.text);
    } else {
        REQUIRE((step.key == "holds" || step.key == "lacks"));
        CAPTURE(file);
        const bool holds = file.find(Unescaped(rest)) != std::string::npos;
        CHECK(holds == (step.key == "holds"));
    }
}

}  // namespace

TEST_CASE("files are loaded and written back as files.txt says") {
    for (const support::Case& steps : support::Cases("save/files.txt")) {
        fake::Disk disk;
        for (const support::Step& step : steps) {
            if (step.key == "rewrite" || step.key == "reset") {
                REQUIRE(SaveAgain(disk, step.value, step.key == "reset"));
            } else if (step.key == "coaches") {
                CHECK(Kest::LoadSettings(disk, "data").Coaches() == (step.value == "yes"));
            } else {
                Follow(disk, step);
            }
        }
    }
}
