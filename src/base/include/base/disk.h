#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"

namespace base {

// A file held against other programs until it is let go by destroying this, or by the system when
// the program ends, however it ends.
class FileLock {
public:
    virtual ~FileLock() = default;
};

// The file operations that the program needs, so that a test can stand in for a full disk or a
// power cut. Failures hold the system's reason alone ("No space left on device"); callers add what
// they were doing.
class Disk {
public:
    virtual ~Disk() = default;
    virtual bool Exists(const std::filesystem::path& path) = 0;
    virtual bool IsFolder(const std::filesystem::path& path) = 0;
    // Every file beneath a folder, at any depth, in the order of their paths.
    virtual Result<std::vector<std::filesystem::path>> FilesUnder(
        const std::filesystem::path& folder) = 0;
    virtual Result<std::string> Read(const std::filesystem::path& path) = 0;
    // Creates or truncates the file. Nothing is promised to be on the disk before Flush.
    virtual Status Write(const std::filesystem::path& path, std::string_view text) = 0;
    // Forces the file's contents to the disk.
    virtual Status Flush(const std::filesystem::path& path) = 0;
    // Forces the folder's entries to the disk, where the system can do that.
    virtual Status FlushFolder(const std::filesystem::path& folder) = 0;
    virtual Status Copy(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    // Moves a file over another of the same folder in one step.
    virtual Status Rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    virtual Status Remove(const std::filesystem::path& path) = 0;
    // A folder with everything beneath it.
    virtual Status RemoveFolder(const std::filesystem::path& folder) = 0;
    virtual Status MakeFolders(const std::filesystem::path& folder) = 0;
    // Creates the file if need be, and leaves it there. Null when another program holds it; a
    // failure when the system cannot lock.
    virtual Result<std::unique_ptr<FileLock>> Lock(const std::filesystem::path& path) = 0;
};

// A path as UTF-8 and as the system writes it, for messages.
std::string PathText(const std::filesystem::path& path);

// The path that UTF-8 text names, as it comes from a command line or a file.
std::filesystem::path TextPath(std::string_view text);

// The path from the folder on, as UTF-8 with forward slashes: the name of a file in a collection.
std::string NameBelow(const std::filesystem::path& folder, const std::filesystem::path& path);

// The path with a suffix behind its last name: Suffixed("a/b.json", ".bak") is "a/b.json.bak".
std::filesystem::path Suffixed(const std::filesystem::path& path, std::string_view suffix);

// Replaces the file whole or not at all: the text goes to `path`.tmp and is flushed, the old file
// is copied to `path`.bak, and the temporary file is moved over the file. A failure says "cannot
// write", "cannot finish writing" or "cannot replace" and the path, with the system's reason in
// brackets.
Status WriteAtomically(Disk& disk, const std::filesystem::path& path, std::string_view text);

}  // namespace base
