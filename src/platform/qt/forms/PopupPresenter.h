#pragma once

#include "platform/qt/forms/Session.h"

#include <QAction>
#include <QList>
#include <QMenu>
#include <QObject>
#include <QPoint>
#include <QPointer>

#include <functional>
#include <optional>

namespace platform::qt {

/// A list of named items that opens as a menu and does not wait for the choice.
class PopupPresenter : public PopupWindow {
public:
    /// Tells the name of the item that was chosen, after the menu has closed.
    PopupPresenter(const QString& name, QWidget* parent, std::function<void(const QString&)> chosen);
    PopupPresenter(const PopupPresenter&) = delete;
    PopupPresenter& operator=(const PopupPresenter&) = delete;
    ~PopupPresenter() override;

    /// Appends an item; its name need not be unique.
    QAction* addItem(const QString& name, const QString& caption);
    /// Nothing when there is none of that name.
    QAction* item(const QString& name) const;
    /// Opens at a point of the screen, and is the session's popup until it closes.
    void open(const QPoint& point);
    /// Pixels.
    void setLeastWidth(int width);
    /// Lets the menu itself be found by its name among the widgets of its window.
    void nameMenu();

    QString menuName() const override { return name_; }
    QStringList itemNames() const override;
    bool choose(const QString& item) override;
    void dismiss() override;

private:
    QString name_;
    QMenu* menu_;           ///< alive while watch_ is
    QPointer<QMenu> watch_; ///< a window that goes takes its menus along
    std::function<void(const QString&)> chosen_;
    QObject context_; ///< its end ends the listening
};

/// Where the user's last key or mouse button points: a popup opens there.
class LastInput : public QObject {
    Q_OBJECT
public:
    /// Listens from the first call on.
    static LastInput& instance();

    /// The mouse, or the focused widget's cursor when the last input was a key.
    QPoint popupPoint() const;

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    explicit LastInput(QObject* parent);

    bool fromKeyboard_ = false;
    std::optional<QPoint> mouse_;
};

} // namespace platform::qt
