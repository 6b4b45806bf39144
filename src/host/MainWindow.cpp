#include "host/MainWindow.h"

#include "host/AppIcon.h"
#include "host/BusyIndicator.h"
#include "host/ConnectionDialog.h"
#include "host/DatabaseAccess.h"
#include "host/DialogButtons.h"
#include "host/ErrorLogWindow.h"
#include "host/HostSession.h"
#include "host/Prompts.h"
#include "host/StatusLine.h"
#include "host/Text.h"
#include "host/UserChoice.h"
#include "platform/qt/Appearance.h"
#include "plugin/contract/RuntimeError.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>

namespace host {

using platform::qt::Appearance;
using platform::qt::ThemeKind;

namespace {

constexpr const char* title = "Manutenzione distinte";
constexpr QSize frameRoom{16, 48};
constexpr QSize startSize(1280, 800);
constexpr QSize leastSize(680, 520); ///< at startZoom
constexpr int startZoom = 10;

QString contextText(const HostSession& session) {
    return QStringLiteral("Azienda %1 · %2 · %3").arg(session.company()).arg(session.user(), session.databaseName());
}

} // namespace

MainWindow::MainWindow(UserSettings* settings) : settings_(settings), area_(new QMdiArea(this)) {
    setWindowTitle(QString::fromUtf8(title));
    setWindowIcon(applicationIcon());
    area_->setFrameShape(QFrame::NoFrame);
    area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    area_->setAccessibleName(QStringLiteral("Area dei programmi"));
    setCentralWidget(area_);
    hint_ = new QLabel(QStringLiteral("Nessun programma aperto.\nProgrammi › Manutenzione distinte (Ctrl+M)"), area_);
    hint_->setAlignment(Qt::AlignCenter);
    hint_->setAttribute(Qt::WA_TransparentForMouseEvents);
    hint_->hide();
    makeMenus();
    makeCorner();
    makeStatusBar();
    limitSize();
    connect(&Appearance::instance(), &Appearance::changed, this, &MainWindow::limitSize);
    if (settings_ == nullptr || !settings_->restoreWindow(*this)) {
        resize(startSize);
        // A person's first window: a screen that has no room for it with its frame is filled instead.
        const QSize room = screen()->availableSize() - frameRoom;
        if (settings_ != nullptr && (startSize.width() > room.width() || startSize.height() > room.height()))
            setWindowState(Qt::WindowMaximized);
    }
    // A maximised document puts its own name behind the window's.
    connect(this, &QWidget::windowTitleChanged, this, [this](const QString& text) {
        if (text != QLatin1String(title))
            setWindowTitle(QString::fromUtf8(title));
    });
}

void MainWindow::makeMenus() {
    // The form's own buttons have the letters S and V.
    auto* programs = menuBar()->addMenu(QStringLiteral("&Programmi"));
    openAction_ = programs->addAction(QStringLiteral("&Manutenzione distinte"), this, &MainWindow::toggleForm);
    openAction_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    closeAction_ = programs->addAction(QStringLiteral("&Chiudi il programma"), this, &MainWindow::toggleForm);
    programs->addSeparator();
    auto* quit = programs->addAction(QStringLiteral("&Esci"), this, &QWidget::close);
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

    makeViewMenu();

    auto* tools = menuBar()->addMenu(QStringLiteral("S&trumenti"));
    tools->addAction(QStringLiteral("&Azienda di lavoro…"), this, &MainWindow::chooseCompany);
    tools->addAction(QStringLiteral("&Utente e gruppo…"), this, &MainWindow::chooseUser);
    tools->addAction(QStringLiteral("&Connessione…"), this, &MainWindow::chooseConnection);
    tools->addSeparator();
    tools->addAction(QStringLiteral("&Registro degli errori…"), this, &MainWindow::showErrors);

    auto* help = menuBar()->addMenu(QStringLiteral("&?"));
    help->addAction(QStringLiteral("&Informazioni…"), this, &MainWindow::showAbout);
}

void MainWindow::makeViewMenu() {
    auto* view = menuBar()->addMenu(QStringLiteral("Visuali&zza"));
    detailsAction_ = view->addAction(QStringLiteral("&Dettagli"));
    detailsAction_->setObjectName(QStringLiteral("mnuDettagli"));
    detailsAction_->setShortcut(QKeySequence(Qt::Key_F8));
    detailsAction_->setCheckable(true);
    detailsAction_->setChecked(true);
    connect(detailsAction_, &QAction::triggered, this, [this] {
        // The entry is ticked by what the session then tells, not by the click.
        detailsAction_->toggle();
        session_->chooseMenuEntry(detailsAction_->objectName());
    });
    resetAction_ = view->addAction(QStringLiteral("&Ripristina le misure"));
    resetAction_->setObjectName(QStringLiteral("mnuRipristinaMisure"));
    connect(resetAction_, &QAction::triggered, this, &MainWindow::resetSizes);
    view->addSeparator();
    // Commands of the form: their captions are the session's.
    const std::pair<const char*, QKeySequence> commands[] = {{"mnuAggiorna", Qt::Key_F5},
                                                             {"mnuCerca", Qt::CTRL | Qt::Key_F},
                                                             {"mnuTrovaSuccessivo", Qt::Key_F3},
                                                             {"mnuTrovaPrecedente", Qt::SHIFT | Qt::Key_F3}};
    for (const auto& [command, keys] : commands) {
        const QString name = QString::fromLatin1(command);
        auto* action = view->addAction(HostSession::menuEntryCaption(name), this,
                                       [this, name] { session_->chooseMenuEntry(name); });
        action->setObjectName(name);
        action->setShortcut(keys);
        formActions_.append(action);
    }
    view->addSeparator();

    auto* theme = view->addMenu(QStringLiteral("&Tema"));
    auto* themes = new QActionGroup(theme);
    const std::pair<QString, ThemeKind> kinds[] = {{QStringLiteral("&Chiaro"), ThemeKind::light},
                                                   {QStringLiteral("&Scuro"), ThemeKind::dark}};
    for (const auto& [caption, kind] : kinds) {
        auto* action = theme->addAction(caption, this, [kind = kind] { Appearance::instance().setTheme(kind); });
        action->setCheckable(true);
        themes->addAction(action);
        connect(theme, &QMenu::aboutToShow, action,
                [action, kind = kind] { action->setChecked(Appearance::instance().theme() == kind); });
    }
    auto* zoom = view->addMenu(QStringLiteral("&Zoom"));
    auto* zooms = new QActionGroup(zoom);
    for (const int points : {8, 10, 12, 14}) {
        // The last digit is the key: no two have the same.
        QString caption = QStringLiteral("%1 punti").arg(points);
        caption.insert(points < 10 ? 0 : 1, QLatin1Char('&'));
        auto* action = zoom->addAction(caption, this, [points] { Appearance::instance().setZoom(points); });
        action->setCheckable(true);
        zooms->addAction(action);
        connect(zoom, &QMenu::aboutToShow, action,
                [action, points] { action->setChecked(Appearance::instance().zoom() == points); });
    }
}

void MainWindow::makeCorner() {
    // The bar's own corner is where a maximised document puts its buttons; this stands before it.
    corner_ = new QWidget(menuBar());
    auto* row = new QHBoxLayout(corner_);
    row->setContentsMargins(8, 0, 8, 0);
    context_ = new QLabel(corner_);
    context_->setTextFormat(Qt::PlainText);
    themeButton_ = new QToolButton(corner_);
    themeButton_->setText(QStringLiteral("◐"));
    themeButton_->setAutoRaise(true);
    themeButton_->setToolTip(QStringLiteral("Cambia tema"));
    themeButton_->setAccessibleName(QStringLiteral("Cambia tema"));
    connect(themeButton_, &QToolButton::clicked, this, [] {
        auto& appearance = Appearance::instance();
        appearance.setTheme(appearance.theme() == ThemeKind::light ? ThemeKind::dark : ThemeKind::light);
    });
    row->addWidget(context_);
    row->addWidget(themeButton_);
    menuBar()->installEventFilter(this);
}

void MainWindow::placeCorner() {
    const QWidget* buttons = menuBar()->cornerWidget(Qt::TopRightCorner);
    const int right = buttons != nullptr && buttons->isVisible() ? buttons->x() : menuBar()->width();
    const QSize size = corner_->sizeHint();
    const QList<QAction*> menus = menuBar()->actions();
    const int left = menus.isEmpty() ? 0 : menuBar()->actionGeometry(menus.last()).right();
    corner_->setGeometry(right - size.width(), (menuBar()->height() - size.height()) / 2, size.width(), size.height());
    // In a narrow window the menus go first.
    corner_->setVisible(right - size.width() > left);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::LayoutRequest:
    case QEvent::ChildAdded:
    case QEvent::ChildRemoved:
        // After the bar has laid its own corner out.
        if (watched == menuBar())
            QTimer::singleShot(0, this, &MainWindow::placeCorner);
        break;
    case QEvent::Close:
        // The form's own close button; with the form its splitters go.
        if (watched != menuBar())
            saveForm();
        break;
    default:
        break;
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::makeStatusBar() {
    statusLine_ = new StatusLine(this);
    statusBar()->addWidget(statusLine_, 1);
    statusBar()->setSizeGripEnabled(false);
}

void MainWindow::attach(HostSession& session) {
    session_ = &session;
    connect(session_, &HostSession::contextChanged, this, &MainWindow::showContext);
    connect(session_, &HostSession::statusText, this, [this](const QString& text) {
        lastStatus_ = text;
        if (busy_ == nullptr || !busy_->showing())
            statusLine_->setText(text);
    });
    connect(session_, &HostSession::formOpened, this, [this] {
        detailsAction_->setChecked(true);
        if (settings_ != nullptr && session_->formWindow() != nullptr) {
            settings_->restoreForm(*session_->formWindow());
            session_->formWindow()->window()->installEventFilter(this);
        }
        showFormState();
    });
    connect(session_, &HostSession::formClosed, this, &MainWindow::showFormState);
    connect(session_, &HostSession::menuEntryChosen, this, [this](const QString& name) {
        if (name == detailsAction_->objectName())
            detailsAction_->toggle();
        else if (name == resetAction_->objectName())
            resetSizes();
    });
    // A script answers line by line; there is nobody to wait, and nobody's input to drop.
    if (settings_ != nullptr) {
        busy_ = new BusyIndicator(
            [this](const QString& text) {
                statusLine_->setText(text.isEmpty() ? lastStatus_ : text);
                // All of it: what was laid over the window meanwhile has left it blank.
                repaint();
            },
            this);
        session_->trace().afterFinished = [this] { busy_->statementDone(session_->trace().count()); };
    }
    showContext();
    showFormState();
}

void MainWindow::showContext() {
    const QString text = contextText(*session_);
    context_->setText(text);
    statusLine_->setContext(QStringLiteral("Azienda %1  |  Utente %2  |  Gruppo %3  |  %4")
                                .arg(session_->company())
                                .arg(session_->user(), session_->group(), session_->databaseName()));
    placeCorner();
}

void MainWindow::showFormState() {
    const bool open = session_->formOpen();
    openAction_->setEnabled(!open);
    closeAction_->setEnabled(open);
    detailsAction_->setEnabled(open);
    for (auto* action : formActions_)
        action->setEnabled(open);
    if (!open) {
        lastStatus_.clear();
        statusLine_->setText(QString());
    }
    hint_->resize(hint_->sizeHint());
    hint_->move(40, 40);
    hint_->setVisible(!open);
}

void MainWindow::toggleForm() {
    if (!session_->formOpen()) {
        if (const QString refusal = session_->openForm(); !refusal.isEmpty())
            tell(QMessageBox::Critical, windowTitle(), asSentence(refusal), this);
        return;
    }
    saveForm();
    bool gone = false;
    session_->closeForm(gone);
}

// Window, splitters and columns as on the first day.
void MainWindow::resetSizes() {
    if (settings_ != nullptr) {
        settings_->forgetSizes();
        showNormal();
        resize(startSize.boundedTo(screen()->availableSize() - frameRoom));
    }
    if (session_ != nullptr && session_->formWindow() != nullptr)
        resetForm(*session_->formWindow());
}

// Below this the form's buttons would lie over each other.
void MainWindow::limitSize() {
    const QSize room = screen()->availableSize() - frameRoom;
    setMinimumSize((leastSize * Appearance::instance().zoom() / startZoom).boundedTo(room));
}

void MainWindow::saveForm() {
    if (settings_ != nullptr && session_ != nullptr && session_->formWindow() != nullptr)
        settings_->saveForm(*session_->formWindow());
}

void MainWindow::closeEvent(QCloseEvent* event) {
    saveForm();
    if (session_ != nullptr && session_->formOpen()) {
        bool gone = false;
        session_->closeForm(gone);
        if (!gone) {
            event->ignore();
            return;
        }
    }
    if (settings_ != nullptr) {
        settings_->saveWindow(*this);
        settings_->saveAppearance();
    }
    event->accept();
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange && hint_ != nullptr)
        hint_->adjustSize();
    if (event->type() == QEvent::FontChange && corner_ != nullptr)
        QTimer::singleShot(0, this, &MainWindow::placeCorner);
}

void MainWindow::chooseCompany() {
    QStringList items;
    int current = 0;
    std::vector<std::int64_t> companies;
    try {
        companies = session_->companies();
    } catch (const contract::RuntimeError& error) {
        tell(QMessageBox::Critical, windowTitle(), toQt(error.description()), this);
        return;
    }
    for (const auto company : companies) {
        if (company == session_->company())
            current = static_cast<int>(items.size());
        items.append(QString::number(company));
    }
    auto* list = new QComboBox;
    list->setEditable(true);
    list->addItems(items);
    list->setCurrentIndex(current);
    FieldDialog dialog(QStringLiteral("Azienda di lavoro"), QStringLiteral("A&zienda"), list, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString item = list->currentText();
    bool number = false;
    const qint64 company = item.trimmed().toLongLong(&number);
    if (number && company == session_->company())
        return;
    if (!number || company < 0) {
        tell(QMessageBox::Warning, windowTitle(), QStringLiteral("\"%1\" non è un numero di azienda.").arg(item), this);
        return;
    }
    saveForm();
    session_->setCompany(company);
}

void MainWindow::chooseUser() {
    UserChoice choice(session_->user(), session_->group(), this);
    if (choice.exec() == QDialog::Accepted)
        session_->setUser(choice.user(), choice.group());
}

void MainWindow::chooseConnection() {
    ConnectionDialog dialog(
        session_->connectionString(),
        [this](const std::string& connectionString) { return session_->tryDatabase(connectionString); }, this);
    if (dialog.exec() != QDialog::Accepted || settings_ == nullptr)
        return;
    const std::string chosen = dialog.connectionString();
    settings_->saveConnection(chosen);
    tell(QMessageBox::Information, windowTitle(),
         QStringLiteral("Dal prossimo avvio il programma apre\n%1").arg(toQt(databaseLabel(chosen))), this);
}

void MainWindow::showErrors() {
    ErrorLogWindow(session_->logFile(), this).exec();
}

void MainWindow::showAbout() {
    QMessageBox box(this);
    box.setWindowTitle(QStringLiteral("Informazioni"));
    box.setIconPixmap(applicationIcon().pixmap(64));
    box.setTextFormat(Qt::PlainText);
    box.setText(QStringLiteral("Manutenzione distinte %1").arg(QStringLiteral(DISTINTE_VERSION)));
    box.setInformativeText(QStringLiteral("Sposta clienti e fornitori, con tutta la loro struttura, da una distinta "
                                          "all'altra.\n\n%1\nRegistro degli errori: %2")
                               .arg(contextText(*session_), session_->logFile()));
    box.addButton(dialogButton(QStringLiteral("OK"), &box, true), QMessageBox::AcceptRole);
    box.exec();
}

} // namespace host
