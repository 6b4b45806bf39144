#include "host/script/ScriptCommands.h"

#include "host/script/ScriptCancel.h"
#include "host/services/Text.h"

#include <QHash>
#include <QJsonArray>
#include <QPixmap>

#include <utility>
#include <vector>

namespace host {

namespace {

using platform::qt::FormWindow;
using platform::qt::Session;

constexpr int largestFormTwips = 300000; // 20,000 pixels: beyond that a window's picture does not fit into memory

void refuseUnlessEmpty(const QString& reason) {
    if (!reason.isEmpty())
        throw ScriptRefusal(reason);
}

QJsonValue optionalValue(const ScriptRequest& request, const QString& name) {
    return request.has(name) ? request.value(name) : QJsonValue(QJsonValue::Undefined);
}

/// Said only where some are.
void tellMissing(std::uint64_t missing, QJsonObject& reply) {
    if (missing != 0)
        reply.insert(QStringLiteral("missing"), static_cast<qint64>(missing));
}

} // namespace

std::optional<contract::Date> optionalDay(const ScriptRequest& request) {
    const auto text = request.optionalText(QStringLiteral("date"));
    if (!text)
        return std::nullopt;
    const auto day = contract::Date::parse(text->toStdString());
    if (!day)
        throw ScriptRefusal(QStringLiteral("\"date\" vuole un giorno gg/mm/aaaa, non \"%1\"").arg(*text));
    return day;
}

ScriptCommands::Command ScriptCommands::find(const QString& verb) {
    using Self = ScriptCommands;
    static const QHash<QString, Command> commands = {
        {QStringLiteral("open"), &Self::open},
        {QStringLiteral("class"), &Self::pluginClass},
        {QStringLiteral("host"), &Self::hostProperty},
        {QStringLiteral("resize"), &Self::resize},
        {QStringLiteral("close"), &Self::close},
        {QStringLiteral("activate"), &Self::activate},
        {QStringLiteral("company"), &Self::company},
        {QStringLiteral("answer"), &Self::answer},
        {QStringLiteral("dismiss"), &Self::dismiss},
        {QStringLiteral("state"), &Self::state},
        {QStringLiteral("trace"), &Self::trace},
        {QStringLiteral("services"), &Self::services},
        {QStringLiteral("cancel"), &Self::cancel},
        {QStringLiteral("screenshot"), &Self::screenshot},
        {QStringLiteral("click"), &Self::click},
        {QStringLiteral("select"), &Self::select},
        {QStringLiteral("focus"), &Self::focus},
        {QStringLiteral("mouse"), &Self::mouse},
        {QStringLiteral("menu"), &Self::menu},
        {QStringLiteral("choose"), &Self::choose},
        {QStringLiteral("hyperlink"), &Self::hyperlink},
        {QStringLiteral("check"), &Self::check},
        {QStringLiteral("edit"), &Self::edit},
        {QStringLiteral("set"), &Self::set},
        {QStringLiteral("key"), &Self::key},
        {QStringLiteral("read"), &Self::read},
        {QStringLiteral("export"), &Self::exportTable},
        {QStringLiteral("drag"), &Self::drag},
        {QStringLiteral("audit"), &Self::audit},
        {QStringLiteral("compare"), &Self::compare},
        {QStringLiteral("preview"), &Self::preview},
        {QStringLiteral("moves"), &Self::moves},
        {QStringLiteral("registry"), &Self::registry},
        {QStringLiteral("undo"), &Self::undo},
    };
    return commands.value(verb, nullptr);
}

void ScriptCommands::cancel(const ScriptRequest& request, QJsonObject&) {
    ScriptCancel::request(request);
}

bool ScriptCommands::knows(const QString& verb) {
    return find(verb) != nullptr;
}

void ScriptCommands::run(const ScriptRequest& request, QJsonObject& reply) {
    const Command command = find(request.verb());
    if (command == nullptr)
        throw ScriptRefusal(QStringLiteral("richiesta sconosciuta \"%1\"").arg(request.verb()));
    (this->*command)(request, reply);
}

FormWindow& ScriptCommands::frontForm() const {
    FormWindow* form = Session::instance().front();
    if (form == nullptr)
        throw ScriptRefusal(QStringLiteral("nessuna maschera aperta"));
    return *form;
}

FormWindow& ScriptCommands::mainForm() const {
    FormWindow* form = session_.formWindow();
    if (form == nullptr)
        throw ScriptRefusal(QStringLiteral("la maschera %1 non è aperta").arg(QLatin1String(HostSession::mainForm)));
    return *form;
}

void ScriptCommands::refuseOverDialog() const {
    const FormWindow* form = Session::instance().front();
    if (form != nullptr && form->isModal() && form->formName() != QLatin1String(HostSession::mainForm))
        throw ScriptRefusal(QStringLiteral("la maschera modale %1 è aperta").arg(form->formName()));
}

void ScriptCommands::open(const ScriptRequest& request, QJsonObject&) {
    const QJsonObject context = request.optionalObject(QStringLiteral("context"));
    refuseOverDialog();
    if (session_.formOpen())
        throw ScriptRefusal(QStringLiteral("la maschera %1 è già aperta").arg(QLatin1String(HostSession::mainForm)));
    refuseUnlessEmpty(session_.openForm(context));
}

void ScriptCommands::pluginClass(const ScriptRequest& request, QJsonObject& reply) {
    const bool get = request.has(QStringLiteral("get"));
    const bool set = request.has(QStringLiteral("set"));
    const bool call = request.has(QStringLiteral("call"));
    if (int(get) + int(set) + int(call) != 1)
        throw ScriptRefusal(QStringLiteral("serve uno solo tra \"get\", \"set\" e \"call\""));

    if (get) {
        QJsonValue value;
        refuseUnlessEmpty(session_.getClassProperty(request.text(QStringLiteral("get")), value));
        reply.insert(QStringLiteral("value"), value);
    } else if (set) {
        refuseUnlessEmpty(
            session_.setClassProperty(request.text(QStringLiteral("set")), request.value(QStringLiteral("value"))));
    } else {
        QJsonValue result;
        refuseUnlessEmpty(session_.callClass(request.text(QStringLiteral("call")),
                                             optionalValue(request, QStringLiteral("value")), result));
        reply.insert(QStringLiteral("value"), result);
    }
}

void ScriptCommands::hostProperty(const ScriptRequest& request, QJsonObject&) {
    refuseUnlessEmpty(
        session_.setHostProperty(request.text(QStringLiteral("set")), request.value(QStringLiteral("value"))));
}

void ScriptCommands::resize(const ScriptRequest& request, QJsonObject&) {
    const int width = request.integer(QStringLiteral("width"), 1, largestFormTwips);
    const int height = request.integer(QStringLiteral("height"), 1, largestFormTwips);
    mainForm().resizeForm(width, height);
}

void ScriptCommands::close(const ScriptRequest&, QJsonObject& reply) {
    refuseOverDialog();
    bool gone = false;
    refuseUnlessEmpty(session_.closeForm(gone));
    reply.insert(QStringLiteral("result"), gone);
}

void ScriptCommands::activate(const ScriptRequest&, QJsonObject&) {
    refuseOverDialog();
    refuseUnlessEmpty(session_.activateForm());
}

void ScriptCommands::company(const ScriptRequest& request, QJsonObject&) {
    const qint64 company = request.integer(QStringLiteral("value"));
    refuseOverDialog();
    session_.setCompany(company);
}

void ScriptCommands::answer(const ScriptRequest& request, QJsonObject&) {
    std::vector<int> answers;
    const QJsonArray values = request.array(QStringLiteral("values"));
    for (const auto& value : values) {
        const auto whole = ScriptRequest::wholeNumber(value);
        if (!whole || !std::in_range<int>(*whole))
            throw ScriptRefusal(QStringLiteral("\"values\" deve essere un elenco di numeri interi"));
        answers.push_back(static_cast<int>(*whole));
    }
    session_.dialogs().queueAnswers(std::move(answers));
}

void ScriptCommands::dismiss(const ScriptRequest&, QJsonObject&) {
    FormWindow* form = Session::instance().front();
    if (form == nullptr || !form->isModal())
        throw ScriptRefusal(QStringLiteral("nessuna maschera modale aperta"));
    form->pressClose();
}

void ScriptCommands::state(const ScriptRequest&, QJsonObject& reply) {
    std::vector<std::pair<std::string, contract::Value>> values;
    refuseUnlessEmpty(session_.state(values));
    QJsonObject state;
    for (const auto& [name, value] : values)
        state.insert(toQt(name), toJson(value));
    reply.insert(QStringLiteral("state"), state);
}

void ScriptCommands::trace(const ScriptRequest&, QJsonObject& reply) {
    reply.insert(QStringLiteral("statements"), QJsonArray::fromStringList(session_.trace().take()));
    tellMissing(session_.trace().missing(), reply);
}

void ScriptCommands::services(const ScriptRequest&, QJsonObject& reply) {
    reply.insert(QStringLiteral("calls"), session_.journal().take());
    tellMissing(session_.journal().missing(), reply);
}

void ScriptCommands::screenshot(const ScriptRequest& request, QJsonObject&) {
    const QString file = request.text(QStringLiteral("file"));
    if (file.isEmpty())
        throw ScriptRefusal(QStringLiteral("\"file\" è vuoto"));
    QWidget* window = hostWindow_;
    if (FormWindow* form = Session::instance().front())
        window = form->window()->window();
    if (window == nullptr)
        throw ScriptRefusal(QStringLiteral("nessuna finestra da riprodurre"));
    const bool named = file.lastIndexOf(QLatin1Char('.')) > file.lastIndexOf(QLatin1Char('/'));
    if (!window->grab().save(file, named ? nullptr : "PNG"))
        throw ScriptRefusal(
            QStringLiteral("immagine non scritta in \"%1\": cartella, permessi o tipo di file").arg(file));
}

} // namespace host
