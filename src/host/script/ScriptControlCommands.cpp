#include "host/script/ScriptCommands.h"

#include "host/windows/StatusLine.h"
#include "platform/qt/look/Appearance.h"

#include <QAction>
#include <QCoreApplication>
#include <QJsonArray>
#include <QMenu>
#include <QMenuBar>

#include <limits>

namespace host {

namespace {

using platform::qt::FormWindow;
using platform::qt::PopupWindow;
using platform::qt::Scriptable;
using platform::qt::Session;

constexpr int intMax = std::numeric_limits<int>::max();

void refuseUnlessEmpty(const QString& reason) {
    if (!reason.isEmpty())
        throw ScriptRefusal(reason);
}

Scriptable& controlOf(FormWindow& form, const QString& name) {
    Scriptable* control = form.control(name);
    if (control == nullptr)
        throw ScriptRefusal(
            QStringLiteral("controllo sconosciuto \"%1\" nella maschera %2").arg(name, form.formName()));
    return *control;
}

/// Whether the control, and every frame in which it stands, is shown. The window as a whole does not count.
bool shown(FormWindow& form, const QString& name, Scriptable& control) {
    const contract::Control* facts = form.contractControl(name);
    QWidget* widget = control.widget();
    return (facts == nullptr || facts->visible()) && (widget == nullptr || widget->isVisibleTo(form.window()));
}

bool usable(FormWindow& form, const QString& name, Scriptable& control) {
    const contract::Control* facts = form.contractControl(name);
    QWidget* widget = control.widget();
    return (facts == nullptr || facts->enabled()) && (widget == nullptr || widget->isEnabledTo(form.window()));
}

void insertGeometry(QJsonObject& reply, const contract::Rect& bounds) {
    reply.insert(QStringLiteral("left"), bounds.left);
    reply.insert(QStringLiteral("top"), bounds.top);
    reply.insert(QStringLiteral("width"), bounds.width);
    reply.insert(QStringLiteral("height"), bounds.height);
}

void insertMenuEntry(QJsonObject& reply, const QString& caption, bool visible, bool enabled) {
    reply.insert(QStringLiteral("caption"), caption);
    reply.insert(QStringLiteral("visible"), visible);
    reply.insert(QStringLiteral("enabled"), enabled);
    insertGeometry(reply, {});
}

/// An entry of one of the form's popup menus, or such a menu itself: the entry at its top, which never shows.
bool readMenuEntry(FormWindow& form, const QString& name, QJsonObject& reply) {
    if (const auto* action = form.window()->findChild<QAction*>(name)) {
        insertMenuEntry(reply, action->text(), action->isVisible(), action->isEnabled());
        return true;
    }
    if (form.window()->findChild<QMenu*>(name) != nullptr) {
        insertMenuEntry(reply, name, false, true);
        return true;
    }
    return false;
}

/// An entry of the host's menu bar that a tool has put there.
QAction* hostCommand(const QWidget* window, const QString& item) {
    const auto* bar =
        window != nullptr && item.startsWith(QLatin1String("mnu")) ? window->findChild<QMenuBar*>() : nullptr;
    return bar != nullptr ? bar->findChild<QAction*>(item) : nullptr;
}

} // namespace

Qt::KeyboardModifiers modifiersOf(const ScriptRequest& request) {
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    const QStringList names = request.optionalTexts(QStringLiteral("modifiers"));
    for (const QString& name : names) {
        if (name == QLatin1String("ctrl"))
            modifiers |= Qt::ControlModifier;
        else if (name == QLatin1String("alt"))
            modifiers |= Qt::AltModifier;
        else if (name == QLatin1String("shift"))
            modifiers |= Qt::ShiftModifier;
        else
            throw ScriptRefusal(QStringLiteral("tasto \"%1\" sconosciuto in \"modifiers\"").arg(name));
    }
    return modifiers;
}

Scriptable& ScriptCommands::reachableControl(const ScriptRequest& request) const {
    const QString name = request.text(QStringLiteral("control"));
    FormWindow& form = frontForm();
    Scriptable& control = controlOf(form, name);
    if (!shown(form, name, control))
        throw ScriptRefusal(QStringLiteral("il controllo \"%1\" è nascosto").arg(name));
    if (!usable(form, name, control))
        throw ScriptRefusal(QStringLiteral("il controllo \"%1\" è disabilitato").arg(name));
    return control;
}

void ScriptCommands::click(const ScriptRequest& request, QJsonObject&) {
    refuseUnlessEmpty(reachableControl(request).click());
}

void ScriptCommands::select(const ScriptRequest& request, QJsonObject&) {
    const QString key = request.text(QStringLiteral("key"));
    refuseUnlessEmpty(reachableControl(request).select(key));
}

void ScriptCommands::focus(const ScriptRequest& request, QJsonObject&) {
    const qint64 id = request.integer(QStringLiteral("id"));
    const auto column = request.optionalText(QStringLiteral("column"));
    refuseUnlessEmpty(reachableControl(request).focusNode(id, column));
}

void ScriptCommands::mouse(const ScriptRequest& request, QJsonObject& reply) {
    const auto id = request.optionalInteger(QStringLiteral("id"));
    const QString column = request.optionalText(QStringLiteral("column")).value_or(QString());
    const QString name = request.text(QStringLiteral("button"));
    if (name != QLatin1String("left") && name != QLatin1String("right"))
        throw ScriptRefusal(QStringLiteral("\"button\" deve essere \"left\" o \"right\", non \"%1\"").arg(name));
    if (id && column.isEmpty())
        throw ScriptRefusal(QStringLiteral("con \"id\" serve anche \"column\""));
    const auto button = name == QLatin1String("left") ? Qt::LeftButton : Qt::RightButton;
    refuseUnlessEmpty(reachableControl(request).mouse(id, column, button));

    QCoreApplication::processEvents();
    const PopupWindow* popup = Session::instance().popup();
    reply.insert(QStringLiteral("menu"), popup != nullptr ? QJsonValue(popup->menuName()) : QJsonValue());
    reply.insert(QStringLiteral("items"),
                 popup != nullptr ? QJsonArray::fromStringList(popup->itemNames()) : QJsonArray());
}

void ScriptCommands::menu(const ScriptRequest& request, QJsonObject&) {
    PopupWindow* popup = Session::instance().popup();
    if (request.has(QStringLiteral("control"))) {
        const QString key = request.text(QStringLiteral("key"));
        if (popup != nullptr)
            popup->dismiss();
        refuseUnlessEmpty(reachableControl(request).chooseItem(key));
        return;
    }

    const QString item = request.text(QStringLiteral("item"));
    if (popup != nullptr && popup->itemNames().contains(item)) {
        const QString menu = popup->menuName();
        if (!popup->choose(item))
            throw ScriptRefusal(QStringLiteral("la voce \"%1\" del menu %2 è disabilitata").arg(item, menu));
        return;
    }
    if (auto* command = hostCommand(hostWindow_, item); command != nullptr && !session_.menuEntries().contains(item)) {
        if (popup != nullptr)
            popup->dismiss();
        refuseOverDialog();
        if (!command->isEnabled())
            throw ScriptRefusal(QStringLiteral("la voce \"%1\" della barra dei menu è disabilitata").arg(item));
        command->trigger();
        return;
    }
    if (!session_.menuEntries().contains(item))
        throw ScriptRefusal(popup != nullptr
                                ? QStringLiteral("il menu %1 non ha la voce \"%2\"").arg(popup->menuName(), item)
                                : QStringLiteral("nessun menu aperto con la voce \"%1\"").arg(item));
    if (popup != nullptr)
        popup->dismiss();
    refuseOverDialog();
    refuseUnlessEmpty(session_.chooseMenuEntry(item));
}

void ScriptCommands::choose(const ScriptRequest& request, QJsonObject&) {
    const qint64 code = request.integer(QStringLiteral("value"));
    FormWindow& form = frontForm();
    // A lookup's window answers by its own name for the list that it shows.
    Scriptable* list = form.control(form.formName());
    if (list == nullptr)
        throw ScriptRefusal(QStringLiteral("la maschera %1 non è un elenco da cui scegliere").arg(form.formName()));
    refuseUnlessEmpty(list->chooseItem(QString::number(code)));
}

void ScriptCommands::hyperlink(const ScriptRequest& request, QJsonObject&) {
    const qint64 id = request.integer(QStringLiteral("id"));
    const QString column = request.text(QStringLiteral("column"));
    refuseUnlessEmpty(reachableControl(request).hyperlink(id, column));
}

void ScriptCommands::check(const ScriptRequest& request, QJsonObject&) {
    const qint64 id = request.integer(QStringLiteral("id"));
    const int state = request.integer(QStringLiteral("state"), 0, 1);
    refuseUnlessEmpty(reachableControl(request).check(id, state));
}

void ScriptCommands::edit(const ScriptRequest& request, QJsonObject& reply) {
    const qint64 id = request.integer(QStringLiteral("id"));
    const QString column = request.text(QStringLiteral("column"));
    const QString value = request.text(QStringLiteral("value"));
    bool editable = false;
    refuseUnlessEmpty(reachableControl(request).edit(id, column, value, editable));
    reply.insert(QStringLiteral("editable"), editable);
}

void ScriptCommands::set(const ScriptRequest& request, QJsonObject&) {
    const QJsonValue value = request.value(QStringLiteral("value"));
    refuseUnlessEmpty(reachableControl(request).set(value));
}

void ScriptCommands::key(const ScriptRequest& request, QJsonObject&) {
    const int code = request.integer(QStringLiteral("code"), 1, intMax);
    const auto modifiers = modifiersOf(request);
    refuseUnlessEmpty(reachableControl(request).key(code, modifiers));
}

// Relative to the window of which it is a part.
void ScriptCommands::readStatusLine(QJsonObject& reply) const {
    const auto* line =
        hostWindow_ ? dynamic_cast<StatusLine*>(hostWindow_->findChild<QWidget*>(QLatin1String(StatusLine::name)))
                    : nullptr;
    if (line == nullptr)
        throw ScriptRefusal(QStringLiteral("la finestra non ha la riga di stato"));
    reply.insert(QStringLiteral("value"), line->text());
    reply.insert(QStringLiteral("visible"), line->isVisibleTo(hostWindow_));
    reply.insert(QStringLiteral("enabled"), line->isEnabledTo(hostWindow_));
    using platform::qt::Appearance;
    const QPoint at = line->mapTo(hostWindow_, QPoint());
    insertGeometry(reply, {Appearance::twips(at.x()), Appearance::twips(at.y()), Appearance::twips(line->width()),
                           Appearance::twips(line->height())});
}

void ScriptCommands::read(const ScriptRequest& request, QJsonObject& reply) {
    const QString name = request.text(QStringLiteral("control"));
    if (session_.menuEntries().contains(name)) {
        insertMenuEntry(reply, session_.menuEntryCaption(name), true, session_.menuEntryEnabled(name));
        return;
    }

    if (const auto* command = hostCommand(hostWindow_, name)) {
        insertMenuEntry(reply, command->text(), command->isVisible(), command->isEnabled());
        return;
    }
    if (name == QLatin1String(StatusLine::name)) {
        readStatusLine(reply);
        return;
    }

    FormWindow& form = frontForm();
    if (name == form.formName()) {
        reply.insert(QStringLiteral("caption"), form.formCaption());
        reply.insert(QStringLiteral("visible"), form.window()->isVisible());
        reply.insert(QStringLiteral("enabled"), form.window()->isEnabled());
        insertGeometry(reply, form.formBounds());
        return;
    }
    if (form.control(name) == nullptr && readMenuEntry(form, name, reply))
        return;

    Scriptable& control = controlOf(form, name);
    const QJsonObject members = control.read();
    for (auto member = members.begin(); member != members.end(); ++member)
        reply.insert(member.key(), member.value());
    reply.insert(QStringLiteral("visible"), shown(form, name, control));
    reply.insert(QStringLiteral("enabled"), usable(form, name, control));
    insertGeometry(reply, form.controlBounds(name));
}

} // namespace host
