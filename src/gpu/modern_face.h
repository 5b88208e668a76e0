#pragma once

#include <memory>
#include <string>

#include "face.h"

namespace zo::gpu {

// The flat face: JetBrains Mono as large as the cell allows, its letters on one baseline. The font
// library starts with the first glyph, so the classic look never waits for it.
class ModernFace final : public Face {
public:
    ModernFace();
    ~ModernFace() override;
    void Fit(const ui::Grid& grid) override;
    bool Draw(char32_t glyph, Mask& cell) override;

private:
    class Font;

    std::unique_ptr<Font> font_;
    ui::Grid grid_;
};

// The name of the face's family as the font itself has it; empty when the font does not open.
std::string ModernFamily();

}  // namespace zo::gpu
