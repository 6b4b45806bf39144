// The request that drags a node with the mouse.

#include "host/script/ScriptCommands.h"
#include "host/tables/DistintaList.h"
#include "platform/qt/forms/InputEvents.h"
#include "platform/qt/tree/NodeDrag.h"

#include <QApplication>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>

#include <algorithm>

namespace host {

using platform::qt::NodeDrag;
using platform::qt::TreeListControl;
namespace input = platform::qt::input;

namespace {

/// Of the node's row on the screen, where a person would take hold of it; throws where there is none.
QPoint holdOf(TreeListControl& tree, qint64 id) {
    auto& view = tree.view();
    if (QString reason = input::obstacle(&view); !reason.isEmpty())
        throw ScriptRefusal(reason);
    const auto node = tree.byKey(id);
    if (!node)
        throw ScriptRefusal(QStringLiteral("l'albero \"%1\" non ha il nodo %2").arg(view.objectName()).arg(id));
    tree.makeVisible(node);
    const QRect cell = view.contentRect(node.position, view.treeColumn()) & view.viewport()->rect();
    if (cell.isEmpty())
        throw ScriptRefusal(
            QStringLiteral("l'albero \"%1\" è troppo piccolo per mostrare la cella").arg(view.objectName()));
    return view.viewport()->mapToGlobal(cell.center());
}

/// What the mouse that the first tree holds does; the events are the window system's in kind and order.
class Mouse {
public:
    explicit Mouse(QWidget& held) : held_(&held) {}

    void send(QEvent::Type type, QPoint global, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
        if (!held_)
            return;
        const QPointF local(held_->mapFromGlobal(global));
        const QPointF inWindow(held_->window()->mapFromGlobal(global));
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, local, inWindow, QPointF(global), button, buttons, modifiers);
        QCoreApplication::sendEvent(held_, &event);
    }

private:
    QPointer<QWidget> held_;
};

void dragNode(TreeListControl& origin, TreeListControl& destination, qint64 id, qint64 onto,
              Qt::KeyboardModifiers modifiers) {
    const auto* drag = origin.view().findChild<NodeDrag*>();
    if (drag == nullptr)
        throw ScriptRefusal(QStringLiteral("la maschera non lascia trascinare i nodi"));
    holdOf(destination, onto); // refused before anything is pressed
    const QPoint from = holdOf(origin, id);
    Mouse mouse(*origin.view().viewport());
    mouse.send(QEvent::MouseMove, from, Qt::NoButton, Qt::NoModifier);
    mouse.send(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::NoModifier);
    origin.settle();
    const QPoint away(QApplication::startDragDistance() + 1, 0);
    mouse.send(QEvent::MouseMove, from + away, Qt::LeftButton, modifiers);
    const QPoint to = holdOf(destination, onto);
    mouse.send(QEvent::MouseMove, to, Qt::LeftButton, modifiers);
    const bool taken = drag->target() == onto;
    mouse.send(QEvent::MouseButtonRelease, to, Qt::NoButton, modifiers);
    if (!taken)
        throw ScriptRefusal(QStringLiteral("il nodo %1 non si può lasciare sul nodo %2").arg(id).arg(onto));
}

} // namespace

void ScriptCommands::drag(const ScriptRequest& request, QJsonObject&) {
    const qint64 id = request.integer(QStringLiteral("id"));
    const qint64 onto = request.integer(QStringLiteral("onto"));
    const auto modifiers = modifiersOf(request);
    refuseOverDialog();
    auto& form = mainForm();
    auto* origin = treeOf(form, Side::origin);
    auto* destination = treeOf(form, Side::destination);
    if (origin == nullptr || destination == nullptr)
        throw ScriptRefusal(QStringLiteral("la maschera non lascia trascinare i nodi"));
    dragNode(*origin, *destination, id, onto, modifiers);
}

} // namespace host
