#pragma once

#include "host/database/TracingConnection.h"

#include <memory>
#include <vector>

namespace host {

/// The connections that the host has given to the component.
class FormConnections {
public:
    void add(const std::shared_ptr<TracingConnection>& connection) {
        std::erase_if(connections_, [](const auto& known) { return known.expired(); });
        connections_.push_back(connection);
    }

    /// The one in whose transaction what is written now belongs, without its trace; null where none is under way.
    contract::Connection* inTransaction() const {
        for (const auto& known : connections_)
            if (const auto connection = known.lock(); connection && connection->InTransaction())
                return &connection->untraced();
        return nullptr;
    }

private:
    std::vector<std::weak_ptr<TracingConnection>> connections_;
};

} // namespace host
