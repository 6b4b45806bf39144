#pragma once

#include "platform/qt/forms/Scriptable.h"
#include "platform/qt/forms/Session.h"
#include "platform/qt/look/Appearance.h"

#include <QDialog>
#include <QString>

#include <map>
#include <memory>

namespace host {

/// A modal window of the host's own, seen by scripts as a form.
class HostWindow : public QDialog, public platform::qt::FormWindow {
    Q_OBJECT
public:
    HostWindow(const QString& name, const QString& title, QWidget* parent);
    ~HostWindow() override;

    /// Shows the window and returns when it has gone; driven by a script, when the script has left it.
    void run();

    QString formName() const override { return name_; }
    contract::Form* form() override { return nullptr; }
    QWidget* window() override { return this; }
    bool isModal() const override { return true; }
    QString formCaption() const override { return windowTitle(); }
    contract::Rect formBounds() const override;
    void resizeForm(contract::Twips width, contract::Twips height) override;
    bool pressClose() override;
    QStringList controlNames() const override;
    platform::qt::Scriptable* control(const QString& name) override;
    const contract::Control* contractControl(const QString& name) const override;
    contract::Rect controlBounds(const QString& name) const override;

protected:
    /// Gives the window its size at ten points, larger or smaller with the type, but no larger than the main window or,
    /// without one, the screen.
    void resizeForType(const QSize& atTenPoints);
    void addControl(const QString& name, std::unique_ptr<platform::qt::Scriptable> control);

private:
    QString name_;
    std::map<QString, std::unique_ptr<platform::qt::Scriptable>> controls_;
};

} // namespace host
