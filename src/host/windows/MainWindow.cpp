#include "host/windows/MainWindow.h"

#include "host/database/CommandWaits.h"
#include "host/database/DatabaseAccess.h"
#include "host/services/Text.h"
#include "host/start/HostSession.h"
#include "host/windows/AppIcon.h"
#include "host/windows/BusyIndicator.h"
#include "host/windows/Prompts.h"
#include "host/windows/StatusLine.h"
#include "host/windows/ToolCommands.h"
#include "platform/qt/look/Appearance.h"
#include "platform/shared/LongWork.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>

#include <algorithm>

namespace host {

using platform::qt::Appearance;
using platform::qt::ThemeKind;

namespace {

constexpr QSize frameRoom{16, 48};
constexpr QSize startSize(1280, 800);
constexpr QSize leastSize(680, 520); ///< at startZoom
constexpr int startZoom = 10;

} // namespace

MainWindow::MainWindow(UserSettings* settings) : settings_(settings), area_(new QMdiArea(this)) {
    setWindowTitle(title_);
    setWindowIcon(applicationIcon());
    area_->setFrameShape(QFrame::NoFrame);
    area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    area_->setAccessibleName(QStringLiteral("Area dei programmi"));
    setCentralWidget(area_);
    hint_ = new QLabel(QStringLiteral("Nessun programma aperto.\nProgrammi › Manutenzione distinte (Ctrl+M)"), area_);
    hint_->setAlignment(Qt::AlignCenter);
    hint_->setAttribute(Qt::WA_TransparentForMouseEvents);
    hint_->hide();
    area_->installEventFilter(this);
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
    connect(this, &QWidget::windowTitleChanged, this, &MainWindow::keepTitle);
}

void MainWindow::makeMenus() {
    // The form's own buttons have the letters S and V.
    auto* programs = menuBar()->addMenu(QStringLiteral("&Programmi"));
    openAction_ = programs->addAction(QStringLiteral("&Manutenzione distinte"), this, &MainWindow::showForm);
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
    auto* recent = tools->addMenu(QStringLiteral("&Database recenti"));
    recent->setObjectName(QStringLiteral("recenti"));
    connect(recent, &QMenu::aboutToShow, this, [this, recent] { fillRecent(*recent); });
    addToolCommands(*tools, {this, [this] { return session_; },
                             [this](const QString& text) {
                                 statusLine_->setText(text);
                                 statusLine_->repaint();
                             }});
    tools->addSeparator();
    tools->addAction(QStringLiteral("&Registro degli errori…"), this, &MainWindow::showErrors);

    auto* help = menuBar()->addMenu(QStringLiteral("&?"));
    help->addAction(QStringLiteral("&Manuale"), this, [this] { showManual({}); });
    help->addAction(QStringLiteral("&Tasti"), this, [this] { showManual(QStringLiteral("La tastiera")); });
    help->addSeparator();
    help->addAction(QStringLiteral("&Licenza e versioni…"), this, &MainWindow::showAbout);
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
                                                             {"mnuTrovaPrecedente", Qt::SHIFT | Qt::Key_F3},
                                                             {"mnuMostraSpostato", Qt::Key_F6}};
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
    case QEvent::WindowStateChange:
        // After the area has given it the place from before.
        if (watched != menuBar() && watched != area_)
            QTimer::singleShot(0, this, [this, form = QPointer<QObject>(watched)] {
                if (auto* window = qobject_cast<QWidget*>(form.data()))
                    keepWithinReach(*window);
            });
        break;
    case QEvent::Resize:
        if (watched == area_) {
            placeHint();
            if (settings_ != nullptr && session_ != nullptr && session_->formOpen())
                keepWithinReach(*session_->formWindow()->window());
        }
        [[fallthrough]];
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
        if (watched != menuBar() && watched != area_)
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
    connect(session_, &HostSession::statusHint, this,
            [this](const QString& text) { statusLine_->setText(text.isEmpty() ? lastStatus_ : text); });
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
    new CommandWaits(
        [this](const QString& text) {
            if (busy_ != nullptr)
                busy_->tell(text);
        },
        this);
    rememberDatabase();
    session_->notices().changed = [this] { showNotices(); };
    showNotices();
    // A script answers line by line; there is nobody to wait, and nobody's input to drop.
    if (settings_ != nullptr) {
        busy_ = new BusyIndicator(
            [this](const QString& text) {
                statusLine_->setText(text.isEmpty() ? lastStatus_ : text);
                statusLine_->layout()->activate();
                // All of it: what was laid over the window meanwhile has left it blank. Within a statement nothing that
                // is painted may read the database.
                if (platform::shared::LongWork::instance().withinStatement())
                    statusLine_->repaint();
                else
                    repaint();
            },
            this);
        busy_->setSurroundings(this, area_, statusLine_->cancelButton());
        session_->trace().afterFinished = [this] { busy_->statementDone(session_->trace().count()); };
    }
    showContext();
    showFormState();
}

void MainWindow::keepTitle() {
    if (windowTitle() != title_)
        setWindowTitle(title_);
}

void MainWindow::showNotices() {
    QStringList brief;
    QStringList sentences;
    title_ = programName;
    for (const auto& each : session_->notices().all()) {
        brief.append(each.brief);
        sentences.append(each.sentence);
        if (each.brief == notice::readOnly)
            title_ += QStringLiteral(" – sola lettura");
    }
    statusLine_->setNotice(brief.join(QStringLiteral(" · ")), sentences.join(QLatin1Char('\n')));
    keepTitle();
}

QString MainWindow::contextText() const {
    return QStringLiteral("Azienda %1 · %2 · %3")
        .arg(session_->company())
        .arg(session_->user(), session_->databaseName());
}

void MainWindow::showContext() {
    context_->setText(contextText());
    context_->setToolTip(plainToolTip(session_->databasePlace()));
    statusLine_->setContext(QStringLiteral("Azienda %1  |  Utente %2  |  Gruppo %3  |  %4")
                                .arg(session_->company())
                                .arg(session_->user(), session_->group(), session_->databaseName()));
    placeCorner();
}

void MainWindow::showFormState() {
    const bool open = session_->formOpen();
    closeAction_->setEnabled(open);
    detailsAction_->setEnabled(open);
    for (auto* action : formActions_)
        action->setEnabled(open);
    if (!open) {
        lastStatus_.clear();
        statusLine_->setText(QString());
    }
    hint_->setVisible(!open);
    placeHint();
}

void MainWindow::placeHint() {
    const QSize size = hint_->sizeHint();
    hint_->setGeometry(QRect(QPoint((area_->width() - size.width()) / 2, (area_->height() - size.height()) / 2), size));
}

void MainWindow::showForm() {
    auto* form = session_->formOpen() ? session_->formWindow()->window() : nullptr;
    if (form == nullptr) {
        toggleForm();
        return;
    }
    // However small it was made, it comes back whole.
    if (!form->isMaximized())
        form->showMaximized();
    area_->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(form));
    form->setFocus();
}

// A person's window that is no longer maximised keeps its title, its buttons and its edges within the area.
void MainWindow::keepWithinReach(QWidget& form) {
    if (form.isMaximized() || form.isMinimized() || !form.isVisible())
        return;
    QRect place = form.geometry();
    place.setSize(place.size().boundedTo(area_->size()));
    place.moveLeft(std::clamp(place.left(), 0, area_->width() - place.width()));
    place.moveTop(std::clamp(place.top(), 0, area_->height() - place.height()));
    if (place != form.geometry())
        form.setGeometry(place);
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

} // namespace host
