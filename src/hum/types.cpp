#include "types.h"

namespace hum {

Types::Types() {
    for (const TypeKind kind :
         {TypeKind::None, TypeKind::Void, TypeKind::Int, TypeKind::Float, TypeKind::Clip}) {
        all_.push_back({kind});
    }
}

TypeId Types::PointerTo(TypeId type) {
    if (all_[type].pointer == 0) {
        const TypeId pointer = static_cast<TypeId>(all_.size());
        all_[type].pointer = pointer;
        all_.push_back({TypeKind::Pointer, false, type});
    }
    return all_[type].pointer;
}

// The caller has made sure that the size fits.
TypeId Types::ArrayOf(TypeId element, std::uint32_t count, bool wrap) {
    const std::uint64_t key = std::uint64_t{element} << 32 | count << 1 | (wrap ? 1 : 0);
    TypeId& known = arrays_[key];
    if (known == 0) {
        known = static_cast<TypeId>(all_.size());
        all_.push_back({TypeKind::Array, wrap, element, count, all_[element].words * count});
    }
    return known;
}

TypeId Types::AddStruct(std::uint32_t number) {
    all_.push_back({TypeKind::Struct, false, 0, number, 0});
    return static_cast<TypeId>(all_.size() - 1);
}

}  // namespace hum
