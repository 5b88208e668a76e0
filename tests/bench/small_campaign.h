#pragma once

#include "content/content.h"

namespace support {

inline constexpr const char* kEcho = R"({"id": "1-01-echo", "title": "Echo", "client": "Test rig",
    "brief": "Send back what arrives.", "difficulty": 2, "shift": 1, "order": 1,
    "ticket": ["Every byte that arrives goes out again."],
    "hints": ["Read a byte.", "Send it."],
    "settle": 10, "max_ticks": 200,
    "machine": {"rom": 6, "ram": 0, "registers": "ab", "host": false, "rx_buffer": 4, "stack": 0},
    "peer": {"type": "script"},
    "tests": [{"name": "Letters", "rx": [{"text": "Hi", "at": 3, "gap": 4, "label": "two letters"}]},
              {"name": "A zero", "rx": [{"hex": "00", "at": 2, "label": "a zero"}]}]})";
inline constexpr const char* kEchoReference = "rx a\ntx a\n";

// Everything that a card can be fitted with, and traffic in all lanes.
inline constexpr const char* kClerk = R"({"id": "1-02-clerk", "title": "Clerk", "client": "Office",
    "brief": "Pass messages on and wait for the answer.", "difficulty": 3, "shift": 1, "order": 2,
    "ticket": ["The host's bytes go out; the answer goes to the host."],
    "settle": 20, "max_ticks": 400,
    "machine": {"rom": 24, "ram": 12, "registers": "abcd", "crc": true, "timer": true,
                "clock": true, "rx_buffer": 8, "stack": 2, "tx_gap": 3},
    "peer": {"type": "script"},
    "tests": [{"name": "Two messages",
               "host": [{"text": "LOG"}, {"hex": "07 08", "at": 20}],
               "rx": [{"hex": "06", "at": 16, "label": "an answer"}]}]})";
inline constexpr const char* kClerkReference = R"(next:  mov b, 0
       mov c, -1
fill:  hin a
       jeq a, -1, sent
       mov [b], a
       add b, 1
       tx a
       jmp fill
sent:  call ask
       jmp next
ask:   tmr 12
       rx a, over
       tmr 0
       hout a
over:  ret
)";

inline constexpr const char* kCampaign = R"({"title": "Small", "shifts": [
    {"number": 1, "title": "Basics", "missions": ["1-01-echo", "1-02-clerk"]}]})";

inline kp::Content SmallCampaign() {
    kp::ContentStore store;
    store.Add("missions/campaign.json", kCampaign);
    store.Add("missions/binder.json", R"({"pages": []})");
    store.Add(kp::TicketFile("1-01-echo"), kEcho);
    store.Add(kp::ReferenceFile("1-01-echo"), kEchoReference);
    store.Add(kp::TicketFile("1-02-clerk"), kClerk);
    store.Add(kp::ReferenceFile("1-02-clerk"), kClerkReference);
    return kp::LoadContent(store);
}

}  // namespace support
