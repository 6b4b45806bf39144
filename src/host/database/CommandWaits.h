#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace host {

/// Has each of the user's commands wait for a database once, however many of its operations meet a lock or a time-out,
/// and says meanwhile for whom it waits.
///
/// A command ends when the event loop comes to rest, but not in a message box, whose answer belongs to it; a script
/// says where its lines begin (commandBegins()).
class CommandWaits : public QObject {
public:
    /// show puts a text in the status line at once, without handling events.
    CommandWaits(std::function<void(const QString&)> show, QObject* parent);
    ~CommandWaits() override;

    static void commandBegins();
};

} // namespace host
