#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lc1 {

// One JSON object on one line of standard output, written member by member as the data comes, so
// that a long trace is never held twice. The object opens with the first member and closes with the
// JsonLine itself. Inside an array, values stand without a key.
class JsonLine {
public:
    JsonLine();
    ~JsonLine();
    JsonLine(const JsonLine&) = delete;
    JsonLine& operator=(const JsonLine&) = delete;

    void Object(std::string_view key = {}) { Open(key, '{', '}'); }
    void Array(std::string_view key = {}) { Open(key, '[', ']'); }
    // Closes the object or array opened last.
    void End();

    // Malformed UTF-8 goes out as U+FFFD.
    void Text(std::string_view key, std::string_view text);
    void Number(std::string_view key, std::int64_t number);
    void Boolean(std::string_view key, bool boolean);
    void Null(std::string_view key);

    template <class Range>
    void Numbers(std::string_view key, const Range& range) {
        Array(key);
        for (const auto number : range) Number({}, number);
        End();
    }

    template <class Range>
    void Texts(std::string_view key, const Range& range) {
        Array(key);
        for (const std::string& text : range) Text({}, text);
        End();
    }

private:
    void Open(std::string_view key, char opening, char closing);
    void StartValue(std::string_view key);

    std::string closing_;  // brackets still to be written, the innermost last
    bool first_ = true;    // nothing stands yet in the innermost one
};

}  // namespace lc1
