// Runs lint.txt.

#include "content/lint.h"

#include <doctest/doctest.h>

#include "support/cases.h"
#include "support/fake_disk.h"
#include "support/lines.h"

namespace {

// Replaces the text in the first file that holds it; there must be one.
void Replace(const std::string& what, const std::string& with, fake::Disk& disk) {
    for (auto& [name, text] : disk.files) {
        const std::size_t at = text.find(what);
        if (at == std::string::npos) continue;
        text.replace(at, what.size(), with);
        return;
    }
    FAIL(what);
}

std::string LinesOn(fake::Disk& disk, bool with_kept) {
    const kp::ChosenStore chosen = kp::ChooseStore(disk, "content");
    REQUIRE(chosen.problems.empty());
    std::vector<kp::Solutions> kept;
    if (with_kept) kept = *kp::ReadSolutions(disk, "kept");
    return support::Lines(kp::Lint(chosen.store, with_kept ? &kept : nullptr));
}

}  // namespace

TEST_CASE("content and the firmware kept for it are linted as lint.txt says") {
    fake::Disk sound;
    for (const support::Case& steps : support::Cases("content/lint.txt")) {
        fake::Disk disk = sound;
        std::string replaced;
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            if (step.key == "file") {
                disk.files[step.value] = step.text;
            } else if (step.key == "add") {
                disk.files.at(step.value) += step.text;
            } else if (step.key == "drop") {
                REQUIRE(disk.files.erase(step.value) == 1);
            } else if (step.key == "replace") {
                replaced = step.Lines();
            } else if (step.key == "with") {
                Replace(replaced, step.Lines(), disk);
            } else if (step.key == "with-long") {
                Replace(replaced, std::string(step.Number(), 'x'), disk);
            } else {
                REQUIRE((step.key == "lint" || step.key == "lint-kept"));
                CHECK(LinesOn(disk, step.key == "lint-kept") == step.text);
                if (sound.files.empty()) sound = disk;
                disk = sound;
            }
        }
    }
}

TEST_CASE("the built-in content gives no line") {
    CHECK(support::Lines(kp::Lint(kp::ContentStore::BuiltIn())) == "");
}
