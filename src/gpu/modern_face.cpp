#include "modern_face.h"

#include <cmath>
#include <type_traits>

#include "base/embedded.h"

#include <ft2build.h>
#include FT_FREETYPE_H

// The weights of the face, the one for small cells first.
extern "C" const base::EmbeddedFile modern_fonts[];

namespace zo::gpu {
namespace {

constexpr int kWidestSmallCell = 8;   // pixels; up to here thin strokes would be too faint
constexpr FT_F26Dot6 kFontUnit = 64;  // of sizes, in a pixel
constexpr FT_UInt kDotsPerInch = 72;  // so that a point is a pixel

const base::EmbeddedFile& WeightFor(int cell_width) {
    return modern_fonts[cell_width <= kWidestSmallCell ? 0 : 1];
}

struct Closer {
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
    void operator()(FT_Face face) const { FT_Done_Face(face); }
};
using LibraryHandle = std::unique_ptr<std::remove_pointer_t<FT_Library>, Closer>;
using FaceHandle = std::unique_ptr<std::remove_pointer_t<FT_Face>, Closer>;

LibraryHandle StartLibrary() {
    FT_Library library = nullptr;
    FT_Init_FreeType(&library);
    return LibraryHandle(library);
}

FaceHandle OpenFace(FT_Library library, const base::EmbeddedFile& file) {
    FT_Face face = nullptr;
    if (library == nullptr) return nullptr;
    FT_New_Memory_Face(library, reinterpret_cast<const FT_Byte*>(file.data),
                       static_cast<FT_Long>(file.size), 0, &face);
    return FaceHandle(face);
}

Level LevelOf(unsigned char grey) {
    return static_cast<Level>((grey * kFull + 127) / 255);
}

// Puts a glyph's bitmap into the cell, as far as it is in it.
void Place(const FT_Bitmap& bitmap, int left, int top, Mask& cell) {
    for (int y = 0; y < static_cast<int>(bitmap.rows); ++y) {
        const unsigned char* const row = bitmap.buffer + y * bitmap.pitch;
        for (int x = 0; x < static_cast<int>(bitmap.width); ++x) {
            cell.Fill(left + x, top + y, left + x + 1, top + y + 1, LevelOf(row[x]));
        }
    }
}

}  // namespace

// One weight of the face at one size.
class ModernFace::Font {
public:
    explicit Font(const ui::Grid& grid)
        : library_(StartLibrary()), face_(OpenFace(library_.get(), WeightFor(grid.cell_width))) {
        if (!face_) return;
        // An em so large that the letters' common width is the cell's.
        const FT_F26Dot6 em =
            grid.cell_width * kFontUnit * face_->units_per_EM / face_->max_advance_width;
        FT_Set_Char_Size(face_.get(), 0, em, kDotsPerInch, kDotsPerInch);
        const auto ascent = static_cast<float>(face_->ascender);
        const auto height = ascent - static_cast<float>(face_->descender);
        baseline_ = static_cast<int>(std::lround(grid.cell_height * ascent / height));
    }

    bool Draw(char32_t glyph, Mask& cell) {
        const FT_UInt index = face_ ? FT_Get_Char_Index(face_.get(), glyph) : 0;
        if (index == 0) return false;
        if (FT_Load_Glyph(face_.get(), index, FT_LOAD_RENDER | FT_LOAD_TARGET_LIGHT) != 0) {
            return false;
        }
        const FT_GlyphSlot slot = face_->glyph;
        Place(slot->bitmap, slot->bitmap_left, baseline_ - slot->bitmap_top, cell);
        return true;
    }

private:
    LibraryHandle library_;  // outlives the face
    FaceHandle face_;
    int baseline_ = 0;  // pixel rows of a cell above it
};

ModernFace::ModernFace() = default;
ModernFace::~ModernFace() = default;

void ModernFace::Fit(const ui::Grid& grid) {
    grid_ = grid;
    font_.reset();
}

bool ModernFace::Draw(char32_t glyph, Mask& cell) {
    if (!font_) font_ = std::make_unique<Font>(grid_);
    return font_->Draw(glyph, cell);
}

std::string ModernFamily() {
    const LibraryHandle library = StartLibrary();
    const FaceHandle face = OpenFace(library.get(), modern_fonts[1]);
    return face ? face->family_name : "";
}

}  // namespace zo::gpu
