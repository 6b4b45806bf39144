#include "host/moves/MoveReport.h"

#include "contract/RuntimeError.h"
#include "host/script/ScriptPreview.h"
#include "host/start/HostSession.h"
#include "host/start/StartFailure.h"
#include "platform/qt/forms/Session.h"

#include <QJsonDocument>

#include <csv.h>

#include <array>

namespace host {

namespace {

[[noreturn]] void fail(const std::string& reason) {
    throw StartFailure(ExitStatus::database, reason);
}

/// What the form told nobody while it opened.
std::string toldBy(HostSession& session) {
    std::string told;
    for (const auto& shown : session.dialogs().takeShown())
        told +=
            (told.empty() ? "" : "; ") + (shown.description.isEmpty() ? shown.text : shown.description).toStdString();
    return told;
}

struct CsvColumn {
    const char* member; ///< of the row
    const char* within; ///< of that member, null where it is no object
};
constexpr std::array<CsvColumn, 18> columns{{{"line", nullptr},
                                             {"id", nullptr},
                                             {"account", nullptr},
                                             {"name", nullptr},
                                             {"outcome", nullptr},
                                             {"reason", nullptr},
                                             {"before", "type"},
                                             {"before", "parent"},
                                             {"before", "start"},
                                             {"before", "end"},
                                             {"after", "type"},
                                             {"after", "parent"},
                                             {"after", "start"},
                                             {"after", "end"},
                                             {"copy", "type"},
                                             {"copy", "parent_account"},
                                             {"copy", "start"},
                                             {"copy", "end"}}};

std::string inQuotes(const std::string& text) {
    std::string field(2 * text.size() + 2, '\0');
    field.resize(csv_write(field.data(), field.size(), text.data(), text.size()));
    return field;
}

std::string csvField(const QJsonValue& value) {
    if (value.isDouble())
        return std::to_string(value.toInteger());
    std::string text = value.toString().toStdString();
    if (!text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos)
        text.insert(text.begin(), '\'');
    return text.find_first_of(";\"\r\n") == std::string::npos ? text : inQuotes(text);
}

} // namespace

contract::MovePlan moveLines(HostSession& session, const std::vector<contract::MoveLine>& lines, bool apply) {
    // Nobody is there to answer a dialog.
    platform::qt::Session::instance().modalOpened = [](platform::qt::FormWindow&) {};
    if (const QString refusal = session.openForm(); !refusal.isEmpty())
        fail(refusal.toStdString());
    auto* lists = session.capability<contract::MoveLists>();
    if (lists == nullptr)
        fail("il componente non sa spostare elenchi");
    if (const auto told = toldBy(session); !told.empty())
        fail(told);
    try {
        return apply ? lists->moveList(lines, contract::Unnamed::whereItStands)
                     : lists->planList(lines, contract::Unnamed::whereItStands);
    } catch (const contract::RuntimeError& error) {
        fail(error.description());
    }
}

std::string planAsJsonLines(const contract::MovePlan& plan) {
    std::string text;
    for (const auto& row : plan.rows)
        text += QJsonDocument(planRowJson(row)).toJson(QJsonDocument::Compact).toStdString() + '\n';
    return text;
}

std::string planAsCsv(const contract::MovePlan& plan) {
    std::string text;
    const auto separate = [&text](std::size_t column) { text += column == 0 ? "" : ";"; };
    for (std::size_t i = 0; i < columns.size(); ++i) {
        separate(i);
        text += columns[i].member;
        if (columns[i].within != nullptr)
            text += std::string("_") + columns[i].within;
    }
    text += '\n';
    for (const auto& row : plan.rows) {
        const QJsonObject object = planRowJson(row);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            separate(i);
            const QJsonValue member = object.value(QLatin1String(columns[i].member));
            text += csvField(columns[i].within == nullptr ? member
                                                          : member.toObject().value(QLatin1String(columns[i].within)));
        }
        text += '\n';
    }
    return text;
}

} // namespace host
