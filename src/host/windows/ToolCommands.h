#pragma once

#include <QMenu>
#include <QString>
#include <QWidget>

#include <functional>

namespace host {

class HostSession;

/// What the commands of the menu "Strumenti" work with.
struct ToolContext {
    QWidget* window = nullptr;               ///< the program's window
    std::function<HostSession*()> session;   ///< the one that is open, null without one
    std::function<void(const QString&)> say; ///< shows a text in the status line at once
};

/// Adds the program's tools to a menu, each by its own file. The context is copied.
void addToolCommands(QMenu& menu, const ToolContext& context);

} // namespace host
