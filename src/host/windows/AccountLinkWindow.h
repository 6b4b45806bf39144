#pragma once

#include "host/services/AccountReader.h"
#include "host/services/HostContext.h"
#include "host/windows/HostWindow.h"

namespace host {

/// To which entry of the general registry an account is linked, and which other accounts are linked to the same.
struct RegistryLink {
    bool found = false;                ///< the account exists
    std::optional<std::int64_t> entry; ///< code of the registry's entry; nothing where it is linked to none
    bool entryFound = false;           ///< the registry has that entry
    QString name;                      ///< of the entry
    std::vector<std::pair<QString, QString>> values; ///< of the entry: name, text
    std::vector<QStringList> accounts;               ///< company, kind, code; the account itself is among them
};

/// Throws what the connection throws.
RegistryLink readRegistryLink(contract::Connection& connection, const AccountKey& key);

/// Shows the link of an account to the general registry.
class AccountLinkWindow : public HostWindow {
    Q_OBJECT
public:
    /// Opens "CollegamentoAnagrafica".
    static void show(HostContext& context, const AccountKey& key);

    AccountLinkWindow(const AccountKey& key, const RegistryLink& link, QWidget* parent);
};

} // namespace host
