#include "platform/qt/forms/QtControlFactory.h"

#include "contract/RuntimeError.h"
#include "platform/qt/forms/DialogForm.h"
#include "platform/qt/forms/DocumentForm.h"
#include "platform/qt/look/Appearance.h"

namespace platform::qt {

QtControlFactory::QtControlFactory(QMdiArea* documentArea, QWidget* mainWindow)
    : documentArea_(documentArea), mainWindow_(mainWindow) {
    const auto colour = [documentArea] { documentArea->setBackground(Appearance::instance().colors().window); };
    colour();
    documentArea->setFrameShape(QFrame::NoFrame);
    QObject::connect(&Appearance::instance(), &Appearance::changed, documentArea, colour);
}

std::unique_ptr<contract::Form> QtControlFactory::newDocumentForm(std::string_view name) {
    if (!documentArea_)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet, "La finestra principale è già chiusa.");
    return std::make_unique<DocumentForm>(name, documentArea_);
}

std::unique_ptr<contract::Form> QtControlFactory::newDialog(std::string_view name) {
    if (!mainWindow_)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet, "La finestra principale è già chiusa.");
    return std::make_unique<DialogForm>(name, mainWindow_);
}

} // namespace platform::qt
