// The component's class and its form: made, given their context, asked, and let go.

#include "contract/Form.h"
#include "host/script/ClassProperties.h"
#include "host/services/HostContext.h"
#include "host/services/HostGlobal.h"
#include "host/services/HostServices.h"
#include "host/services/ObjectModels.h"
#include "host/services/Text.h"
#include "host/start/ComponentLibrary.h"
#include "host/start/HostSession.h"
#include "host/windows/DragMoves.h"

#include <QApplication>
#include <QTimer>

#include <array>

namespace host {

using platform::qt::Session;

namespace {

const QString notOpen = QStringLiteral("la maschera FRMQZ_COPIADISTINTA non è aperta");

/// Commands that stand in the menu bar and act on the form: name and caption, and whether the component carries them
/// out, for the side that has or had the keyboard or for both, or the window around its form.
struct MenuCommand {
    enum class Of { form, side, window };
    const char* name;
    const char* caption;
    Of of;
};
using enum MenuCommand::Of;
constexpr std::array<MenuCommand, 7> menuCommands{{{"mnuDettagli", "&Dettagli", form},
                                                   {"mnuAggiorna", "&Aggiorna", form},
                                                   {"mnuCerca", "&Cerca", side},
                                                   {"mnuTrovaSuccessivo", "Trova &successivo", side},
                                                   {"mnuTrovaPrecedente", "Trova &precedente", side},
                                                   {"mnuMostraSpostato", "&Mostra il nodo spostato", form},
                                                   {"mnuRipristinaMisure", "&Ripristina le misure", window}}};

const MenuCommand* findCommand(const QString& name) {
    for (const auto& command : menuCommands)
        if (name == QLatin1String(command.name))
            return &command;
    return nullptr;
}

} // namespace

platform::qt::FormWindow* HostSession::formWindow() const {
    return Session::instance().find(QString::fromLatin1(mainForm));
}

bool HostSession::formOpen() const {
    return formWindow() != nullptr;
}

// Of the widget that has the keyboard; where it stands on neither side the last one counts.
void HostSession::rememberSide(const QWidget* focused) {
    for (const QWidget* at = focused; at != nullptr; at = at->parentWidget()) {
        if (at->objectName() == QLatin1String("FME_ORIGINE"))
            side_ = QStringLiteral("Orig");
        else if (at->objectName() == QLatin1String("FME_DESTINAZIONE"))
            side_ = QStringLiteral("Dest");
    }
}

QString HostSession::openForm(const QJsonObject& properties) {
    if (formOpen())
        return QStringLiteral("la maschera FRMQZ_COPIADISTINTA è già aperta");
    releaseClass();
    class_ = component_.newClass(contract::copiaDistintaClassId);
    if (!class_)
        return QStringLiteral("il componente non conosce la classe %1")
            .arg(QLatin1String(contract::copiaDistintaClassId));
    modelsRegistered_ = false;
    connect(qApp, &QApplication::focusChanged, this, &HostSession::focusMoved, Qt::UniqueConnection);
    try {
        giveContext();
        keepRegistry();
    } catch (const contract::RuntimeError& error) {
        class_.reset();
        return toQt(error.description());
    }
    for (auto at = properties.begin(); at != properties.end(); ++at) {
        if (QString refusal = writeProperty(class_->plugin(), at.key(), at.value()); !refusal.isEmpty()) {
            class_.reset();
            return refusal;
        }
    }
    // A modal form keeps ShowForm from returning until it goes; its models are handed over from the loop inside.
    if (class_->plugin().WindowModal())
        QTimer::singleShot(0, this, &HostSession::registerModels);
    showing_ = true;
    class_->plugin().ShowForm();
    showing_ = false;
    if (!formOpen()) {
        const bool modal = class_ && class_->plugin().WindowModal();
        releaseClass();
        emit formClosed();
        return modal ? QString() : QStringLiteral("la maschera FRMQZ_COPIADISTINTA non si è aperta");
    }
    registerModels();
    watchForm();
    emit formOpened();
    return {};
}

void HostSession::giveContext() {
    auto& plugin = class_->plugin();
    auto traced = newFormConnection(context_);
    traced->Open();
    plugin.Connection(traced);
    plugin.ClsGlobal(global_);
    plugin.StatusBar(std::make_shared<HostStatusBar>(context_));
    plugin.ActiveFrame(std::make_shared<HostFrame>());
    plugin.ActiveNavigator(std::make_shared<HostNavigator>(context_));
    plugin.ClsVoceMenu(std::make_shared<HostMenuEntry>("Manutenzione distinte"));
    plugin.Caption("Manutenzione distinte");
    plugin.MenuModulo("QZ");
    plugin.MenuPadre("Programmi");
    plugin.MenuProg("Manutenzione distinte");
    plugin.CanDelete(true);
    plugin.CanInsert(true);
    plugin.CanQbe(true);
    plugin.CanUpdate(true);
    plugin.IsActive(true);
    constexpr std::int16_t maximised = 2;
    if (!settings_.scripted)
        plugin.WindowState(maximised);
    class_->DataTransfer = [context = context_](const contract::Value& data) {
        context->journal.record(QStringLiteral("CLSQZ_COPIADISTINTA"), QStringLiteral("DataTransfer"),
                                {{QStringLiteral("data"), toJson(data)}});
    };
}

void HostSession::registerModels() {
    if (modelsRegistered_ || !class_ || !formOpen())
        return;
    modelsRegistered_ = true;
    letNodesBeDragged(*formWindow(), [this](const QString& text) { emit statusHint(text); });
    const auto navigator = class_->plugin().ActiveNavigator();
    if (!navigator)
        return;
    class_->navigator().InitializeLayoutObjectModel(navigator->layout());
    class_->navigator().InitializeScriptObjectModel(navigator->script());
}

void HostSession::watchForm() {
    // The user's close button unloads the form without the host's doing; the class goes once the form has gone.
    const auto* form = formWindow();
    if (form == nullptr)
        return;
    connect(
        const_cast<platform::qt::FormWindow*>(form)->window(), &QObject::destroyed, this,
        [this] {
            if (formOpen() || !class_)
                return;
            releaseClass();
            emit formClosed();
        },
        Qt::QueuedConnection);
}

QString HostSession::closeForm(bool& gone) {
    gone = false;
    if (!class_ || !formOpen())
        return notOpen;
    gone = class_->plugin().CloseForm() == contract::Value(true);
    if (gone) {
        releaseClass();
        emit formClosed();
    }
    return {};
}

void HostSession::releaseClass() {
    if (!class_ || showing_)
        return;
    // Handed over first: what the class tells the host while it goes must find no class.
    const auto going = std::move(class_);
    going->DestroyClass();
}

QString HostSession::activateForm() {
    auto* window = formWindow();
    if (window == nullptr || window->form() == nullptr)
        return notOpen;
    contract::fire(window->form()->Activate);
    return {};
}

QString HostSession::state(std::vector<std::pair<std::string, contract::Value>>& values) const {
    if (!class_ || !formOpen())
        return notOpen;
    values = class_->state();
    return {};
}

QString HostSession::getClassProperty(const QString& name, QJsonValue& value) const {
    return class_ ? readProperty(class_->plugin(), name, value) : notOpen;
}

QString HostSession::setClassProperty(const QString& name, const QJsonValue& value) {
    return class_ ? writeProperty(class_->plugin(), name, value) : notOpen;
}

QString HostSession::callClass(const QString& name, const QJsonValue& argument, QJsonValue& result) {
    if (!class_)
        return notOpen;
    result = QJsonValue::Null;
    if (name == QLatin1String("TransferData")) {
        const auto data = fromJson(argument);
        if (!data)
            return QStringLiteral("TransferData vuole un testo, un numero, un booleano o null");
        result = toJson(class_->plugin().TransferData(*data));
        return {};
    }
    const auto navigator = class_->plugin().ActiveNavigator();
    if (name == QLatin1String("BeforeExportToOffice"))
        class_->navigator().BeforeExportToOffice(nullptr);
    else if (name == QLatin1String("InitializeLayoutObjectModel"))
        class_->navigator().InitializeLayoutObjectModel(navigator ? navigator->layout() : nullptr);
    else if (name == QLatin1String("InitializeScriptObjectModel"))
        class_->navigator().InitializeScriptObjectModel(navigator ? navigator->script() : nullptr);
    else if (name == QLatin1String("DestroyClass"))
        class_->DestroyClass();
    else
        return QStringLiteral("la classe non ha il metodo \"%1\"").arg(name);
    return {};
}

QStringList HostSession::menuEntries() const {
    QStringList names;
    for (const auto& command : menuCommands)
        names.append(QString::fromLatin1(command.name));
    return names;
}

QString HostSession::chooseMenuEntry(const QString& name) {
    const auto* command = findCommand(name);
    if (command == nullptr)
        return QStringLiteral("la barra dei menu non ha la voce \"%1\"").arg(name);
    if (!class_ || !formOpen())
        return notOpen;
    const QString given = command->of == MenuCommand::Of::side ? name + side_ : name;
    if (command->of != MenuCommand::Of::window && !class_->menuCommand(given.toStdString()))
        return QStringLiteral("il programma non conosce la voce \"%1\"").arg(name);
    emit menuEntryChosen(name);
    return {};
}

QString HostSession::menuEntryCaption(const QString& name) {
    const auto* command = findCommand(name);
    return command != nullptr ? QString::fromUtf8(command->caption) : QString();
}

bool HostSession::menuEntryEnabled(const QString& name) const {
    return findCommand(name) != nullptr && formOpen();
}

} // namespace host
