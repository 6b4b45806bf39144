#pragma once

#include "contract/MoveRegistry.h"
#include "host/tables/RegistryTables.h"
#include "host/windows/ListWindow.h"

namespace host {

/// What taking an operation back would do, or what stands in its way; asks whether to do it. Scripts know the button
/// that says yes as CMD_ANNULLA, which is there only where nothing stands in the way.
class UndoWindow : public ListWindow {
    Q_OBJECT
public:
    UndoWindow(const contract::Operation& operation, const contract::Undoing& preview, const ColumnCaptions& captions,
               QWidget* parent);

    /// Whether the user said yes.
    bool confirmed() const { return result() == QDialog::Accepted; }
};

} // namespace host
