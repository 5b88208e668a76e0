#pragma once

#include <string>
#include <vector>

// The stereo samples of a program that must compile; fewer than asked for when it stops.
std::vector<float> Played(const std::string& text, std::size_t samples);
