#pragma once

#include "host/services/AccountReader.h"
#include "host/services/HostContext.h"
#include "host/windows/HostWindow.h"

namespace host {

/// The card of a customer or supplier: its data and the distinte in which it stands.
class AccountWindow : public HostWindow {
    Q_OBJECT
public:
    /// Opens the program of that name ("SchedaClienti", "SchedaFornitori"). Throws RuntimeError 5 for any other.
    static void showCard(HostContext& context, const QString& program, const AccountKey& key);

    AccountWindow(const QString& name, const QString& title, const AccountKey& key, const AccountSheet& sheet,
                  QWidget* parent);
};

} // namespace host
