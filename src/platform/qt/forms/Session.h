#pragma once

#include "contract/Control.h"
#include "contract/Form.h"

#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <vector>

namespace platform::qt {

class Scriptable;

/// A form's window as the host and its script mode see it.
class FormWindow {
public:
    FormWindow() = default;
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;
    virtual ~FormWindow() = default;

    virtual QString formName() const = 0;
    /// The contract's form, nothing for a window of the host's own.
    virtual contract::Form* form() = 0;
    virtual QWidget* window() = 0;
    virtual bool isModal() const = 0;
    /// Caption as set, mnemonic marks included.
    virtual QString formCaption() const = 0;
    /// Twips; of a document form relative to the document area.
    virtual contract::Rect formBounds() const = 0;
    /// Twips, the whole form's.
    virtual void resizeForm(contract::Twips width, contract::Twips height) = 0;
    /// What the user's close button does. True when the window is gone.
    virtual bool pressClose() = 0;

    virtual QStringList controlNames() const = 0;
    /// Nothing when the form has none of that name (exact case).
    virtual Scriptable* control(const QString& name) = 0;
    virtual const contract::Control* contractControl(const QString& name) const = 0;
    /// Relative to the form's client area, in the exact twips that were set.
    virtual contract::Rect controlBounds(const QString& name) const = 0;
};

/// A popup menu that is open.
class PopupWindow {
public:
    PopupWindow() = default;
    PopupWindow(const PopupWindow&) = delete;
    PopupWindow& operator=(const PopupWindow&) = delete;
    virtual ~PopupWindow() = default;

    virtual QString menuName() const = 0;
    virtual QStringList itemNames() const = 0;
    /// Chooses an item and closes the menu; false when there is none of that name or it is disabled.
    virtual bool choose(const QString& item) = 0;
    virtual void dismiss() = 0;
};

/// What stands on the screen: one for the whole program, on the user-interface thread.
class Session {
public:
    static Session& instance();

    /// Forms in the order in which they were opened; modal ones last.
    const std::vector<FormWindow*>& forms() const { return forms_; }
    /// The modal form opened last, else the document form; nothing without forms.
    FormWindow* front() const;
    FormWindow* find(const QString& formName) const;
    PopupWindow* popup() const { return popup_; }

    // For the windows themselves

    void opened(FormWindow& form);
    void closed(FormWindow& form);
    void popupOpened(PopupWindow& menu) { popup_ = &menu; }
    void popupClosed(PopupWindow& menu);

    /// Set by the script mode: no person is there. A form shown modally then calls this once it stands instead of
    /// waiting for the user, and is closed by its close button if it is still open when the call returns. Popup menus
    /// are not waited for in either case.
    std::function<void(FormWindow&)> modalOpened;
    bool unattended() const { return static_cast<bool>(modalOpened); }

private:
    std::vector<FormWindow*> forms_;
    PopupWindow* popup_ = nullptr;
};

} // namespace platform::qt
