#include "host/tables/TableFile.h"

#include "host/tables/CsvText.h"
#include "host/tables/TablePages.h"
#include "host/tables/XlsxFile.h"
#include "platform/shared/SystemReason.h"

#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

namespace fs = std::filesystem;

QString reason(int number) {
    return QString::fromStdString(platform::systemReason(number));
}

/// A file in the making beside the one whose place it will take; gone if it does not.
class Making {
public:
    explicit Making(const fs::path& file) : name_((file.parent_path() / ".esporta-XXXXXX").string()) {
        descriptor_ = ::mkstemp(name_.data());
        if (descriptor_ < 0)
            throw std::system_error(errno, std::generic_category());
    }
    Making(const Making&) = delete;
    Making& operator=(const Making&) = delete;
    ~Making() {
        ::close(descriptor_);
        if (!placed_)
            ::unlink(name_.c_str());
    }

    const std::string& name() const { return name_; }

    void append(std::string_view text) {
        while (!text.empty()) {
            const ssize_t written = ::write(descriptor_, text.data(), text.size());
            if (written < 0 && errno == EINTR)
                continue;
            if (written < 0)
                throw std::system_error(errno, std::generic_category());
            text.remove_prefix(static_cast<std::size_t>(written));
        }
    }

    /// As readable as a file that the user makes otherwise, or as the one that it replaces.
    void takePlaceOf(const fs::path& file) {
        struct stat before {};
        const mode_t mask = ::umask(0);
        ::umask(mask);
        const mode_t mode = ::stat(file.c_str(), &before) == 0 ? before.st_mode & 0777 : 0666 & ~mask;
        if (::fchmod(descriptor_, mode) != 0 || ::fsync(descriptor_) != 0)
            throw std::system_error(errno, std::generic_category());
        fs::rename(name_, file);
        placed_ = true;
    }

private:
    std::string name_;
    int descriptor_;
    bool placed_ = false;
};

QString write(const Table& table, const TableTitle& title, TableFormat format, Making& making) {
    switch (format) {
    case TableFormat::csv:
        writeCsv(table, [&](std::string_view piece) {
            making.append(piece);
            return true;
        });
        return {};
    case TableFormat::xlsx:
        return writeXlsx(table, title.title, making.name());
    case TableFormat::pdf:
        return writePdf(table, title, making.name());
    }
    return {};
}

QString place(const Table& table, const TableTitle& title, TableFormat format, const fs::path& file) {
    try {
        if (fs::is_directory(file))
            return reason(EISDIR);
        if (fs::exists(file) && !fs::is_regular_file(file))
            return QStringLiteral("non è un file");
        // A file that the user has locked against writing is not replaced either.
        if (fs::exists(file) && ::access(file.c_str(), W_OK) != 0)
            return reason(errno);
        Making making(file);
        QString failure = write(table, title, format, making);
        if (failure.isEmpty())
            making.takePlaceOf(file);
        return failure;
    } catch (const std::system_error& error) {
        return reason(error.code().value());
    }
}

} // namespace

QStringList tableFileEndings() {
    return {QStringLiteral(".csv"), QStringLiteral(".xlsx"), QStringLiteral(".pdf")};
}

std::optional<TableFormat> tableFormatOf(const QString& file) {
    const QStringList endings = tableFileEndings();
    for (qsizetype at = 0; at < endings.size(); ++at)
        if (file.endsWith(endings[at], Qt::CaseInsensitive))
            return static_cast<TableFormat>(at);
    return std::nullopt;
}

QString writeTableFile(const Table& table, const TableTitle& title, const QString& file) {
    const auto format = tableFormatOf(file);
    if (!format)
        return QStringLiteral("Il nome del file deve finire in .csv, .xlsx o .pdf: «%1».").arg(file);
    std::error_code error;
    // A link is followed: what it leads to is replaced, not the link.
    fs::path target = fs::weakly_canonical(fs::absolute(file.toStdString(), error), error);
    if (error)
        target = file.toStdString();
    const QString failure = place(table, title, *format, target);
    return failure.isEmpty() ? QString() : QStringLiteral("Il file «%1» non si può scrivere: %2.").arg(file, failure);
}

} // namespace host
