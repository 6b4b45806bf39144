#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

namespace host_test {

/// A folder of its own for one test, gone at its end.
class Folder {
public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "distinte-host-XXXXXX").string();
        EXPECT_NE(nullptr, ::mkdtemp(name.data()));
        path_ = name;
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }

    std::string file(const std::string& name) const { return (path_ / name).string(); }
    const std::filesystem::path& path() const { return path_; }
    std::size_t entries() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator()));
    }

private:
    std::filesystem::path path_;
};

inline std::string contentOf(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

inline void write(const std::string& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

/// Sets an environment variable while it lives; a null value takes it away.
class Environment {
public:
    Environment(const char* name, const char* value) : name_(name) {
        if (const char* before = std::getenv(name)) {
            before_ = before;
            had_ = true;
        }
        value != nullptr ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment() { had_ ? ::setenv(name_, before_.c_str(), 1) : ::unsetenv(name_); }

private:
    const char* name_;
    std::string before_;
    bool had_ = false;
};

} // namespace host_test
