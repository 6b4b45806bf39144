#include "platform/sqlite/BusyWait.h"

#include "platform/shared/LongWork.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <utility>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::sqlite {

namespace {

using shared::Waiting;

constexpr Waiting::Time patience{300}; ///< before anything is said
constexpr Waiting::Time interval{200}; ///< between two times

std::string describe(long process) {
    const std::string folder = "/proc/" + std::to_string(process);
    std::string name;
    std::getline(std::ifstream(folder + "/comm"), name);
    if (name.empty())
        return {};
    std::string text = "«" + name + "» (processo " + std::to_string(process);
    struct stat status = {};
    if (::stat(folder.c_str(), &status) == 0)
        if (const passwd* user = ::getpwuid(status.st_uid))
            text += ", utente " + std::string(user->pw_name);
    return text + ")";
}

} // namespace

// One line for each lock: "1: POSIX  ADVISORY  WRITE 4711 08:01:131077 1073741824 1073742335". Asking the file itself
// would have to open it, and closing it again would drop this program's own locks on it.
std::string lockHolder(const std::string& file) {
    struct stat status = {};
    if (::stat(file.c_str(), &status) != 0)
        return {};
    const std::string inode = ":" + std::to_string(status.st_ino);
    std::ifstream locks("/proc/locks");
    long found = 0;
    for (std::string line; std::getline(locks, line);) {
        std::istringstream words(line);
        std::string number, kind, advisory, mode, place;
        long process = 0;
        if (!(words >> number >> kind >> advisory >> mode >> process >> place) || process <= 0 ||
            process == ::getpid() || place.size() < inode.size() ||
            place.compare(place.size() - inode.size(), inode.size(), inode) != 0)
            continue;
        found = process;
        // Who writes is the one to be waited for; who reads only where nobody does.
        if (mode == "WRITE")
            break;
    }
    return found != 0 ? describe(found) : std::string();
}

void BusyWait::attach(sqlite3* database, std::string file, int longest) {
    file_ = std::move(file);
    longest_ = Waiting::Time(longest);
    sqlite3_busy_handler(database, &BusyWait::onBusy, this);
}

int BusyWait::onBusy(void* self, int tries) {
    return static_cast<BusyWait*>(self)->wait(tries) ? 1 : 0;
}

bool BusyWait::wait(int tries) {
    constexpr std::array<int, 8> steps{1, 2, 5, 10, 20, 25, 50, 100};
    auto& waiting = Waiting::instance();
    if (tries == 0) {
        waiting.operationWaits();
        waited_ = told_ = Waiting::Time(0);
    }
    if (shared::LongWork::instance().stops(true))
        return false;
    const auto left = waiting.left(longest_);
    if (left.count() == 0)
        return false;
    if (waiting.told && waited_ >= patience && (told_.count() == 0 || waited_ >= told_ + interval)) {
        told_ = waited_;
        waiting.told(std::filesystem::path(file_).filename().string(), lockHolder(file_));
    }
    const Waiting::Time step(steps.at(std::min(static_cast<std::size_t>(tries), steps.size() - 1)));
    const auto sleep = std::min(step, left);
    const auto before = std::chrono::steady_clock::now();
    std::this_thread::sleep_for(sleep);
    const auto slept =
        std::max(sleep, std::chrono::duration_cast<Waiting::Time>(std::chrono::steady_clock::now() - before));
    waiting.add(slept);
    waited_ += slept;
    return true;
}

} // namespace platform::sqlite
