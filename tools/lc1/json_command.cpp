#include <cstdio>

#include "base/format.h"
#include "commands.h"
#include "json/parser.h"
#include "json/writer.h"
#include "json_line.h"
#include "subject.h"
#include "text.h"

namespace lc1 {
namespace {

void WriteError(const json::Error& error) {
    JsonLine out;
    out.Boolean("ok", false);
    out.Number("line", error.line);
    out.Number("column", error.column);
    out.Text("message", error.message);
}

void WriteDocument(const std::string& document) {
    JsonLine out;
    out.Boolean("ok", true);
    out.Array("bytes");
    for (const char byte : document) out.Number({}, static_cast<unsigned char>(byte));
    out.End();
}

}  // namespace

Outcome RunJson(const Request& request) {
    const std::string& path = request.files.front();
    std::string text;
    if (std::optional<Problem> problem = ReadFile(path, text)) return *problem;
    json::Value value;
    json::Error error;
    if (!json::Parse(text, value, error)) {
        if (request.json) {
            WriteError(error);
        } else {
            PutLine(path + base::Format(":%u:%u: ", error.line, error.column) + error.message);
        }
        return ExitCode::Fail;
    }
    const std::string document = json::Write(value, request.indent);
    if (request.json) {
        WriteDocument(document);
    } else {
        std::fwrite(document.data(), 1, document.size(), stdout);
    }
    return ExitCode::Pass;
}

}  // namespace lc1
