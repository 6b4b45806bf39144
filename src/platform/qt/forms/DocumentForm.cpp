#include "platform/qt/forms/DocumentForm.h"

#include "platform/qt/forms/Guarded.h"
#include "platform/qt/look/Appearance.h"
#include "platform/qt/look/Glyphs.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QStyle>
#include <QStyleOptionTitleBar>
#include <QTimer>
#include <QToolBar>

#include <algorithm>

namespace platform::qt {

using contract::Rect;
using contract::Twips;

namespace {

constexpr int minimised = 1;
constexpr int maximised = 2;

QRect pixelsOf(const Rect& bounds) {
    const int left = Appearance::pixels(bounds.left);
    const int top = Appearance::pixels(bounds.top);
    return {left, top, Appearance::pixels(bounds.left + bounds.width) - left,
            Appearance::pixels(bounds.top + bounds.height) - top};
}

/// The exact measure as long as the pixels are those that it was rounded to.
Twips keepExact(Twips exact, int given, int now) {
    return given == now ? exact : Appearance::twips(now);
}

/// The document that was in front last, per area: coming back from another program is no activation.
QMdiSubWindow* lastInFront(const QMdiArea* area) {
    return qvariant_cast<QMdiSubWindow*>(area->property("lastInFront"));
}

} // namespace

DocumentWindow::DocumentWindow() {
    setAttribute(Qt::WA_DeleteOnClose, false);
}

QMargins DocumentWindow::frameMargins() const {
    if (isMaximized() || isMinimized())
        return contentsMargins();
    QStyleOptionTitleBar option;
    option.initFrom(this);
    option.titleBarFlags = windowFlags();
    const int title = style()->pixelMetric(QStyle::PM_TitleBarHeight, &option, this);
    const int frame = style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, this);
    return {frame, title, frame, frame};
}

void DocumentWindow::closeEvent(QCloseEvent* event) {
    // The form hides the window itself when it goes.
    event->ignore();
    emit closePressed();
}

void DocumentWindow::moveEvent(QMoveEvent* event) {
    QMdiSubWindow::moveEvent(event);
    emit geometryChanged();
}

void DocumentWindow::resizeEvent(QResizeEvent* event) {
    QMdiSubWindow::resizeEvent(event);
    emit geometryChanged();
}

DocumentForm::DocumentForm(std::string_view name, QMdiArea* documents) : QtForm(name), documents_(documents) {
    auto* sub = new DocumentWindow;
    auto* content = new FormArea(nullptr);
    sub->setWidget(content);
    documents->addSubWindow(sub);
    sub->hide();
    // Shown in the menu bar while the window is maximised.
    sub->setWindowIcon(QApplication::windowIcon().isNull() ? glyphIcon(Glyph::levels) : QApplication::windowIcon());
    // A form may be as narrow as its user wants it; the component's layout copes.
    sub->setMinimumSize(200, 120);
    sub_ = sub;
    adopt(sub, content);
    QObject::connect(sub, &DocumentWindow::closePressed, context(), [this] { pressClose(); });
    QObject::connect(sub, &DocumentWindow::geometryChanged, context(), [this] { geometryChanged(); });
    QObject::connect(sub, &QMdiSubWindow::windowStateChanged, context(), [this] {
        if (visible() && sub_)
            state_ = sub_->isMaximized() ? maximised : sub_->isMinimized() ? minimised : 0;
    });
    QObject::connect(documents, &QMdiArea::subWindowActivated, context(),
                     [this](QMdiSubWindow* window) { activatedInArea(window); });
}

DocumentForm::~DocumentForm() {
    releaseOthers();
    retire();
}

Rect DocumentForm::bounds() const {
    const DocumentWindow* sub = sub_;
    if (!visible() || sub == nullptr || state_ != maximised)
        return bounds_;
    const QRect now = sub->geometry();
    return {Appearance::twips(now.x()), Appearance::twips(now.y()), Appearance::twips(now.width()),
            Appearance::twips(now.height())};
}

void DocumentForm::setBounds(const Rect& bounds) {
    bounds_ = {bounds.left, bounds.top, std::max(bounds.width, 0), std::max(bounds.height, 0)};
    applyBounds();
}

void DocumentForm::applyBounds() {
    DocumentWindow* sub = sub_;
    if (sub == nullptr || (visible() && state_ != 0))
        return;
    // Set before the geometry, whose events ask for it.
    given_ = pixelsOf(bounds_);
    sub->setGeometry(given_);
    // A window does not become smaller than its title bar.
    given_ = sub->geometry();
}

void DocumentForm::geometryChanged() {
    const DocumentWindow* sub = sub_;
    if (!visible() || state_ != 0 || sub == nullptr || sub->isMaximized() || sub->isMinimized())
        return;
    const QRect now = sub->geometry();
    bounds_ = {keepExact(bounds_.left, given_.x(), now.x()), keepExact(bounds_.top, given_.y(), now.y()),
               keepExact(bounds_.width, given_.width(), now.width()),
               keepExact(bounds_.height, given_.height(), now.height())};
    given_ = now;
}

QtForm::Extent DocumentForm::clientSize() const {
    const QWidget* content = area();
    if (visible() && content != nullptr && content->isVisible())
        return {Appearance::twips(content->width()), Appearance::twips(content->height())};
    const DocumentWindow* sub = sub_;
    const QMdiArea* documents = documents_;
    if (sub == nullptr || documents == nullptr)
        return {};
    // Not laid out yet: what the frame will leave.
    const QWidget* room = documents->viewport();
    if (state_ == maximised)
        return {Appearance::twips(room->width()), Appearance::twips(room->height())};
    const QSize outer = sub->size().shrunkBy(sub->frameMargins());
    return {Appearance::twips(std::max(outer.width(), 0)), Appearance::twips(std::max(outer.height(), 0))};
}

void DocumentForm::setWindowState(int state) {
    const int before = state_;
    state_ = state;
    if (visible() && before != state)
        applyState();
}

void DocumentForm::applyState() {
    if (!sub_)
        return;
    if (state_ == maximised) {
        sub_->showMaximized();
    } else if (state_ == minimised) {
        sub_->showMinimized();
    } else {
        sub_->showNormal();
        applyBounds();
    }
}

void DocumentForm::showWindow() {
    if (!documents_ || !sub_)
        return;
    activating_ = true;
    if (state_ == 0)
        sub_->show();
    else
        applyState();
    documents_->setActiveSubWindow(sub_);
    documents_->setProperty("lastInFront", QVariant::fromValue<QMdiSubWindow*>(sub_));
    activating_ = false;
}

void DocumentForm::hideWindow() {
    if (!sub_)
        return;
    sub_->hide();
    // Not from within its own events.
    QTimer::singleShot(0, sub_, [documents = QPointer<QMdiArea>(documents_), sub = QPointer<QMdiSubWindow>(sub_)] {
        if (documents && sub && documents->subWindowList().contains(sub))
            documents->removeSubWindow(sub);
    });
}

void DocumentForm::activateWindow() {
    if (!documents_ || !sub_)
        return;
    activating_ = true;
    if (sub_->isMinimized())
        sub_->showNormal();
    documents_->setActiveSubWindow(sub_);
    documents_->setProperty("lastInFront", QVariant::fromValue<QMdiSubWindow*>(sub_));
    activating_ = false;
}

void DocumentForm::activatedInArea(QMdiSubWindow* window) {
    if (window == nullptr || !documents_)
        return;
    const QMdiSubWindow* before = lastInFront(documents_);
    if (window != sub_ || window == before || activating_ || !visible())
        return;
    documents_->setProperty("lastInFront", QVariant::fromValue<QMdiSubWindow*>(sub_));
    guarded([this] { contract::fire(Activate); });
}

void DocumentForm::releaseOthers() {
    for (const auto& widget : kept_)
        if (widget)
            widget->setEnabled(true);
    kept_.clear();
}

void DocumentForm::standModal(bool modal) {
    if (!documents_ || !isModal())
        return;
    if (!modal) {
        releaseOthers();
        return;
    }
    const auto keep = [this](QWidget* widget) {
        if (widget == nullptr || !widget->isEnabled())
            return;
        widget->setEnabled(false);
        kept_.emplace_back(widget);
    };
    const auto others = documents_->subWindowList();
    for (QMdiSubWindow* other : others)
        if (other != sub_)
            keep(other);
    const auto* main = qobject_cast<QMainWindow*>(documents_->window());
    if (main == nullptr)
        return;
    keep(main->findChild<QMenuBar*>(QString(), Qt::FindDirectChildrenOnly));
    const auto bars = main->findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly);
    for (QToolBar* bar : bars)
        keep(bar);
}

} // namespace platform::qt
