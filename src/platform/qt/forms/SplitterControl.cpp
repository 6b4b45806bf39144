#include "platform/qt/forms/SplitterControl.h"

#include "platform/qt/forms/Guarded.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace platform::qt {

namespace {

constexpr int keyStep = 10;
constexpr int wholeWay = 100000;
constexpr double percent = 100.0;

QAccessibleInterface* describeBar(const QString& className, QObject* object) {
    if (className == QLatin1String("platform::qt::SplitterBar"))
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Splitter);
    return nullptr;
}

} // namespace

SplitterBar::SplitterBar(QWidget* parent) : QWidget(parent) {
    static const bool installed = [] {
        QAccessible::installFactory(describeBar);
        return true;
    }();
    static_cast<void>(installed);
    setAttribute(Qt::WA_Hover);
    setLook(false, false, 0);
}

void SplitterBar::setLook(bool sideBySide, bool locked, contract::Color color) {
    sideBySide_ = sideBySide;
    locked_ = locked;
    color_ = QColor(static_cast<int>(color & 0xFFU), static_cast<int>(color >> 8U & 0xFFU),
                    static_cast<int>(color >> 16U & 0xFFU));
    setFocusPolicy(locked ? Qt::NoFocus : Qt::TabFocus);
    setCursor(locked ? Qt::ArrowCursor : sideBySide ? Qt::SplitHCursor : Qt::SplitVCursor);
    update();
}

int SplitterBar::along(const QMouseEvent& event) const {
    const QPoint point = event.globalPosition().toPoint();
    return sideBySide_ ? point.x() : point.y();
}

void SplitterBar::mousePressEvent(QMouseEvent* event) {
    if (locked_ || event->button() != Qt::LeftButton)
        return;
    dragging_ = true;
    pressedAt_ = along(*event);
    update();
    emit dragBegun();
}

void SplitterBar::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_)
        emit dragged(along(*event) - pressedAt_);
}

void SplitterBar::mouseReleaseEvent(QMouseEvent* event) {
    if (!dragging_ || event->button() != Qt::LeftButton)
        return;
    dragging_ = false;
    update();
    emit dragEnded(along(*event) - pressedAt_);
}

void SplitterBar::keyPressEvent(QKeyEvent* event) {
    const int back = sideBySide_ ? Qt::Key_Left : Qt::Key_Up;
    const int ahead = sideBySide_ ? Qt::Key_Right : Qt::Key_Down;
    const int key = event->key();
    if (!locked_ && (key == back || key == ahead))
        emit stepped(key == back ? -keyStep : keyStep);
    else if (!locked_ && (key == Qt::Key_Home || key == Qt::Key_End))
        emit stepped(key == Qt::Key_Home ? -wholeWay : wholeWay);
    else
        QWidget::keyPressEvent(event);
}

void SplitterBar::paintEvent(QPaintEvent*) {
    const ThemeColors& c = Appearance::instance().colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool light = Appearance::instance().theme() == ThemeKind::light;
    const bool lively = !locked_ && isEnabled() && (underMouse() || dragging_ || hasFocus());
    if (lively)
        painter.fillRect(rect(), hasFocus() ? c.focusRing : light && color_ != Qt::black ? color_ : c.line);
    const QPointF center = QRectF(rect()).center();
    const double half = 12.0;
    painter.setPen(QPen(lively && hasFocus() ? c.surface : c.lineStrong, 2.0, Qt::SolidLine, Qt::RoundCap));
    if (sideBySide_)
        painter.drawLine(center - QPointF(0, half), center + QPointF(0, half));
    else
        painter.drawLine(center - QPointF(half, 0), center + QPointF(half, 0));
}

SplitterControl::SplitterControl(std::string_view name, QWidget* parent)
    : SplitterControl(name, new SplitterBar(parent)) {
}

SplitterControl::SplitterControl(std::string_view name, SplitterBar* bar) : QtControl(name, bar), handle_(bar) {
    QObject::connect(handle_, &SplitterBar::dragBegun, &context_, [this] { firstAtDrag_ = room() * share_ / percent; });
    QObject::connect(handle_, &SplitterBar::dragged, &context_, [this](int distance) {
        if (settings_.liveDrag)
            moveFirstPaneTo(firstAtDrag_ + Appearance::twips(distance));
        else
            showDrag(distance);
    });
    QObject::connect(handle_, &SplitterBar::dragEnded, &context_, [this](int distance) {
        placeBar();
        moveFirstPaneTo(firstAtDrag_ + Appearance::twips(distance));
    });
    QObject::connect(handle_, &SplitterBar::stepped, &context_, [this](int distance) {
        moveFirstPaneTo(room() * share_ / percent + Appearance::twips(distance));
    });
}

void SplitterControl::setUp(const Settings& settings) {
    settings_ = settings;
    share_ = std::clamp<double>(settings.start, 0.0, percent);
    if (widget_)
        handle_->setLook(settings_.sideBySide, settings_.locked, settings_.barColor);
}

contract::Twips SplitterControl::room() const {
    const auto extent = settings_.sideBySide ? bounds_.width : bounds_.height;
    return std::max(extent - settings_.barSize, 0);
}

void SplitterControl::setBounds(const contract::Rect& bounds) {
    const double first = room() * share_ / percent;
    const bool hadRoom = room() > 0;
    const auto before = room();
    bounds_ = {bounds.left, bounds.top, std::max(bounds.width, 0), std::max(bounds.height, 0)};
    if (hadRoom && room() != before && room() > 0 && !settings_.keepShare)
        setShare(first * percent / room());
}

void SplitterControl::setBar(const contract::Rect& bar) {
    bar_ = {bar.left, bar.top, std::max(bar.width, 0), std::max(bar.height, 0)};
    placeBar();
}

void SplitterControl::placeBar() {
    const contract::Rect area = bounds_;
    QtControl::setBounds(bar_);
    bounds_ = area;
    if (widget_)
        handle_->raise();
}

void SplitterControl::setShare(double value) {
    share_ = std::clamp(value, 0.0, percent);
}

void SplitterControl::moveFirstPaneTo(double twips) {
    const double room = this->room();
    const double least = settings_.firstLimit;
    const double most = room - settings_.secondLimit;
    // Where the limits leave no way, the bar stays.
    if (room <= 0.0 || most < least)
        return;
    const double moved = std::clamp(twips, least, most) * percent / room;
    if (moved == share_)
        return;
    share_ = moved;
    guarded([this] { contract::fire(Move); });
}

void SplitterControl::showDrag(int distance) {
    const double most = std::max(room() - settings_.secondLimit, settings_.firstLimit);
    const double to = std::clamp<double>(firstAtDrag_ + Appearance::twips(distance), settings_.firstLimit, most);
    const int offset = Appearance::pixels(static_cast<contract::Twips>(to - firstAtDrag_));
    const int left = Appearance::pixels(bar_.left) + (settings_.sideBySide ? offset : 0);
    const int top = Appearance::pixels(bar_.top) + (settings_.sideBySide ? 0 : offset);
    handle_->move(left, top);
}

QJsonObject SplitterControl::read() const {
    return {{QStringLiteral("share"), share_}};
}

} // namespace platform::qt
