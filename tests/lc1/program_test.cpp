// Runs the cases of cases/, each in a folder of its own that holds the files of echo/: a ticket for
// a card that sends what arrives, up to a $21, its reference and the right firmware.

#include <doctest/doctest.h>
#include <sys/wait.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include "base/disk.h"
#include "json/writer.h"
#include "native/system_disk.h"
#include "support/cases.h"
#include "support/own_folder.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

std::size_t Widest(std::string_view text) {
    std::size_t widest = 0;
    while (!text.empty()) widest = std::max(widest, support::Cut(text, "\n").size());
    return widest;
}

class Bench {
public:
    Bench() { fs::copy(support::PathOf("lc1/echo"), folder_.path); }

    void Follow(const support::Step& step);

private:
    void Write(const std::string& name, const std::string& text) const;
    // Runs the program with these arguments, as a shell reads them.
    void Call(const std::string& arguments);
    // The same with --json; the answer must be one object on one line, and nothing on the error
    // stream.
    void Ask(const std::string& arguments);
    std::string Value(std::string_view path) const;
    void CheckAnswer(const support::Step& step) const;

    support::OwnFolder folder_;
    int code_ = -1;
    std::string out_;
    std::string err_;
    std::string refused_;  // the arguments of a call that has no answer
    json::Value answer_;
};

void Bench::Write(const std::string& name, const std::string& text) const {
    fs::create_directories((folder_.path / name).parent_path());
    REQUIRE(zo::platform::SystemDisk().Write(folder_.path / name, text));
}

void Bench::Call(const std::string& arguments) {
    const std::string command =
        "cd '" + folder_.path.string() + "' && '" LC1_PROGRAM "' " + arguments + " >out 2>err";
    const int status = std::system(command.c_str());
    REQUIRE(WIFEXITED(status));
    code_ = WEXITSTATUS(status);
    out_ = support::ReadText((folder_.path / "out").string());
    err_ = support::ReadText((folder_.path / "err").string());
}

void Bench::Ask(const std::string& arguments) {
    Call(arguments + " --json");
    CAPTURE(out_);
    CHECK(err_.empty());
    CHECK(out_.find('\n') == out_.size() - 1);
    answer_ = support::Json(out_);
    CHECK(answer_.IsObject());
}

// What stands at a path such as "tests/0/name", on one line.
std::string Bench::Value(std::string_view path) const {
    const json::Value* value = &answer_;
    while (!path.empty() && path != ".") {
        const std::string_view part = support::Cut(path, "/");
        std::size_t index = 0;
        if (std::from_chars(part.data(), part.data() + part.size(), index).ec == std::errc()) {
            if (index >= value->items.size()) return "absent";
            value = &value->items[index];
        } else {
            if (!json::Has(*value, part)) return "absent";
            value = &json::Member(*value, part);
        }
    }
    return json::Write(*value, 0);
}

void Bench::CheckAnswer(const support::Step& step) const {
    CAPTURE(out_);
    if (step.key == "exits") {
        CHECK(code_ == static_cast<int>(step.Number()));
        CHECK(err_.empty());
    } else if (step.key == "out") {
        CHECK(out_ == step.text);
    } else if (step.key == "holds") {
        CHECK(out_.find(step.value) != std::string::npos);
    } else if (step.key == "begins") {
        CHECK(out_.starts_with(support::Unmarked(step.value)));
    } else if (step.key == "widest") {
        CHECK(Widest(out_) == step.Number());
    } else {
        REQUIRE(step.key == "is");
        std::string_view rest = step.value;
        const std::string_view path = support::Cut(rest, " ");
        CHECK(Value(path) == rest);
    }
}

void Bench::Follow(const support::Step& step) {
    if (step.key == "file") {
        Write(step.value, support::Unmarked(step.text));
    } else if (step.key == "copy") {
        std::string_view to = step.value;
        const std::string_view from = support::Cut(to, " ");
        Write(std::string(to), support::ReadText((folder_.path / from).string()));
    } else if (step.key == "call") {
        Call(step.value);
    } else if (step.key == "answer") {
        Ask(step.value);
    } else if (step.key == "refused") {
        refused_ = step.value;
    } else if (step.key == "problem") {
        Call(refused_);
        CHECK(code_ == 2);
        CHECK(out_.empty());
        CHECK(err_ == "lc1: " + step.value + "\n");
        Ask(refused_);
        CHECK(code_ == 2);
        CHECK(json::StringOr(answer_, "problem", "") == step.value);
    } else {
        CheckAnswer(step);
    }
}

}  // namespace

TEST_CASE("the program answers as the cases say") {
    REQUIRE(setenv("SOLUTIONS", support::PathOf("solutions").c_str(), 1) == 0);
    for (const support::Case& steps : support::Cases("lc1/cases")) {
        Bench bench;
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            bench.Follow(step);
        }
    }
}
