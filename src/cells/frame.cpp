#include "cells/frame.h"

#include "base/format.h"
#include "base/utf.h"

namespace zo::ui {

void Frame::Resize(const Grid& size) {
    grid = size;
    const auto columns = static_cast<std::size_t>(size.columns);
    cells.resize(columns * static_cast<std::size_t>(size.rows));
}

std::string TextDump(const Frame& frame) {
    std::string dump;
    for (int y = 0; y < frame.grid.rows; ++y) {
        int end = frame.grid.columns;
        while (end > 0 && frame.At(end - 1, y).glyph == U' ') --end;
        for (int x = 0; x < end; ++x) base::AppendUtf8(dump, frame.At(x, y).glyph);
        dump += '\n';
    }
    return dump;
}

std::string RoleDump(const Frame& frame) {
    std::string dump;
    for (int y = 0; y < frame.grid.rows; ++y) {
        for (int x = 0, end = 0; x < frame.grid.columns; x = end) {
            const Role role = frame.At(x, y).role;
            while (end < frame.grid.columns && frame.At(end, y).role == role) ++end;
            const std::string name(RoleName(role));
            dump += base::Format("%s%d-%d %s", x > 0 ? ", " : "", x, end - 1, name.c_str());
        }
        dump += '\n';
    }
    return dump;
}

}  // namespace zo::ui
