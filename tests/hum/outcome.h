#pragma once

#include <string>

#include "hum/machine.h"
#include "hum/program.h"

// What a program gives, written as its expectation is: "left" and "right" with as many samples as
// are expected of the left, or "stop" with sample and message.
std::string Outcome(const hum::Program& program, hum::Engine engine, const std::string& expected);
