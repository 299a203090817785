#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// The names of the safety copies that a running program has written, for other programs to know whose they are. They
/// are lines of a file in the folder "sessions" beside the copies. The file is locked as long as the program runs and
/// removed when it ends as its user wished; a list without a lock has been abandoned.
class CopyList {
public:
    CopyList() = default;
    ~CopyList() { release(); }
    CopyList(const CopyList&) = delete;
    CopyList& operator=(const CopyList&) = delete;

    /// Adds the name of a copy in `folder`, unless it is the one added last. Without permission to write there, nothing
    /// happens.
    void add(const std::filesystem::path& folder, const std::string& name);
    /// Removes the list.
    void release();

    /// The names in the lists of other programs that are running.
    std::vector<std::string> namesOfOthers(const std::filesystem::path& folder) const;

    /// Removes the lists that have been abandoned. Returns the names in the newest of them, in the order of writing.
    static std::vector<std::string> takeAbandoned(const std::filesystem::path& folder);

private:
    bool create(const std::filesystem::path& folder);

    std::filesystem::path file;
    std::string last;
    int descriptor = -1;
};
