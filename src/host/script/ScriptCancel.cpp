#include "host/script/ScriptCancel.h"

#include "platform/shared/LongWork.h"

#include <limits>
#include <optional>
#include <utility>

namespace host {

namespace {

using platform::shared::LongWork;

std::optional<std::uint64_t>& armed() {
    static std::optional<std::uint64_t> statements;
    return statements;
}

} // namespace

void ScriptCancel::request(const ScriptRequest& request) {
    armed() = static_cast<std::uint64_t>(request.integer(QStringLiteral("after"), 0, std::numeric_limits<int>::max()));
}

void ScriptCancel::lineBegins(const ScriptRequest& request) {
    static const QStringList workless = {
        QStringLiteral("answer"), QStringLiteral("when"),     QStringLiteral("read"),   QStringLiteral("state"),
        QStringLiteral("trace"),  QStringLiteral("services"), QStringLiteral("cancel"), QStringLiteral("screenshot")};
    if (workless.contains(request.verb()))
        return;
    LongWork::instance().cancelAfter(std::exchange(armed(), std::nullopt));
}

void ScriptCancel::lineEnds() {
    LongWork::instance().cancelAfter(std::nullopt);
}

} // namespace host
