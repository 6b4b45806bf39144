#include "host/windows/NodePlace.h"

#include "host/start/HostSession.h"
#include "platform/qt/forms/Scriptable.h"
#include "platform/qt/forms/Session.h"

#include <QJsonArray>

namespace host {

namespace {

/// How a side's controls and state are called.
struct Names {
    const char* list;
    const char* tree;
    const char* type;
};

const Names& namesOf(FormSide side) {
    static constexpr Names origin{"TRW_DISTINTEORIG", "TRW_ELEMDISTINTAORIG", "IdDistintaOrig"};
    static constexpr Names destination{"TRW_DISTINTEDEST", "TRW_ELEMDISTINTADEST", "IdDistintaDest"};
    return side == FormSide::origin ? origin : destination;
}

/// The key of a distinta's entry in a type list; empty where it has none.
QString keyOf(const platform::qt::Scriptable& list, std::int64_t type) {
    const QString id = QString::number(type);
    const QJsonArray entries = list.read().value(QLatin1String("entries")).toArray();
    for (const auto& entry : entries) {
        const QString key = entry.toObject().value(QLatin1String("key")).toString();
        if (!key.startsWith(QLatin1Char('P')) && key.mid(1) == id)
            return key;
    }
    return {};
}

} // namespace

std::optional<std::int64_t> shownType(const HostSession& session, FormSide side) {
    std::vector<std::pair<std::string, contract::Value>> values;
    if (!session.state(values).isEmpty())
        return std::nullopt;
    for (const auto& [name, value] : values)
        if (name == namesOf(side).type)
            return value.integer();
    return std::nullopt;
}

QString showNode(const HostSession& session, FormSide side, std::int64_t type, std::int64_t node) {
    auto* form = session.formWindow();
    const Names& names = namesOf(side);
    auto* list = form != nullptr ? form->control(QLatin1String(names.list)) : nullptr;
    auto* tree = form != nullptr ? form->control(QLatin1String(names.tree)) : nullptr;
    if (list == nullptr || tree == nullptr)
        return QStringLiteral("la maschera non è aperta");
    if (shownType(session, side) != type) {
        const QString key = keyOf(*list, type);
        if (key.isEmpty())
            return QStringLiteral("la distinta %1 non è nell'elenco").arg(type);
        if (QString reason = list->select(key); !reason.isEmpty())
            return reason;
    }
    return tree->focusNode(node, std::nullopt);
}

QString showNode(const HostSession& session, std::int64_t type, std::int64_t node) {
    const bool right =
        shownType(session, FormSide::origin) != type && shownType(session, FormSide::destination) == type;
    return showNode(session, right ? FormSide::destination : FormSide::origin, type, node);
}

} // namespace host
