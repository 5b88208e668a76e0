#include "compiled.h"

#include "hum/compile.h"

hum::Includes::Text HeldIncludes::Find(std::string_view, std::string_view name) {
    if (name == "locked") return {Found::Unreadable, {}, {}};
    const auto found = texts.find(name);
    if (found == texts.end()) return {Found::No, {}, {}};
    return {Found::Yes, found->first, found->second};
}

Compiled CompileText(std::string_view text, hum::Includes* includes, std::string_view library) {
    Compiled compiled;
    hum::ProgramText program;
    program.text = text;
    program.includes = includes;
    program.library = library;
    if (const auto fault = hum::Compile(program, compiled.program)) {
        compiled.fault = hum::FaultText(*fault);
        constexpr std::string_view kUnnamed = "<input>:";
        if (compiled.fault.starts_with(kUnnamed)) compiled.fault.erase(0, kUnnamed.size());
    }
    return compiled;
}
