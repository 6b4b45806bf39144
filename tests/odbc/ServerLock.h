#pragma once

#include <filesystem>
#include <string>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace odbc_test {

// Tests that run at the same time share the server's tables: one works on them at a time.

/// Waits for the other tests of this user; a value for unlockServer().
inline int lockServer() {
    const auto path =
        std::filesystem::temp_directory_path() / ("distinte-test-odbc-" + std::to_string(::getuid()) + ".lock");
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file >= 0)
        ::flock(file, LOCK_EX);
    return file;
}

inline void unlockServer(int lock) {
    if (lock >= 0)
        ::close(lock);
}

} // namespace odbc_test
