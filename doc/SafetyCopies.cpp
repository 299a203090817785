#include "doc/SafetyCopies.h"

#include "doc/WorkspaceFile.h"
#include "model/DrawnMolecules.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

// Without the toolkit's dates, files and logging: a copy is also made while the process exits.

namespace {

constexpr int keptCopies = 20;
constexpr int nameAttempts = 1000;    // names of the following milliseconds, if others are in use
constexpr long long tolerance = 2000; // milliseconds; the resolution of file times on some file systems

struct CopyFile {
    std::string name;
    long long created; // milliseconds since 1970
};

long long now()
{
    timespec time = {};
    clock_gettime(CLOCK_REALTIME, &time);
    return time.tv_sec * 1000LL + time.tv_nsec / 1'000'000;
}

long long modified(const struct stat& status)
{
    return status.st_mtim.tv_sec * 1000LL + status.st_mtim.tv_nsec / 1'000'000;
}

/// The file name for a time in milliseconds, `offset` minutes ahead of UTC, such as
/// "2026-03-29T14-07-31.250+0200.kyt".
std::string nameAt(long long time, int offset)
{
    const time_t local = time / 1000 + 60LL * offset;
    std::tm fields = {};
    gmtime_r(&local, &fields);
    std::array<char, 100> name{};
    std::snprintf(name.data(), name.size(), "%04d-%02d-%02dT%02d-%02d-%02d.%03d%c%02d%02d.kyt", fields.tm_year + 1900,
                  fields.tm_mon + 1, fields.tm_mday, fields.tm_hour, fields.tm_min, fields.tm_sec,
                  static_cast<int>(time % 1000), offset < 0 ? '-' : '+', std::abs(offset) / 60, std::abs(offset) % 60);
    return name.data();
}

/// Minutes that local time is ahead of UTC.
int offsetAt(long long time)
{
    const time_t seconds = time / 1000;
    std::tm fields = {};
    tzset();
    localtime_r(&seconds, &fields);
    return static_cast<int>(fields.tm_gmtoff / 60);
}

/// Whether `text` matches the form, in which 0 stands for any digit.
bool matches(std::string_view text, std::string_view form)
{
    return std::equal(text.begin(), text.end(), form.begin(), form.end(),
                      [](char c, char f) { return f == '0' ? c >= '0' && c <= '9' : c == f; });
}

/// The time in the name of a copy; nothing for any other name.
std::optional<long long> timeIn(const std::string& name)
{
    if (!matches(name, "0000-00-00T00-00-00.000+0000.kyt") && !matches(name, "0000-00-00T00-00-00.000-0000.kyt"))
        return std::nullopt;
    const auto number = [&](std::size_t from, std::size_t count) { return std::stoi(name.substr(from, count)); };
    std::tm fields = {};
    fields.tm_year = number(0, 4) - 1900;
    fields.tm_mon = number(5, 2) - 1;
    fields.tm_mday = number(8, 2);
    fields.tm_hour = number(11, 2);
    fields.tm_min = number(14, 2);
    fields.tm_sec = number(17, 2);
    const int offset = (name[23] == '-' ? -1 : 1) * (60 * number(24, 2) + number(26, 2));
    const long long time = (timegm(&fields) - 60LL * offset) * 1000 + number(20, 3);
    // timegm accepts a month 13.
    return nameAt(time, offset) == name ? std::optional(time) : std::nullopt;
}

/// Whether an earlier version gave this name to a copy, without the date, when the X server was lost.
bool isNameWithoutDate(const std::string& name)
{
    return matches(name, "+0000.kyt") || matches(name, "-0000.kyt");
}

/// When the file was written as a copy; nothing if it is none. Copies are regular files with such a name that have not
/// been modified since that time.
std::optional<long long> creationOfCopy(const fs::path& file)
{
    struct stat status = {};
    if (lstat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    if (isNameWithoutDate(file.filename()))
        return modified(status);
    const std::optional<long long> time = timeIn(file.filename());
    return time && std::llabs(modified(status) - *time) <= tolerance ? time : std::nullopt;
}

/// The copies in `folder`, newest first.
std::vector<CopyFile> copiesIn(const fs::path& folder)
{
    std::vector<CopyFile> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (const auto created = creationOfCopy(entry->path()))
            found.push_back({entry->path().filename(), *created});
    std::sort(found.begin(), found.end(), [](const CopyFile& a, const CopyFile& b) { return a.created > b.created; });
    return found;
}

/// Creates the folder and its missing parents, accessible by their owner only.
bool createFolder(const fs::path& path)
{
    std::error_code error;
    if (fs::is_directory(path, error))
        return true;
    const fs::path parent = path.parent_path();
    return parent != path && createFolder(parent) && (mkdir(path.c_str(), 0700) == 0 || fs::is_directory(path, error));
}

/// A file descriptor that is closed at the end.
class Descriptor {
public:
    explicit Descriptor(int number)
        : number(number)
    {
    }
    ~Descriptor()
    {
        if (number >= 0)
            close(number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    operator int() const { return number; }

private:
    int number;
};

bool hasContents(const fs::path& name, const std::string& text)
{
    const Descriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (fstat(file, &status) != 0 || status.st_size != static_cast<off_t>(text.size()))
        return false;
    std::string contents(text.size(), '\0');
    std::size_t length = 0;
    for (ssize_t part = 1; part > 0 && length < contents.size(); length += static_cast<std::size_t>(part))
        if ((part = read(file, contents.data() + length, contents.size() - length)) < 0)
            return false;
    return contents == text;
}

bool writeAll(int file, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t part = write(file, text.data(), text.size());
        if (part < 0 && errno != EINTR)
            return false;
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(part, 0)));
    }
    return true;
}

/// Renames a file, but never over another one.
bool renameToUnused(const fs::path& from, const fs::path& to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    // A file system that cannot do so: the name is taken first.
    const Descriptor taken(open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    return taken >= 0 && rename(from.c_str(), to.c_str()) == 0;
}

/// The time after which a new copy is named: the current time, or the one after the newest copy's if that was made in
/// the same moment. Copies from the future, made before the clock was set back, do not count.
long long timeOfNewCopy(const std::vector<CopyFile>& newestFirst)
{
    const long long current = now();
    for (const CopyFile& copy : newestFirst)
        if (copy.created < current + nameAttempts)
            return std::max(current, copy.created + 1);
    return current;
}

/// Atomically writes `text` to a new file that is named after the time `start` or the first one after it whose name is
/// unused. Does not wait for the disk. Returns the file's name, or an empty text on failure.
std::string writeCopy(const fs::path& folder, const std::string& text, long long start)
{
    std::string unfinished = folder / "unfinished-XXXXXX";
    const Descriptor file(mkostemp(unfinished.data(), O_CLOEXEC));
    if (file < 0)
        return {};
    const int attempts = writeAll(file, text) ? nameAttempts : 0;
    for (long long time = start; time < start + attempts; ++time) {
        const timespec seconds = {time / 1000, time % 1000 * 1'000'000};
        const std::array times = {seconds, seconds};
        futimens(file, times.data());
        std::string name = nameAt(time, offsetAt(time));
        if (renameToUnused(unfinished, folder / name))
            return name;
        if (errno != EEXIST)
            break;
    }
    unlink(unfinished.c_str());
    return {};
}

bool isSameFile(const fs::path& a, const fs::path& b)
{
    std::error_code error;
    return fs::equivalent(a, b, error);
}

bool isAnyOf(const fs::path& file, const QStringList& names)
{
    return std::any_of(names.begin(), names.end(),
                       [&](const QString& name) { return isSameFile(file, name.toStdString()); });
}

bool contains(const std::vector<std::string>& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Deletes all but the newest copies. `newest` counts as the newest one even if the clock has been set back.
void deleteOldCopies(const fs::path& folder, const std::string& newest, const std::vector<std::string>& ofOthers,
                     const QStringList& inUse)
{
    int kept = 1;
    for (const CopyFile& copy : copiesIn(folder)) {
        if (copy.name == newest || contains(ofOthers, copy.name) || ++kept <= keptCopies)
            continue;
        if (!isAnyOf(folder / copy.name, inUse))
            unlink((folder / copy.name).c_str());
    }
}

fs::path folderPath()
{
    return safetyCopyFolder().toStdString();
}

} // namespace

QString safetyCopyFolder()
{
    const fs::path stateHome = std::getenv("XDG_STATE_HOME") ? std::getenv("XDG_STATE_HOME") : "";
    if (stateHome.is_absolute())
        return QString::fromStdString(stateHome / "kytstudio");
    const fs::path home = std::getenv("HOME") ? std::getenv("HOME") : "";
    return home.is_absolute() ? QString::fromStdString(home / ".local/state/kytstudio") : QString();
}

QString SafetyCopies::keep(QCanvas& canvas, const QStringList& inUse)
{
    if (drawnAtoms(canvas).isEmpty())
        return {};
    const Result result = keepText(workspaceText(canvas).toStdString(), inUse);
    if (!result.fault.isEmpty())
        return result.fault;
    if (result.name != automatic)
        removeAutomatic(inUse);
    automatic.clear();
    return {};
}

QString SafetyCopies::keepAutomatically(QCanvas& canvas, const QStringList& inUse)
{
    if (drawnAtoms(canvas).isEmpty())
        return {};
    const Result result = keepText(workspaceText(canvas).toStdString(), inUse);
    if (!result.isNew)
        return result.fault;
    removeAutomatic(inUse);
    automatic = result.name;
    return {};
}

SafetyCopies::Result SafetyCopies::keepText(const std::string& text, const QStringList& inUse)
{
    const fs::path folder = folderPath();
    if (folder.empty() || !createFolder(folder))
        return {{}, false, QStringLiteral("cannot create the folder for safety copies: ") + safetyCopyFolder()};
    const std::vector<std::string> ofOthers = written.namesOfOthers(folder);
    const std::vector<CopyFile> copies = copiesIn(folder);
    for (const CopyFile& copy : copies) {
        if (contains(ofOthers, copy.name))
            continue;
        if (!hasContents(folder / copy.name, text))
            break;
        written.add(folder, copy.name);
        return {copy.name, false, {}};
    }
    const std::string name = writeCopy(folder, text, timeOfNewCopy(copies));
    if (name.empty())
        return {{}, false, QStringLiteral("cannot write a safety copy to ") + safetyCopyFolder()};
    written.add(folder, name);
    deleteOldCopies(folder, name, ofOthers, inUse);
    return {name, true, {}};
}

/// Removes the copy that a new one replaces, unless it has been modified.
void SafetyCopies::removeAutomatic(const QStringList& inUse)
{
    const fs::path file = folderPath() / automatic;
    if (!automatic.empty() && creationOfCopy(file) && !isAnyOf(file, inUse))
        unlink(file.c_str());
}

QList<SafetyCopy> SafetyCopies::available() const
{
    const fs::path folder = folderPath();
    const std::vector<std::string> ofOthers = written.namesOfOthers(folder);
    QList<SafetyCopy> copies;
    for (const CopyFile& copy : copiesIn(folder))
        if (!contains(ofOthers, copy.name))
            copies.append({QString::fromStdString(folder / copy.name), copy.created});
    return copies;
}

std::optional<SafetyCopy> SafetyCopies::takeAbandoned()
{
    const fs::path folder = folderPath();
    std::vector<std::string> names = CopyList::takeAbandoned(folder);
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        if (const auto created = creationOfCopy(folder / *name))
            return SafetyCopy{QString::fromStdString(folder / *name), *created};
    return std::nullopt;
}
