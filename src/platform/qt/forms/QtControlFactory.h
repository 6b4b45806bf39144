#pragma once

#include "contract/Form.h"

#include <QMdiArea>
#include <QPointer>
#include <QWidget>

namespace platform::qt {

/// Makes the forms of a component over the host's main window.
class QtControlFactory : public contract::ControlFactory {
public:
    /// The area must stand in the window; both must outlive the forms made.
    QtControlFactory(QMdiArea* documentArea, QWidget* mainWindow);

    std::unique_ptr<contract::Form> newDocumentForm(std::string_view name) override;
    std::unique_ptr<contract::Form> newDialog(std::string_view name) override;

private:
    QPointer<QMdiArea> documentArea_;
    QPointer<QWidget> mainWindow_;
};

} // namespace platform::qt
