#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>

#include "base/result.h"

namespace zo::platform {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// As fopen(); null when it does not open, for the reason that LastError() tells.
File OpenFile(const std::filesystem::path& path, const char* mode);

base::Failure LastError();  // in words, of the C library's last call

}  // namespace zo::platform
