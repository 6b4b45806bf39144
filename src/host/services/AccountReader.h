#pragma once

#include "contract/Connection.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <utility>
#include <vector>

namespace host {

/// One account of a company: kind 0 a customer, 1 a supplier.
struct AccountKey {
    std::int64_t company = 0;
    int kind = 0;
    std::int64_t code = 0;
};

/// What the host's windows show of an account.
struct AccountSheet {
    struct Group {
        QString title;
        std::vector<std::pair<QString, QString>> values; ///< name, text
    };

    bool found = false;
    QString name; ///< of the registry; empty without an entry
    std::vector<Group> groups;
    std::vector<QStringList> links; ///< distinta, account above, from, to
};

/// Reads an account with its registry, bank, agent, classifications and links. Throws what the connection throws.
AccountSheet readAccount(contract::Connection& connection, const AccountKey& key);

} // namespace host
