#pragma once

#include "host/start/UserSettings.h"

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenu>
#include <QPointer>
#include <QToolButton>

namespace host {

class BusyIndicator;
class HostSession;
class ManualWindow;
class StatusLine;

/// The program's window: menu bar, document area and status bar around a session.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    /// Nothing is remembered, and nothing remembered is used, without settings.
    explicit MainWindow(UserSettings* settings);

    QMdiArea* area() const { return area_; }
    /// The session that the menus work on; it must outlive the window.
    void attach(HostSession& session);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeMenus();
    void makeCorner();
    void placeCorner();
    void makeStatusBar();
    void makeViewMenu();
    void toggleForm();
    /// Opens the form, or brings the open one back to the whole of the area.
    void showForm();
    void placeHint();
    void keepWithinReach(QWidget& form);
    void keepTitle();
    void showNotices();
    void showContext();
    void showFormState();
    void saveForm();
    void resetSizes();
    void limitSize();
    QString contextText() const;
    void rememberDatabase();
    void fillRecent(QMenu& menu);
    /// Closes the form, works on another database from now on, and opens the form again. What does not open, or a form
    /// that does not close, leaves the present one.
    void switchDatabase(const std::string& connectionString);
    void chooseCompany();
    void chooseUser();
    void chooseConnection();
    void showErrors();
    /// Opens the manual, at the chapter of that heading where one is named.
    void showManual(const QString& chapter);
    void showAbout();

    static inline const QString programName = QStringLiteral("Manutenzione distinte");

    UserSettings* settings_;
    QString title_ = programName;
    HostSession* session_ = nullptr;
    BusyIndicator* busy_ = nullptr;
    QMdiArea* area_;
    QPointer<ManualWindow> manual_;
    QAction* openAction_ = nullptr;
    QAction* closeAction_ = nullptr;
    QAction* detailsAction_ = nullptr;
    QAction* resetAction_ = nullptr;
    QList<QAction*> formActions_; ///< those that need an open form, and are the component's
    QWidget* corner_ = nullptr;   ///< at the menu bar's right
    QLabel* context_ = nullptr;
    QToolButton* themeButton_ = nullptr;
    StatusLine* statusLine_ = nullptr;
    QLabel* hint_ = nullptr;
    QString lastStatus_;
};

} // namespace host
