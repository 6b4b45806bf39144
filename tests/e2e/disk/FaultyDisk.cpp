// Preloaded into the program, it makes the disk fail under one database: the files whose path begins with
// FAULTY_DISK_FILES. What it does stands in the file that FAULTY_DISK_ORDER names, which may come, change and go while
// the program runs:
//
//   kill N    the program is killed at its Nth write, flush or removal; of a write the first half reaches the disk
//   full N    there is no space for the Nth write that makes a file longer, nor for any after it
//
// The count begins anew with each order.

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

enum class Order { none, kill, full };

Order order = Order::none;
long left = 0;
struct timespec given = {};
ino_t givenBy = 0;

template <class Function> Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void readOrder() {
    const char* file = std::getenv("FAULTY_DISK_ORDER");
    struct stat status = {};
    if (file == nullptr || ::stat(file, &status) != 0) {
        order = Order::none;
        givenBy = 0;
        return;
    }
    if (status.st_ino == givenBy && status.st_mtim.tv_sec == given.tv_sec && status.st_mtim.tv_nsec == given.tv_nsec)
        return;
    givenBy = status.st_ino;
    given = status.st_mtim;
    char word[8] = {};
    if (FILE* in = std::fopen(file, "r")) {
        order = std::fscanf(in, "%7s %ld", word, &left) != 2 ? Order::none
                : std::strcmp(word, "kill") == 0             ? Order::kill
                                                             : Order::full;
        std::fclose(in);
    }
}

bool concerns(const char* path) {
    const char* files = std::getenv("FAULTY_DISK_FILES");
    return files != nullptr && std::strncmp(path, files, std::strlen(files)) == 0;
}

/// The folder of these files, which is flushed when one has gone.
bool isFolder(const char* path) {
    const char* files = std::getenv("FAULTY_DISK_FILES");
    const auto length = std::strlen(path);
    return files != nullptr && std::strncmp(path, files, length) == 0 && std::strrchr(files, '/') == files + length;
}

bool concerns(int file) {
    char link[64];
    char path[PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const auto length = ::readlink(link, path, sizeof path - 1);
    if (length <= 0)
        return false;
    path[length] = '\0';
    if (!concerns(path) && !isFolder(path))
        return false;
    readOrder();
    return true;
}

/// Counts an operation; whether the program is to be killed at it.
bool killsNow() {
    return order == Order::kill && --left <= 0;
}

[[noreturn]] void kill() {
    ::kill(::getpid(), SIGKILL);
    for (;;)
        ::pause();
}

bool isFull(int file, off64_t end) {
    struct stat status = {};
    return order == Order::full && ::fstat(file, &status) == 0 && end > status.st_size && --left <= 0;
}

ssize_t writeAt(int file, const void* data, size_t size, off64_t offset) {
    auto* write = next<ssize_t(int, const void*, size_t, off64_t)>("pwrite64");
    if (concerns(file)) {
        if (killsNow()) {
            write(file, data, size / 2, offset);
            kill();
        }
        if (isFull(file, offset + static_cast<off64_t>(size))) {
            errno = ENOSPC;
            return -1;
        }
    }
    return write(file, data, size, offset);
}

} // namespace

extern "C" {

ssize_t pwrite64(int file, const void* data, size_t size, off64_t offset) {
    return writeAt(file, data, size, offset);
}

ssize_t pwrite(int file, const void* data, size_t size, off_t offset) {
    return writeAt(file, data, size, offset);
}

int fsync(int file) {
    if (concerns(file) && killsNow())
        kill();
    return next<int(int)>("fsync")(file);
}

int fdatasync(int file) {
    if (concerns(file) && killsNow())
        kill();
    return next<int(int)>("fdatasync")(file);
}

int unlink(const char* path) noexcept {
    if (concerns(path)) {
        readOrder();
        if (killsNow())
            kill();
    }
    return next<int(const char*)>("unlink")(path);
}

} // extern "C"
