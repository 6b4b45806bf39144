#pragma once

#include "contract/Date.h"
#include "host/script/ScriptRequest.h"
#include "host/start/HostSession.h"
#include "platform/qt/forms/Scriptable.h"
#include "platform/qt/forms/Session.h"

#include <QJsonObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <optional>

namespace host {

/// The keys that a request's "modifiers" hold down. Throws ScriptRefusal for an unknown one.
Qt::KeyboardModifiers modifiersOf(const ScriptRequest& request);

/// The day of a request's "date"; nothing where none is given. Throws ScriptRefusal for a text that is no day.
std::optional<contract::Date> optionalDay(const ScriptRequest& request);

/// Carries requests out on the forms that stand on the screen and on the host.
class ScriptCommands {
public:
    /// The window is the host's own; pictures show it while no dialog stands over it.
    ScriptCommands(HostSession& session, QWidget* hostWindow) : session_(session), hostWindow_(hostWindow) {}

    /// Whether a request of this verb is carried out here.
    static bool knows(const QString& verb);
    /// Adds the request's own members to the reply. Throws ScriptRefusal when it can not be carried out.
    void run(const ScriptRequest& request, QJsonObject& reply);

private:
    using Command = void (ScriptCommands::*)(const ScriptRequest&, QJsonObject&);
    static Command find(const QString& verb);

    // On the host and the form as a whole (ScriptCommands.cpp)
    void open(const ScriptRequest& request, QJsonObject& reply);
    void pluginClass(const ScriptRequest& request, QJsonObject& reply);
    void hostProperty(const ScriptRequest& request, QJsonObject& reply);
    void resize(const ScriptRequest& request, QJsonObject& reply);
    void close(const ScriptRequest& request, QJsonObject& reply);
    void activate(const ScriptRequest& request, QJsonObject& reply);
    void company(const ScriptRequest& request, QJsonObject& reply);
    void answer(const ScriptRequest& request, QJsonObject& reply);
    void dismiss(const ScriptRequest& request, QJsonObject& reply);
    void state(const ScriptRequest& request, QJsonObject& reply);
    void trace(const ScriptRequest& request, QJsonObject& reply);
    void services(const ScriptRequest& request, QJsonObject& reply);
    void cancel(const ScriptRequest& request, QJsonObject& reply);
    void screenshot(const ScriptRequest& request, QJsonObject& reply);

    void exportTable(const ScriptRequest& request, QJsonObject& reply); // ScriptExport.cpp
    void drag(const ScriptRequest& request, QJsonObject& reply);        // ScriptDrag.cpp
    void audit(const ScriptRequest& request, QJsonObject& reply);       // ScriptAudit.cpp
    void compare(const ScriptRequest& request, QJsonObject& reply);     // ScriptCompare.cpp
    // Moves seen before they are made, and lists of them (ScriptPreview.cpp)
    void preview(const ScriptRequest& request, QJsonObject& reply);
    void moves(const ScriptRequest& request, QJsonObject& reply);

    // On a control of the form in front (ScriptControlCommands.cpp)
    void click(const ScriptRequest& request, QJsonObject& reply);
    void select(const ScriptRequest& request, QJsonObject& reply);
    void focus(const ScriptRequest& request, QJsonObject& reply);
    void mouse(const ScriptRequest& request, QJsonObject& reply);
    void menu(const ScriptRequest& request, QJsonObject& reply);
    void choose(const ScriptRequest& request, QJsonObject& reply);
    void hyperlink(const ScriptRequest& request, QJsonObject& reply);
    void check(const ScriptRequest& request, QJsonObject& reply);
    void edit(const ScriptRequest& request, QJsonObject& reply);
    void set(const ScriptRequest& request, QJsonObject& reply);
    void key(const ScriptRequest& request, QJsonObject& reply);
    void read(const ScriptRequest& request, QJsonObject& reply);

    // On the registry of moves (ScriptRegistry.cpp)
    void registry(const ScriptRequest& request, QJsonObject& reply);
    void undo(const ScriptRequest& request, QJsonObject& reply);

    void readStatusLine(QJsonObject& reply) const;

    platform::qt::FormWindow& frontForm() const;
    /// The main form; refused where it is not open.
    platform::qt::FormWindow& mainForm() const;
    /// A control that the user could reach: there, visible and enabled.
    platform::qt::Scriptable& reachableControl(const ScriptRequest& request) const;
    /// The host's commands wait while a dialog stands over the form.
    void refuseOverDialog() const;

    HostSession& session_;
    QPointer<QWidget> hostWindow_;
};

} // namespace host
