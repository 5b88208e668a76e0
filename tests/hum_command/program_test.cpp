// Runs the calls of cases.txt, each case in a folder of its own.

#include <doctest/doctest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "base/disk.h"
#include "native/system_disk.h"
#include "support/cases.h"
#include "support/own_folder.h"

namespace {

// What a call left behind, written as its expectation is.
std::string Answer(const support::OwnFolder& folder, int status) {
    std::string answer = support::ReadText((folder.path / "out").string());
    answer += support::ReadText((folder.path / "err").string());
    return answer + "exit " + std::to_string(WEXITSTATUS(status)) + "\n";
}

}  // namespace

TEST_CASE("the program answers as its cases say") {
    for (const support::Case& steps : support::Cases("hum_command/cases.txt")) {
        const support::OwnFolder folder;
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            CAPTURE(step.value);
            if (step.key == "file") {
                std::filesystem::create_directories((folder.path / step.value).parent_path());
                REQUIRE(zo::platform::SystemDisk().Write(folder.path / step.value, step.text));
                continue;
            }
            const std::string command = "cd '" + folder.path.string() + "' && '" HUM_PROGRAM "' " +
                                        step.value + " >out 2>err";
            CHECK(Answer(folder, std::system(command.c_str())) == step.text);
        }
    }
}
