#pragma once

#include "host/database/RecentItems.h"

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

    /// The calls since the last one of these, but no more than the last RecentItems::most.
    QJsonArray take();
    /// Calls before those that take() handed over last which were kept no longer.
    std::uint64_t missing() const { return missing_; }

private:
    bool recording_ = false;
    RecentItems<QJsonObject> calls_;
    std::uint64_t missing_ = 0;
};

} // namespace host
