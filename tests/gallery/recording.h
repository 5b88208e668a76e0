#pragma once

#include <map>
#include <string>

#include "cells/frame.h"

namespace gallery {

// The cell texts of one scene, a grid each, against those that texts/ holds. The smallest grid's
// text stands there as it is; of the others there is a digest, since they show the same at other
// widths. With KEST_RECORD set, the file is written instead.
//
// The glyphs alone are recorded, so that a colour can change without them.
class Recording {
public:
    explicit Recording(std::string scene) : scene_(std::move(scene)) {}

    // Takes a look's text at a grid; the same grid again must show the same.
    void Add(const zo::ui::Frame& frame);
    // What differs from the recorded texts, a line each; empty when nothing does. Writes the texts
    // that differ beside the pictures.
    std::string Finish();

private:
    std::string scene_;
    std::map<std::string, std::string> texts_;  // by look and grid
};

// A scene's words as a file name.
std::string FileName(std::string_view scene);

}  // namespace gallery
