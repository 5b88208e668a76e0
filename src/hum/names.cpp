#include "names.h"

namespace hum {
namespace {

std::uint32_t Hash(std::string_view text) {
    std::uint32_t hash = 2166136261u;  // FNV-1a
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return hash ^ hash >> 15;
}

}  // namespace

Names::Names() : slots_(1024) {}

std::uint32_t Names::Intern(std::string_view text) {
    const std::uint32_t hash = Hash(text);
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = hash & mask;
    for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
        const Entry& entry = entries_[slots_[slot] - 1];
        if (entry.hash == hash && entry.text == text) return slots_[slot] - 1;
    }
    entries_.push_back({text, hash});
    slots_[slot] = Count();
    if (entries_.size() * 2 > slots_.size()) Grow();
    return Count() - 1;
}

std::uint32_t Names::Find(std::string_view text) const {
    const std::uint32_t hash = Hash(text);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = hash & mask; slots_[slot] != 0; slot = (slot + 1) & mask) {
        const Entry& entry = entries_[slots_[slot] - 1];
        if (entry.hash == hash && entry.text == text) return slots_[slot] - 1;
    }
    return kUnknown;
}

void Names::Grow() {
    slots_.assign(slots_.size() * 2, 0);
    const std::size_t mask = slots_.size() - 1;
    for (std::uint32_t i = 0; i < Count(); ++i) {
        std::size_t slot = entries_[i].hash & mask;
        while (slots_[slot] != 0) slot = (slot + 1) & mask;
        slots_[slot] = i + 1;
    }
}

}  // namespace hum
