#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "tree.h"

namespace hum {

enum class TypeKind : std::uint8_t { None, Void, Int, Float, Clip, Pointer, Array, Struct };

struct Type {
    TypeKind kind = TypeKind::None;
    bool wrap = false;        // of an array: a ring
    TypeId of = 0;            // what a pointer points to, an array's element
    std::uint32_t count = 0;  // of elements; of a structure: its number
    std::uint32_t words = 1;  // its size in memory
    TypeId pointer = 0;       // to this type, once there is one
};

inline constexpr TypeId kNoType = 0;
inline constexpr TypeId kVoid = 1;
inline constexpr TypeId kInt = 2;
inline constexpr TypeId kFloat = 3;
inline constexpr TypeId kClip = 4;  // of a clip's name; as a value an int

// Every type of a program once: types are the same when their numbers are.
class Types {
public:
    Types();
    const Type& operator[](TypeId id) const { return all_[id]; }
    TypeId PointerTo(TypeId type);
    TypeId ArrayOf(TypeId element, std::uint32_t count, bool wrap);
    TypeId AddStruct(std::uint32_t number);
    void SetWords(TypeId type, std::uint32_t words) { all_[type].words = words; }

    bool IsNumber(TypeId type) const { return type == kInt || type == kFloat; }
    bool IsPointer(TypeId type) const { return all_[type].kind == TypeKind::Pointer; }
    bool IsArray(TypeId type) const { return all_[type].kind == TypeKind::Array; }
    bool IsStruct(TypeId type) const { return all_[type].kind == TypeKind::Struct; }
    bool IsAggregate(TypeId type) const { return IsArray(type) || IsStruct(type); }

private:
    std::vector<Type> all_;
    std::unordered_map<std::uint64_t, TypeId> arrays_;
};

}  // namespace hum
