#include "call.h"

#include <doctest/doctest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "base/disk.h"
#include "json/parser.h"

namespace fs = std::filesystem;

Bench::Bench() {
    std::string name = (fs::temp_directory_path() / "lc1-test-XXXXXX").string();
    REQUIRE(mkdtemp(name.data()) != nullptr);
    folder_ = name;
}

Bench::~Bench() {
    std::error_code error;
    fs::remove_all(folder_, error);
}

void Bench::Write(const std::string& name, std::string_view text) const {
    base::SystemDisk disk;
    fs::create_directories((folder_ / name).parent_path());
    REQUIRE(disk.Write(folder_ / name, text));
}

std::string Bench::Read(const std::string& name) const {
    base::SystemDisk disk;
    const base::Result<std::string> text = disk.Read(folder_ / name);
    REQUIRE(text);
    return *text;
}

Answer Bench::Call(const std::string& arguments) const {
    const std::string command =
        "cd '" + folder_.string() + "' && '" LC1_PROGRAM "' " + arguments + " >out 2>err";
    const int status = std::system(command.c_str());
    REQUIRE(WIFEXITED(status));
    return {WEXITSTATUS(status), Read("out"), Read("err")};
}

json::Value Bench::Json(const std::string& arguments, int expected_code) const {
    const Answer answer = Call(arguments + " --json");
    CAPTURE(arguments);
    CAPTURE(answer.out);
    CHECK(answer.code == expected_code);
    CHECK(answer.err.empty());
    CHECK(answer.out.find('\n') == answer.out.size() - 1);
    json::Value value;
    json::Error error;
    CHECK(json::Parse(answer.out, value, error));
    CHECK(value.IsObject());
    return value;
}

void AddEcho(const Bench& bench) {
    bench.Write("echo.json", R"({
        "id": "t-01-echo", "title": "Echo", "client": "Test", "difficulty": 2,
        "ticket": ["Send what arrives.", "Stop at $21."], "hints": ["One.", "Two."],
        "machine": {"rom": 8, "ram": 2, "registers": "ab", "timer": true}, "max_ticks": 200,
        "tests": [
            {"name": "Word", "rx": [{"text": "HI!", "at": 3, "gap": 5, "label": "word"}]},
            {"name": "Noise", "count": 2,
             "rx": [{"random": {"len": [2, 4], "min": 48, "max": 57}}, {"text": "!", "at": 20}]}]})");
    const char* firmware = "loop: rx a\n tx a\n jne a, $21, loop\n halt\n";
    bench.Write("echo.lc1", firmware);
    bench.Write("mine.lc1", firmware);
}
