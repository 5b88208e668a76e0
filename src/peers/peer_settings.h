#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ticket/ticket.h"

namespace kp {

// A silence in ticks: after it the card must speak again, no sooner and no later.
struct RetryWindow {
    Tick first = 0;
    Tick last = 0;  // 0: nothing is asked
    bool Set() const { return last > 0; }
};

// A far end's settings. Each comes from the test's `peer` block when that has the key, else from
// the ticket's; a key of the wrong type is its default, and a number beyond its limits is moved to
// the nearest. Text and lists that cannot be read are the author's mistake: the first one is kept
// as the problem, led by "test 3: " when it stands in the test's block.
class PeerSettings {
public:
    // Longer than any test, and so short that sums of ticks stay far from the end of their range.
    static constexpr std::int32_t kMostTicks = 1'000'000;

    // The ticket must outlive the settings.
    PeerSettings(const kp::Ticket& ticket, std::size_t test, json::Remarks* remarks = nullptr);

    const kp::Ticket& Ticket() const { return ticket_; }
    const kp::Test& Test() const { return ticket_.tests[test_]; }

    bool Flag(std::string_view key, bool fallback);
    std::int32_t Number(std::string_view key, std::int32_t fallback, std::int32_t least,
                        std::int32_t most = kMostTicks);
    Tick Ticks(std::string_view key, std::int32_t fallback, std::int32_t least);
    Bytes Hex(std::string_view key, std::string_view fallback);

    // Lists, empty when the key is absent.
    std::vector<std::string> Words(std::string_view key);
    std::vector<Tick> TickList(std::string_view key);
    RetryWindow Retry(std::string_view key);
    std::vector<std::pair<Bytes, Bytes>> HexPairs(std::string_view key);

    // Notes a problem of a key that was read without one.
    void Fail(std::string_view key, const std::string& problem);
    // Empty while everything read could be read.
    const std::string& Problem() const { return problem_; }
    // For an author: the keys that the far end has not read, once it is made.
    void RemarkUnknown() const;

private:
    json::Fields& Block(std::string_view key);
    const json::Value& List(std::string_view key, std::string_view shape,
                            bool (*fits)(const json::Value& value));
    Bytes ParseHex(std::string_view key, const std::string& text);

    const kp::Ticket& ticket_;
    std::size_t test_;
    json::Fields ticket_block_;
    json::Fields test_block_;
    std::string problem_;
};

}  // namespace kp
