#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace host {

/// The calls that the component made to the host's services, in order: objects with the members `service`,
/// `operation` and the call's arguments by name.
class ServiceJournal {
public:
    /// Off at first: a person's session keeps no journal.
    void setRecording(bool recording) { recording_ = recording; }

    void record(const QString& service, const QString& operation, const QJsonObject& arguments = {});

    /// The calls since the last one of these.
    QJsonArray take();

private:
    bool recording_ = false;
    QJsonArray calls_;
};

} // namespace host
