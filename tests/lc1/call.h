#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "json/value.h"

// What one call of the program left behind.
struct Answer {
    int code = -1;
    std::string out;
    std::string err;
};

// A folder to call the program in, gone with its files in the end.
class Bench {
public:
    Bench();
    ~Bench();
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    void Write(const std::string& name, std::string_view text) const;
    std::string Read(const std::string& name) const;
    // Runs the program with these arguments, as a shell reads them.
    Answer Call(const std::string& arguments) const;
    // The same with --json; the answer must be one object on one line, and nothing on the error
    // stream.
    json::Value Json(const std::string& arguments, int expected_code) const;

private:
    std::filesystem::path folder_;
};

// A ticket for a card that sends what arrives, up to a $21: "echo.json", with its reference
// "echo.lc1" and the right firmware "mine.lc1".
void AddEcho(const Bench& bench);
inline constexpr const char* kEcho = "--ticket echo.json --reference echo.lc1 ";
