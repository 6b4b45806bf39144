#include "host/tables/WorkbookCheck.h"

#include <minizip/unzip.h>

#include <array>
#include <memory>
#include <string_view>

namespace host {

namespace {

constexpr std::size_t headBytes = 4096; ///< in which the outermost element begins
constexpr std::size_t tailBytes = 256;  ///< in which it ends

struct ArchiveDeleter {
    void operator()(void* archive) const { unzClose(archive); }
};
using Archive = std::unique_ptr<void, ArchiveDeleter>;

struct Ends {
    std::string head;
    std::string tail;
};

/// False when the part can not be unpacked.
bool readEnds(void* archive, Ends& ends) {
    if (unzOpenCurrentFile(archive) != UNZ_OK)
        return false;
    std::array<char, 1 << 16> buffer{};
    int read = 0;
    while ((read = unzReadCurrentFile(archive, buffer.data(), static_cast<unsigned>(buffer.size()))) > 0) {
        const std::string_view piece(buffer.data(), static_cast<std::size_t>(read));
        if (ends.head.size() < headBytes)
            ends.head += piece.substr(0, headBytes - ends.head.size());
        ends.tail += piece;
        if (ends.tail.size() > tailBytes)
            ends.tail.erase(0, ends.tail.size() - tailBytes);
    }
    // Closing compares the sum of what was read.
    return unzCloseCurrentFile(archive) == UNZ_OK && read == 0;
}

bool closesItsRoot(const Ends& ends) {
    const auto from = ends.head.find('<', ends.head.starts_with("<?") ? 1 : 0);
    if (from == std::string::npos)
        return false;
    const auto to = ends.head.find_first_of(" \t\r\n/>", from);
    if (to == std::string::npos)
        return false;
    const std::string root = ends.head.substr(from + 1, to - from - 1);
    const auto last = ends.tail.find_last_not_of(" \t\r\n");
    const std::string text = ends.tail.substr(0, last == std::string::npos ? 0 : last + 1);
    return text.ends_with("</" + root + ">") || (text.ends_with("/>") && text.rfind("<" + root) != std::string::npos);
}

} // namespace

bool isWholeWorkbook(const std::string& file) {
    const Archive archive(unzOpen64(file.c_str()));
    if (!archive)
        return false;
    int at = unzGoToFirstFile(archive.get());
    if (at != UNZ_OK)
        return false;
    for (; at == UNZ_OK; at = unzGoToNextFile(archive.get())) {
        Ends ends;
        if (!readEnds(archive.get(), ends) || !closesItsRoot(ends))
            return false;
    }
    return at == UNZ_END_OF_LIST_OF_FILE;
}

} // namespace host
