// Every byte on a page that is a check, or that a protocol's rule makes of others, is computed here
// anew; the steps and tables of the checks too.

#include <doctest/doctest.h>

#include <algorithm>
#include <bit>
#include <regex>

#include "base/format.h"
#include "binder_blocks.h"
#include "card/crc16.h"
#include "ticket/frame.h"
#include "ticket/labels.h"

namespace {

using binder::Block;
using binder::HexOf;
using kp::Bytes;

Bytes Text(std::string_view text) {
    return {text.begin(), text.end()};
}

unsigned Value(kp::Check check, const Bytes& bytes) {
    unsigned value = 0;
    for (const std::uint8_t byte : kp::CheckBytes(check, bytes)) value = value << 8 | byte;
    return value;
}

Bytes Sync(bool is_short) {
    return is_short ? Bytes{0xC1} : Bytes{0xC1, 0x67};
}

// The frame that the firm would send for the payload and the flags that stand in these bytes.
bool IsHouseFrame(const Bytes& bytes) {
    for (const bool is_short : {false, true}) {
        for (const bool flags : {false, true}) {
            if (is_short && flags) continue;
            kp::FrameFormat format;
            format.sync = Sync(is_short);
            format.flags = flags;
            format.check = is_short ? kp::Check::Sum8 : kp::Check::Crc16;
            format.scope = is_short ? kp::CheckScope::Payload : kp::CheckScope::Frame;
            const std::size_t head = format.sync.size() + (flags ? 2 : 1);
            const auto check = static_cast<std::size_t>(kp::CheckWidth(format.check));
            if (bytes.size() < head + check) continue;
            const Bytes payload(bytes.begin() + static_cast<std::ptrdiff_t>(head),
                                bytes.end() - static_cast<std::ptrdiff_t>(check));
            if (kp::BuildFrame(format, payload, bytes[head - 1]) == bytes) return true;
        }
    }
    return false;
}

bool IsModbusFrame(const Bytes& bytes) {
    if (bytes.size() < 4) return false;
    const std::span<const std::uint8_t> all(bytes);
    return kp::CheckFits(kp::Check::Crc16Modbus, all.first(all.size() - 2), all.last(2));
}

bool IsXmodemBlock(const Bytes& bytes) {
    if (bytes.size() != 20 || bytes[0] != 0x01 || (bytes[1] ^ bytes[2]) != 0xFF) return false;
    const std::span<const std::uint8_t> all(bytes);
    return kp::CheckFits(kp::Check::Sum8, all.subspan(3, 16), all.last(1));
}

Bytes Slip(const Bytes& packet) {
    Bytes line = {0xC0};
    for (const std::uint8_t byte : packet) {
        if (byte == 0xC0 || byte == 0xDB) {
            line.insert(line.end(), {0xDB, static_cast<std::uint8_t>(byte == 0xC0 ? 0xDC : 0xDD)});
        } else {
            line.push_back(byte);
        }
    }
    line.push_back(0xC0);
    return line;
}

Bytes RunLength(const Bytes& message) {
    Bytes line;
    for (std::size_t at = 0; at < message.size();) {
        const std::uint8_t byte = message[at];
        std::size_t run = 0;
        while (at < message.size() && message[at] == byte && run < 255) ++at, ++run;
        if (run >= 4 || byte == 0x90) {
            line.insert(line.end(), {0x90, static_cast<std::uint8_t>(run), byte});
        } else {
            line.insert(line.end(), run, byte);
        }
    }
    line.insert(line.end(), {0x90, 0x00});
    return line;
}

// A row's bytes and what stands beside them.
struct ByteRow {
    Bytes bytes;
    std::string beside;
};

// The rows of bytes in a block, those that run over the end of a row joined to one.
std::vector<ByteRow> ByteRowsOf(const Block& block) {
    std::vector<ByteRow> rows;
    bool goes_on = false;
    for (const std::string& row : block.rows) {
        const std::vector<std::string> columns = binder::Columns(row);
        const Bytes bytes = binder::BytesIn(columns[0]);
        CHECK(bytes.size() <= 16);
        if (bytes.empty()) continue;
        if (!goes_on) rows.emplace_back();
        rows.back().bytes.insert(rows.back().bytes.end(), bytes.begin(), bytes.end());
        rows.back().beside = columns.size() > 1 ? columns[1] : "";
        goes_on = bytes.size() == 16;
    }
    return rows;
}

// One step of a CRC a bit: `left` takes the high bit of `width` first.
struct Crc {
    int width;
    unsigned polynomial;
    bool left;

    unsigned Bit(unsigned crc) const {
        const unsigned top = left ? 1U << (width - 1) : 1;
        const unsigned moved = left ? crc << 1 : crc >> 1;
        return ((crc & top) != 0 ? moved ^ polynomial : moved) & ((1U << width) - 1);
    }
    unsigned Combine(unsigned crc, std::uint8_t byte) const {
        return crc ^ (left ? static_cast<unsigned>(byte) << (width - 8) : byte);
    }
};
constexpr Crc kCrc8{8, 0x07, true};
constexpr Crc kCcitt{16, 0x1021, true};
constexpr Crc kModbus{16, 0xA001, false};

// The CRC after each bit of a byte.
std::string Steps(const Crc& kind, unsigned crc, std::uint8_t byte) {
    crc = kind.Combine(crc, byte);
    std::string text;
    for (int bit = 0; bit < 8; ++bit) {
        crc = kind.Bit(crc);
        text += base::Format(bit == 0 ? "%0*X" : " %0*X", kind.width / 4, crc);
    }
    return text;
}

unsigned Crc8OfOk(unsigned crc, int rounds, const Crc& kind = kCrc8) {
    for (const std::uint8_t byte : Text("OK")) {
        crc = kind.Combine(crc, byte);
        for (int bit = 0; bit < rounds; ++bit) crc = kind.Bit(crc);
    }
    return crc;
}

// Taken before the shift, the polynomial meets the wrong bits.
unsigned Crc8PolynomialFirst() {
    unsigned crc = 0;
    for (const std::uint8_t byte : Text("OK")) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            if ((crc & 0x80) != 0) crc ^= 0x07;
            crc = crc << 1 & 0xFF;
        }
    }
    return crc;
}

unsigned Ccitt(unsigned start, const Bytes& bytes) {
    auto crc = static_cast<std::uint16_t>(start);
    for (const std::uint8_t byte : bytes) crc = kp::Crc16Step(crc, byte);
    return crc;
}

void CheckHolds(std::string_view page, const std::string& text) {
    std::string all;
    for (const std::string& item : binder::Page(page).body) all += item + '\n';
    CAPTURE(page);
    CAPTURE(text);
    CHECK(all.find(text) != std::string::npos);
}

// Shown as damaged, or as steps and fields of something.
constexpr std::string_view kNoFrames[] = {"C1 67 02 4F 4B"};

}  // namespace

TEST_CASE("rows of bytes are what their protocol makes them") {
    std::size_t rows = 0;
    for (const char* caption : {"Bytes", "Example, the message"}) {
        for (const Block& block : binder::BlocksLedBy(caption)) {
            CAPTURE(block.Where());
            const std::string& id = block.page->id;
            for (const ByteRow& row : ByteRowsOf(block)) {
                ++rows;
                CAPTURE(HexOf(row.bytes));
                if (id == "slip") {
                    CHECK(HexOf(Slip(row.bytes)) == row.beside);
                } else if (id == "run-length") {
                    CHECK(HexOf(RunLength(row.bytes)) == row.beside);
                } else if (id == "modbus") {
                    CHECK(IsModbusFrame(row.bytes));
                } else if (id == "xmodem") {
                    CHECK(IsXmodemBlock(row.bytes));
                } else if (id == "frames") {
                    CHECK_FALSE(IsHouseFrame(row.bytes));
                } else {
                    CHECK(IsHouseFrame(row.bytes));
                }
            }
        }
    }
    CHECK(rows >= 30);
}

TEST_CASE("every frame in prose, tables and exchanges has a right check") {
    static const std::regex kBytes("\\b[0-9A-F]{2}( [0-9A-F]{2}){3,}\\b");
    int frames = 0;
    for (const kp::BinderPage& page : binder::Content().pages) {
        CAPTURE(page.title);
        for (const std::string& item : page.body) {
            for (std::sregex_iterator at(item.begin(), item.end(), kBytes), end; at != end; ++at) {
                const std::string text = at->str();
                CAPTURE(text);
                if (!text.starts_with("C1 ") || std::ranges::count(kNoFrames, text) > 0) continue;
                CHECK(IsHouseFrame(binder::BytesIn(text)));
                ++frames;
            }
        }
    }
    CHECK(frames >= 20);
}

TEST_CASE("the packed streams in prose are right") {
    CheckHolds("run-length", "258 times FF is sent as " + HexOf(RunLength(Bytes(258, 0xFF))));
    CheckHolds("run-length", "nothing at all as " + HexOf(RunLength({})));
}

TEST_CASE("a sentence's digits are the exclusive OR of its text") {
    int sentences = 0;
    for (const std::string& row : binder::BlockOf("nmea", "Sentences").rows) {
        const std::size_t star = row.find('*');
        REQUIRE(star != std::string::npos);
        CHECK(row.substr(star + 1) ==
              base::Format("%02X", Value(kp::Check::Xor8, Text(row.substr(1, star - 1)))));
        CHECK(row.size() + 2 <= 82);
        ++sentences;
    }
    CHECK(sentences >= 4);
}

TEST_CASE("the checks of short texts are as the table says") {
    std::vector<std::string> rows = binder::BlockOf("checksums", "What short texts give").rows;
    for (std::size_t k = 1; k < rows.size(); ++k) {
        const std::vector<std::string> words = binder::Words(rows[k]);
        CAPTURE(rows[k]);
        REQUIRE(words.size() == 4);
        CHECK(words[1] == binder::Dollar(Value(kp::Check::Sum8, Text(words[0])), 2));
        CHECK(words[2] == binder::Dollar(Value(kp::Check::Xor8, Text(words[0])), 2));
        CHECK(words[3] == binder::Dollar(Value(kp::Check::Crc8, Text(words[0])), 2));
    }
    CHECK(rows.size() > 4);
}

TEST_CASE("characters have the parity that the table gives") {
    std::vector<std::string> rows = binder::BlockOf("parity", "Characters").rows;
    for (std::size_t k = 1; k < rows.size(); ++k) {
        const std::vector<std::string> words = binder::Words(rows[k]);
        CAPTURE(rows[k]);
        REQUIRE(words.size() == 5);
        const auto code = static_cast<unsigned>(std::stoul(words[1].substr(1), nullptr, 16));
        const int ones = std::popcount(code);
        CHECK(words[2] == std::to_string(ones));
        CHECK(words[3] == binder::Dollar(code | (ones % 2 != 0 ? 0x80U : 0U), 2));
        CHECK(words[4] == binder::Dollar(code | (ones % 2 == 0 ? 0x80U : 0U), 2));
        CHECK((words[0].size() > 1 || static_cast<unsigned>(words[0][0]) == code));
    }
    CHECK(rows.size() > 4);
}

TEST_CASE("the three CRCs and their steps are the program's") {
    const Bytes digits = Text("123456789");
    const struct {
        const char* name;
        kp::Check check;
        Crc kind;
        unsigned start;
    } kinds[] = {{"CRC-8", kp::Check::Crc8, kCrc8, 0},
                 {"CRC-16/CCITT", kp::Check::Crc16, kCcitt, 0xFFFF},
                 {"CRC-16/MODBUS", kp::Check::Crc16Modbus, kModbus, 0xFFFF}};
    const Block table = binder::BlockOf("crc", "Three of them");
    REQUIRE(table.rows.size() == 4);
    for (std::size_t k = 0; k < 3; ++k) {
        const std::vector<std::string> words = binder::Words(table.rows[k + 1]);
        const int width = kinds[k].kind.width / 4;
        CHECK(words[0] == kinds[k].name);
        CHECK(words[1] == binder::Dollar(kinds[k].kind.polynomial, width));
        CHECK(words[2] == binder::Dollar(kinds[k].start, width));
        unsigned crc = kinds[k].start;
        for (const std::uint8_t byte : digits) {
            crc = kinds[k].kind.Combine(crc, byte);
            for (int bit = 0; bit < 8; ++bit) crc = kinds[k].kind.Bit(crc);
        }
        CHECK(words[3] == binder::Dollar(crc, width));
        // The program's own value, in the order in which it is sent.
        const unsigned swapped = (crc & 0xFF) << 8 | crc >> 8;
        CHECK(Value(kinds[k].check, digits) == (kinds[k].kind.left ? crc : swapped));
    }
    const std::vector<std::string> rows = binder::BlockOf("crc", "CRC-8 steps").rows;
    REQUIRE(rows.size() == 2);
    CHECK(rows[0] == Steps(kCrc8, 0, 0x4F));
    CHECK(rows[1] == Steps(kCrc8, Value(kp::Check::Crc8, {0x4F}), 0x4B));
    CHECK(binder::BlockOf("crc", "CCITT steps").rows[0] == Steps(kCcitt, 0xFFFF, 0x31));
    for (const char* page : {"crc", "modbus"}) {
        CHECK(binder::BlockOf(page, "MODBUS steps").rows[0] == Steps(kModbus, 0xFFFF, 0x11));
    }
}

TEST_CASE("the CRC after each byte is as the pages say") {
    const Block steps = binder::BlockOf("crc-engine", "Steps of");
    const std::vector<std::string> bytes = binder::Words(steps.rows[0]);
    const std::vector<std::string> values = binder::Words(steps.rows[1]);
    REQUIRE(bytes.size() == 6);
    REQUIRE(values.size() == 6);
    std::uint16_t crc = kp::kCrc16Start;
    for (std::size_t k = 1; k < bytes.size(); ++k) {
        crc = kp::Crc16Step(crc, binder::BytesIn(bytes[k])[0]);
        CHECK(values[k] == base::Format("%04X", crc));
    }
    const Bytes request = binder::BytesIn("11 03 00 6B 00 03");
    std::string after;
    for (std::size_t k = 1; k <= request.size(); ++k) {
        const auto count = static_cast<std::ptrdiff_t>(k);
        const unsigned low_first =
            Value(kp::Check::Crc16Modbus, Bytes(request.begin(), request.begin() + count));
        after += base::Format(k == 1 ? "%02X%02X" : " %02X%02X", low_first & 0xFF, low_first >> 8);
    }
    CHECK(binder::BlockOf("modbus", "After each byte").rows[0] == after);
}

TEST_CASE("residues and wrong figures are what the mistakes give") {
    const Bytes frame = binder::BytesIn("C1 67 02 4F 4B 0A 27");
    Bytes damaged = frame;
    damaged[3] = 0x5F;
    CheckHolds("crc", "leaves " + binder::Dollar(Ccitt(0xFFFF, frame), 4));
    CheckHolds("crc", "to 5F it leaves " + binder::Dollar(Ccitt(0xFFFF, damaged), 4));
    const Bytes head(frame.begin(), frame.end() - 2);
    CheckHolds("crc", base::Format("whose check is %04X: start 0 gives %04X, the payload alone "
                                   "%04X, no sync bytes %04X",
                                   Ccitt(0xFFFF, head), Ccitt(0, head), Ccitt(0xFFFF, Text("OK")),
                                   Ccitt(0xFFFF, Bytes(head.begin() + 2, head.end()))));
    const Crc reflected{8, 0x07, false};
    const Crc other{8, 0x31, true};
    const struct {
        unsigned value;
        const char* what;
    } wrong[] = {{Crc8OfOk(0, 7), "seven rounds"},
                 {Crc8OfOk(0, 9), "nine rounds"},
                 {Crc8PolynomialFirst(), "polynomial first"},
                 {Crc8OfOk(0, 8, reflected), "low bit first"},
                 {Crc8OfOk(0xFF, 8), "start $FF"},
                 {Crc8OfOk(0, 8, other), "$31 for $07"}};
    for (const auto& row : wrong) {
        CheckHolds("crc", binder::Dollar(row.value, 2) + "  " + row.what);
    }
    CheckHolds("crc", "CRC-8 of OK is " + binder::Dollar(Crc8OfOk(0, 8), 2));
}

TEST_CASE("places in a stream are named as the binder quotes them") {
    kp::FrameFormat format;
    format.sync = {0xC1, 0x67};
    format.check = kp::Check::Crc16;
    const Bytes stream = binder::BytesIn("C1 67 00 4F E6 C1 67 01 4B 00 00 3F");
    const std::vector<std::string> places = kp::LabelStream(stream, format);
    CHECK(places[7] == "frame 2, length");
    CHECK(places[8] == "frame 2, payload byte 1");
    CHECK(places[9] == "frame 2, check byte 1");
    CHECK(places[11] == "byte 12, outside a frame");
}
