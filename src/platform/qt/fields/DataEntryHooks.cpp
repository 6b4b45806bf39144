#include "platform/qt/fields/DataEntryHooks.h"

#include "contract/Host.h"

#include <QDebug>

namespace platform::qt {

DataEntryHooks& DataEntryHooks::instance() {
    static DataEntryHooks hooks;
    return hooks;
}

int DataEntryHooks::askToSave(const QString& title) const {
    return showMessage ? showMessage(title, QStringLiteral("Salvare le modifiche?"), yesNoCancel)
                       : contract::message::answerNo;
}

void DataEntryHooks::report(const contract::RuntimeError& error, const contract::ErrorList& records) const {
    if (showError)
        showError(error, records);
    else
        qWarning("The record could not be saved: %s", error.what());
}

} // namespace platform::qt
