#include "gpu/fonts.h"

#include "classic_font.h"
#include "modern_face.h"

namespace zo::gpu {

std::vector<std::string> FontFamilies() {
    std::vector<std::string> families = {"Unscii 16"};
    if (HasNineWideFace()) families.emplace_back("Unscii 18");
    if (std::string modern = ModernFamily(); !modern.empty()) families.push_back(std::move(modern));
    return families;
}

// The nine-wide glyphs are made from the eight-wide ones, so they are there when those are.
bool HasNineWideFace() {
    return FindClassicGlyph(U'A').has_value();
}

}  // namespace zo::gpu
