#include "host/windows/HostWindow.h"

#include "platform/qt/look/PlainText.h"

#include <QScreen>

namespace host {

using platform::qt::Appearance;
using platform::qt::Session;

namespace {

contract::Rect twips(const QRect& pixels) {
    return {Appearance::twips(pixels.x()), Appearance::twips(pixels.y()), Appearance::twips(pixels.width()),
            Appearance::twips(pixels.height())};
}

} // namespace

HostWindow::HostWindow(const QString& name, const QString& title, QWidget* parent) : QDialog(parent), name_(name) {
    setObjectName(name);
    setWindowTitle(platform::qt::titleText(title));
    setModal(true);
}

HostWindow::~HostWindow() = default;

void HostWindow::run() {
    auto& session = Session::instance();
    session.opened(*this);
    if (session.unattended()) {
        open();
        session.modalOpened(*this);
        if (isVisible())
            pressClose();
    } else {
        exec();
    }
    session.closed(*this);
}

contract::Rect HostWindow::formBounds() const {
    const QPoint origin = parentWidget() != nullptr ? parentWidget()->mapToGlobal(QPoint()) : QPoint();
    return twips(geometry().translated(-origin));
}

void HostWindow::resizeForm(contract::Twips width, contract::Twips height) {
    resize(Appearance::pixels(width), Appearance::pixels(height));
}

bool HostWindow::pressClose() {
    close();
    return !isVisible();
}

QStringList HostWindow::controlNames() const {
    QStringList names;
    for (const auto& [name, control] : controls_)
        names.append(name);
    return names;
}

platform::qt::Scriptable* HostWindow::control(const QString& name) {
    const auto at = controls_.find(name);
    return at != controls_.end() ? at->second.get() : nullptr;
}

const contract::Control* HostWindow::contractControl(const QString&) const {
    return nullptr;
}

contract::Rect HostWindow::controlBounds(const QString& name) const {
    const auto at = controls_.find(name);
    if (at == controls_.end())
        return {};
    const QWidget* widget = at->second->widget();
    return twips(QRect(widget->mapTo(this, QPoint()), widget->size()));
}

void HostWindow::resizeForType(const QSize& atTenPoints) {
    constexpr int points = 10;
    const QSize room = parentWidget() != nullptr ? parentWidget()->size() : screen()->availableSize();
    const QSize wanted = atTenPoints * Appearance::instance().zoom() / points;
    resize(wanted.boundedTo(room.expandedTo(atTenPoints)));
}

void HostWindow::addControl(const QString& name, std::unique_ptr<platform::qt::Scriptable> control) {
    // A control under the window's own name is one more door to a widget that has its name.
    if (name != name_)
        control->widget()->setObjectName(name);
    controls_[name] = std::move(control);
}

} // namespace host
