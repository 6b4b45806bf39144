#include "host/script/ScriptReader.h"

#include "host/script/ScriptRequest.h"
#include "platform/shared/SystemReason.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

constexpr int idleMilliseconds = 50;
constexpr std::size_t chunkBytes = 65536;

QString systemReason(int code) {
    switch (code) {
    case ENOENT:
        return QStringLiteral("il file non esiste");
    case EACCES:
    case EPERM:
        return QStringLiteral("lettura non permessa");
    case EBADF:
        return QStringLiteral("è chiuso");
    case EISDIR:
        return QStringLiteral("è una cartella");
    default:
        return QString::fromStdString(platform::systemReason(code));
    }
}

} // namespace

std::unique_ptr<ScriptReader> ScriptReader::open(const QString& file, QString& error) {
    const bool standard = file == QStringLiteral("-");
    const QString name = standard ? QStringLiteral("ingresso standard") : file;
    const int descriptor = standard ? STDIN_FILENO : ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC);
    int code = descriptor < 0 ? errno : 0;
    struct stat facts {};
    // A standard input that was closed would soon be the number of some other file.
    if (code == 0 && ::fstat(descriptor, &facts) != 0)
        code = errno;
    if (code == 0 && S_ISDIR(facts.st_mode))
        code = EISDIR;
    if (code != 0) {
        if (!standard && descriptor >= 0)
            ::close(descriptor);
        error = QStringLiteral("script \"%1\" non leggibile: %2").arg(name, systemReason(code));
        return nullptr;
    }
    auto reader = std::make_unique<ScriptReader>(descriptor, name);
    reader->owned_ = !standard;
    return reader;
}

ScriptReader::ScriptReader(int descriptor, QString name) : descriptor_(descriptor), name_(std::move(name)) {
}

ScriptReader::~ScriptReader() {
    if (owned_)
        ::close(descriptor_);
}

std::optional<QByteArray> ScriptReader::takeLine() {
    const qsizetype end = buffer_.indexOf('\n', searched_);
    if (end < 0 && !ended_) {
        searched_ = buffer_.size();
        return std::nullopt;
    }
    if (end < 0 && buffer_.isEmpty())
        return std::nullopt;

    QByteArray line = end < 0 ? std::exchange(buffer_, {}) : buffer_.left(end);
    if (end >= 0)
        buffer_.remove(0, end + 1);
    searched_ = 0;
    if (line.endsWith('\r'))
        line.chop(1);
    if (number_ == 0 && line.startsWith("\xEF\xBB\xBF"))
        line.remove(0, 3);
    ++number_;
    return line;
}

bool ScriptReader::fill(const std::function<void()>& idle) {
    for (;;) {
        pollfd watched{descriptor_, POLLIN, 0};
        const int ready = ::poll(&watched, 1, idleMilliseconds);
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready == 0) {
            if (idle)
                idle();
            continue;
        }
        const qsizetype before = buffer_.size();
        buffer_.resize(before + static_cast<qsizetype>(chunkBytes));
        const ssize_t count = ::read(descriptor_, buffer_.data() + before, chunkBytes);
        const int code = errno;
        buffer_.resize(before + static_cast<qsizetype>(count > 0 ? count : 0));
        if (count > 0)
            return true;
        if (count < 0 && (code == EINTR || code == EAGAIN))
            continue;
        if (count < 0)
            failure_ = systemReason(code);
        return false;
    }
}

std::optional<ScriptLine> ScriptReader::next(const std::function<void()>& idle) {
    for (;;) {
        while (auto line = takeLine()) {
            if (!ScriptRequest::isPassedOver(*line))
                return ScriptLine{number_, std::move(*line)};
        }
        if (ended_)
            return std::nullopt;
        if (!fill(idle))
            ended_ = true;
    }
}

} // namespace host
