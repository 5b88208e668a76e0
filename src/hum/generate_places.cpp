#include "generator_state.h"
#include "hum/memory_map.h"

namespace hum {

Generator::Place Generator::Shifted(Place place, std::uint32_t words) {
    const auto offset = static_cast<std::uint32_t>(place.offset);
    place.offset = static_cast<std::int32_t>(offset + words);
    return place;
}

Generator::Place Generator::FramePlace(std::uint32_t offset) const {
    Place place;
    place.kind = in_function_ ? Place::Kind::Based : Place::Kind::Fixed;
    place.base = kFrameRegister;
    place.offset = static_cast<std::int32_t>(in_function_ ? offset : frame_ + offset);
    return place;
}

Generator::Place Generator::NamedPlace(const Symbol& symbol) const {
    if (symbol.kind == SymbolKind::Local) return FramePlace(symbol.value);
    Place place;
    place.offset = static_cast<std::int32_t>(symbol.value);
    return place;
}

Generator::Place Generator::PlaceOf(NodeId id) {
    const Node& node = tree_[id];
    switch (node.kind) {
        case NodeKind::Name:
            return NamedPlace(checked_.symbols[node.b]);
        case NodeKind::Deref:
            return PlaceBehind(node.a);
        case NodeKind::Index:
            return IndexPlace(id);
        case NodeKind::Field: {
            const bool through = checked_.types.IsPointer(tree_[node.a].type) ||
                                 checked_.types.IsArray(tree_[node.a].type);
            const Place object = through ? PlaceBehind(node.a) : PlaceOf(node.a);
            return Shifted(object, node.c);
        }
        default:
            return {};
    }
}

// What a pointer points to. Many a pointer is known when compiling.
Generator::Place Generator::PlaceBehind(NodeId id) {
    const Node& node = tree_[id];
    if (checked_.types.IsArray(node.type)) return PlaceOf(id);
    Place place;
    switch (node.kind) {
        case NodeKind::This:
            place.offset = static_cast<std::int32_t>(output_);
            return place;
        case NodeKind::Address:
            return PlaceOf(node.a);
        case NodeKind::Name: {
            const Symbol& symbol = checked_.symbols[node.b];
            if (symbol.kind == SymbolKind::Module) {
                place.offset = static_cast<std::int32_t>(outputs_[symbol.value]);
                return place;
            }
            if (symbol.kind == SymbolKind::Host) {
                const TypeId to = checked_.types[symbol.type].of;
                const std::uint32_t name = checked_.structs[checked_.types[to].count].name;
                place.offset = IsKnown(name, Known::Sound)   ? kSoundAddress
                               : IsKnown(name, Known::Input) ? kInputAddress
                                                             : kMidiAddress;
                return place;
            }
            break;
        }
        default:
            break;
    }
    place.kind = Place::Kind::Based;
    place.base = Value(id);
    return place;
}

Generator::Place Generator::IndexPlace(NodeId id) {
    const Node& node = tree_[id];
    return checked_.types.IsArray(tree_[node.a].type) ? ArrayElement(id) : PointerElement(id);
}

Generator::Place Generator::ArrayElement(NodeId id) {
    const Node& node = tree_[id];
    const Marks marks = Mark();
    const Type& array = checked_.types[tree_[node.a].type];
    const Node& index = tree_[node.b];
    Place element;
    element.kind = Place::Kind::Element;
    element.wrap = array.wrap;
    element.count = array.count;
    element.stride = Words(array.of);
    const Place whole = PlaceOf(node.a);
    if (index.kind == NodeKind::Int && array.count > 0) {
        const std::int64_t count = array.count;
        std::int64_t at = static_cast<std::int32_t>(index.a);
        if (array.wrap) at = (at % count + count) % count;
        if (at >= 0 && at < count) {
            return Shifted(whole, static_cast<std::uint32_t>(at) * element.stride);
        }
    }
    element.base = AddressIn(whole, marks);
    element.index = IntValue(node.b);
    token_ = node.token;
    if (element.stride == 1 && !checked_.types.IsAggregate(array.of)) return element;
    return Row(element);
}

Generator::Place Generator::PointerElement(NodeId id) {
    const Node& node = tree_[id];
    const Marks marks = Mark();
    const std::uint32_t words = Words(checked_.types[tree_[node.a].type].of);
    const Place first = PlaceBehind(node.a);
    const Node& index = tree_[node.b];
    if (index.kind == NodeKind::Int) return Shifted(first, index.a * words);
    Place place;
    place.kind = Place::Kind::Based;
    place.base = AddressIn(first, marks);
    const Marks with_base = Mark();
    const Register number = IntValue(node.b);
    Scale(number, words);
    token_ = node.token;
    Emit(Op::Add, place.base, place.base, number);
    Release(with_base);
    return place;
}

// The element's address in the register of its array's.
Generator::Place Generator::Row(const Place& element) {
    Emit(element.wrap ? Op::Aroww : Op::Arowa, element.base, element.index, element.base,
         static_cast<std::int32_t>(element.count), static_cast<std::int32_t>(element.stride));
    Place place;
    place.kind = Place::Kind::Based;
    place.base = element.base;
    ints_ = element.base + 1u;
    return place;
}

// Puts the address into the first register that was free at the marks.
Generator::Register Generator::AddressIn(const Place& place, Marks marks) {
    const Place at = place.kind == Place::Kind::Element ? Row(place) : place;
    Release(marks);
    if (at.kind == Place::Kind::Fixed) return LoadInt(at.offset);
    const Register address = TakeInt();
    if (at.offset != 0 || at.base != address) EmitMemory(Op::Lea, address, at);
    return address;
}

// The value in the first register of its kind that was free at the marks.
Generator::Register Generator::Load(const Place& place, TypeId type, Marks marks) {
    Release(marks);
    const bool is_float = IsFloat(type);
    const Register value = is_float ? TakeFloat() : TakeInt();
    if (place.kind != Place::Kind::Element) {
        EmitMemory(is_float ? Op::Loadf : Op::Load, value, place);
        return value;
    }
    const Op op =
        is_float ? (place.wrap ? Op::Aloadwf : Op::Aloadf) : (place.wrap ? Op::Aloadw : Op::Aload);
    Emit(op, value, place.index, place.base, static_cast<std::int32_t>(place.count),
         static_cast<std::int32_t>(place.stride));
    return value;
}

void Generator::Store(const Place& place, bool is_float, Register value) {
    if (place.kind != Place::Kind::Element) {
        EmitMemory(is_float ? Op::Storef : Op::Store, value, place);
        return;
    }
    const Op op = is_float ? (place.wrap ? Op::Astorewf : Op::Astoref)
                           : (place.wrap ? Op::Astorew : Op::Astore);
    Emit(op, value, place.index, place.base, static_cast<std::int32_t>(place.count),
         static_cast<std::int32_t>(place.stride));
}

}  // namespace hum
