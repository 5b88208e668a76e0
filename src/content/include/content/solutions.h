#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/disk.h"
#include "base/result.h"

namespace kp {

struct KeptFirmware {
    std::string name;  // below the ticket's folder, such as "pass/two-lines.lc1"
    std::string text;
};

// The firmware kept for one ticket, which shows what its deck lets through.
struct Solutions {
    std::string ticket;                 // its id
    std::optional<KeptFirmware> plain;  // the obvious solution
    std::vector<KeptFirmware> pass;     // other good ideas
    std::vector<KeptFirmware> fail;     // wrong programs
    // What somebody who had only the text and the manual tried, in order; the last one passed.
    std::vector<KeptFirmware> attempts = {};
};

// Reads a folder that holds a folder a ticket: `plain.lc1`, `pass`, `fail` and `independent` with
// its attempts. Other files are left alone. The tickets and their firmware stand in the order of
// their names.
base::Result<std::vector<Solutions>> ReadSolutions(base::Disk& disk,
                                                   const std::filesystem::path& folder);

// What a wrong program's first line says of it:
//     ; fails Two texts: The test ended after the host received 7 of 15 expected bytes.
// The first test that must catch the mistake, and a part of the sentence that the player reads.
struct Claim {
    std::string test;
    std::string sentence;
};
std::optional<Claim> ReadClaim(std::string_view firmware);

}  // namespace kp
