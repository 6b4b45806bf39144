// Any bytes as a script: the lines that a plain split finds, and every request read or refused with a reason.

#include "host/script/ScriptReader.h"
#include "host/script/ScriptRequest.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

namespace {

void must(bool condition) {
    if (!condition)
        std::abort();
}

/// Lines that want an answer, found the plain way.
int linesOf(QByteArray script) {
    if (script.startsWith("\xEF\xBB\xBF"))
        script.remove(0, 3);
    int count = 0;
    const auto lines = script.split('\n');
    for (QByteArray line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (!host::ScriptRequest::isPassedOver(line))
            ++count;
    }
    return count;
}

template <class Read> void readOrRefuse(const Read& read) {
    try {
        (void)read();
    } catch (const host::ScriptRefusal& refusal) {
        must(!refusal.reason().isEmpty());
    }
}

void readMembers(const host::ScriptRequest& request) {
    must(!request.verb().isNull());
    const auto names = request.members().keys();
    for (const QString& name : names) {
        readOrRefuse([&] { return request.text(name); });
        readOrRefuse([&] { return request.integer(name); });
        readOrRefuse([&] { return request.integer(name, 0, 10); });
        readOrRefuse([&] { return request.optionalObject(name); });
        readOrRefuse([&] { return request.array(name); });
        readOrRefuse([&] { return request.optionalTexts(name); });
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray script(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const int file = ::memfd_create("script", MFD_CLOEXEC);
    must(file >= 0);
    must(::write(file, script.constData(), size) == static_cast<ssize_t>(size));
    must(::lseek(file, 0, SEEK_SET) == 0);
    int found = 0;
    {
        host::ScriptReader reader(file, QStringLiteral("prova"));
        while (const auto line = reader.next({})) {
            ++found;
            must(!line->text.contains('\n'));
            readOrRefuse([&] {
                readMembers(host::ScriptRequest::parse(line->text));
                return 0;
            });
        }
        must(reader.failure().isEmpty());
    }
    ::close(file);
    must(found == linesOf(script));
    return 0;
}
