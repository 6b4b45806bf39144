#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace docs_test {

inline std::filesystem::path inSources(std::string_view path) {
    return std::filesystem::path(DISTINTE_SOURCES) / path;
}

/// The whole text of a file; throws when it can not be read.
inline std::string read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    if (!stream)
        throw std::runtime_error("not readable: " + file.string());
    return text.str();
}

} // namespace docs_test
