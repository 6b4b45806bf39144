#include "host/database/NewFile.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace host {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view mark = ".nuovo";

std::string machine() {
    char name[256] = {};
    ::gethostname(name, sizeof name - 1);
    std::string text;
    for (const char c : std::string_view(name))
        text += c == '/' ? '_' : c;
    return text;
}

std::string nameOfProcess(const std::string& process) {
    std::string name;
    std::getline(std::ifstream("/proc/" + process + "/comm"), name);
    return name;
}

/// Whether a process of this program has that number.
bool isAtWork(const std::string& process) {
    const std::string name = nameOfProcess(process);
    return !name.empty() && name == nameOfProcess("self");
}

bool isOld(const fs::path& file) {
    std::error_code error;
    const auto written = fs::last_write_time(file, error);
    return !error && written < fs::file_time_type::clock::now() - std::chrono::hours(24);
}

/// What follows the mark: "-MACHINE-PROCESS", or the process alone as earlier versions wrote it; a journal's ending
/// after it.
bool isLeftOver(const fs::path& file, std::string rest) {
    constexpr std::string_view journal = "-journal";
    if (rest.size() > journal.size() && rest.ends_with(journal))
        rest.resize(rest.size() - journal.size());
    const auto digits = rest.find_last_not_of("0123456789") + 1;
    const std::string process = rest.substr(digits);
    if (process.empty())
        return false;
    const std::string before = rest.substr(0, digits);
    if (before.empty() || before == "-" + machine() + "-")
        return !isAtWork(process);
    return before.size() > 2 && before.front() == '-' && before.back() == '-' && isOld(file);
}

} // namespace

fs::path makingName(const fs::path& file) {
    return file.string() + std::string(mark) + "-" + machine() + "-" + std::to_string(::getpid());
}

bool nameWhereNone(const fs::path& made, const fs::path& file) {
    if (::renameat2(AT_FDCWD, made.c_str(), AT_FDCWD, file.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    // Not every file system knows it.
    if (errno == EINVAL || errno == ENOSYS) {
        if (::link(made.c_str(), file.c_str()) == 0) {
            ::unlink(made.c_str());
            return true;
        }
    }
    if (errno == EEXIST)
        return false;
    throw fs::filesystem_error("rename", made, file, std::error_code(errno, std::system_category()));
}

void removeLeftOvers(const fs::path& file) {
    const std::string beginning = file.filename().string() + std::string(mark);
    std::error_code error;
    for (fs::directory_iterator at(file.parent_path(), error), end; !error && at != end; at.increment(error)) {
        const std::string name = at->path().filename().string();
        std::error_code ignored;
        if (name.starts_with(beginning) && isLeftOver(at->path(), name.substr(beginning.size())))
            fs::remove(at->path(), ignored);
    }
}

} // namespace host
