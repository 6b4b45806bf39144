#pragma once

#include <QMenu>
#include <QString>

#include <functional>

namespace host {

class HostSession;

/// Adds "Copia di sicurezza…" to a menu: copies the embedded database while it is in use, and says where and how large.
///
/// session: the one that is open, null without one. status: shows a text in the status line at once.
void addBackupCommand(QMenu& menu, QWidget& window, std::function<HostSession*()> session,
                      std::function<void(const QString&)> status);

} // namespace host
