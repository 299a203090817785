#include "doc/CopyList.h"

#include <cerrno>
#include <fstream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const char* const folderName = "sessions";
const char* const listPrefix = "list-";

std::vector<fs::path> listsIn(const fs::path& folder)
{
    std::vector<fs::path> lists;
    std::error_code error;
    for (fs::directory_iterator entry(folder / folderName, error), end; !error && entry != end; entry.increment(error))
        if (entry->path().filename().string().starts_with(listPrefix))
            lists.push_back(entry->path());
    return lists;
}

std::vector<std::string> linesOf(const fs::path& file)
{
    std::vector<std::string> lines;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// The lock of another program's list, if that program is gone.
class AbandonedList {
public:
    explicit AbandonedList(const fs::path& file)
        : descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW))
        , isAbandoned(descriptor >= 0 && flock(descriptor, LOCK_EX | LOCK_NB) == 0)
    {
    }
    ~AbandonedList()
    {
        if (descriptor >= 0)
            close(descriptor);
    }
    AbandonedList(const AbandonedList&) = delete;
    AbandonedList& operator=(const AbandonedList&) = delete;

    explicit operator bool() const { return isAbandoned; }
    /// When the last name was added, in seconds since 1970.
    time_t changed() const
    {
        struct stat status = {};
        fstat(descriptor, &status);
        return status.st_mtime;
    }

private:
    int descriptor;
    bool isAbandoned;
};

} // namespace

bool CopyList::create(const fs::path& folder)
{
    const fs::path directory = folder / folderName;
    mkdir(directory.c_str(), 0700);
    std::string name = directory / "new-XXXXXX";
    descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (descriptor < 0)
        return false;
    // Locked before it has a list's name, so that nobody takes it for abandoned.
    flock(descriptor, LOCK_EX);
    file = directory / (listPrefix + name.substr(name.size() - 6));
    if (rename(name.c_str(), file.c_str()) == 0)
        return true;
    unlink(name.c_str());
    close(descriptor);
    descriptor = -1;
    return false;
}

void CopyList::add(const fs::path& folder, const std::string& name)
{
    if (name == last || (descriptor < 0 && !create(folder)))
        return;
    last = name;
    const std::string line = name + '\n';
    static_cast<void>(!write(descriptor, line.data(), line.size()));
}

void CopyList::release()
{
    if (descriptor < 0)
        return;
    unlink(file.c_str());
    close(descriptor);
    descriptor = -1;
    last.clear();
}

std::vector<std::string> CopyList::namesOfOthers(const fs::path& folder) const
{
    std::vector<std::string> names;
    for (const fs::path& list : listsIn(folder)) {
        if ((descriptor >= 0 && list == file) || AbandonedList(list))
            continue;
        const std::vector<std::string> lines = linesOf(list);
        names.insert(names.end(), lines.begin(), lines.end());
    }
    return names;
}

std::vector<std::string> CopyList::takeAbandoned(const fs::path& folder)
{
    std::vector<std::string> newest;
    time_t newestChange = 0;
    for (const fs::path& list : listsIn(folder)) {
        const AbandonedList abandoned(list);
        if (!abandoned)
            continue;
        std::vector<std::string> lines = linesOf(list);
        if (!lines.empty() && abandoned.changed() >= newestChange) {
            newestChange = abandoned.changed();
            newest = std::move(lines);
        }
        unlink(list.c_str());
    }
    return newest;
}
