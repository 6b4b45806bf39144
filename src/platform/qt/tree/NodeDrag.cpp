#include "platform/qt/tree/NodeDrag.h"

#include "platform/qt/forms/Guarded.h"
#include "platform/qt/look/Appearance.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace platform::qt {

namespace {

constexpr QPoint labelOffset(16, 20); ///< from the mouse, clear of its pointer

bool isPaste(const QKeyEvent& key) {
    const auto modifiers = key.modifiers() & ~Qt::KeypadModifier;
    return key.key() == Qt::Key_V && modifiers.testFlag(Qt::ControlModifier) && !modifiers.testFlag(Qt::AltModifier);
}

} // namespace

NodeDrag::NodeDrag(TreeView& from, TreeView& onto) : QObject(&from), from_(from), onto_(&onto) {
    open_.setSingleShot(true);
    open_.setInterval(openMilliseconds);
    scroll_.setInterval(scrollMilliseconds);
    connect(&open_, &QTimer::timeout, this, &NodeDrag::openHovered);
    connect(&scroll_, &QTimer::timeout, this, &NodeDrag::scroll);
    from_.viewport()->installEventFilter(this);
    from_.installEventFilter(this);
    onto.installEventFilter(this);
}

NodeDrag::~NodeDrag() {
    told = {};
    end();
}

std::optional<std::int64_t> NodeDrag::target() const {
    const TreeView* onto = onto_.data();
    return onto != nullptr && target_ >= 0 ? std::optional(onto->nodes().key(target_)) : std::nullopt;
}

bool NodeDrag::eventFilter(QObject* watched, QEvent* event) {
    if (watched == from_.viewport())
        return sourceEvent(*event);
    if (dragging() && keyWhileDragging(*event))
        return true;
    if (!dragging() && (watched == &from_ || watched == onto_.data()))
        return keyInTree(watched, *event);
    return false;
}

bool NodeDrag::sourceEvent(QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress: {
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        const QPoint point = mouse.position().toPoint();
        held_.reset();
        if (dragging()) {
            end();
            return true;
        }
        if (mouse.button() == Qt::LeftButton && from_.takesHold(point))
            held_ = point;
        return false;
    }
    case QEvent::MouseMove: {
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        const QPoint point = mouse.position().toPoint();
        if (!dragging() && held_ && mouse.buttons().testFlag(Qt::LeftButton) &&
            (point - *held_).manhattanLength() >= QApplication::startDragDistance())
            begin(mouse.globalPosition().toPoint());
        if (!dragging())
            return false;
        moveTo(mouse.globalPosition().toPoint(), mouse.modifiers());
        return true;
    }
    case QEvent::MouseButtonRelease: {
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        held_.reset();
        if (!dragging())
            return false;
        moveTo(mouse.globalPosition().toPoint(), mouse.modifiers());
        drop();
        return true;
    }
    case QEvent::Hide:
        held_.reset();
        end();
        return false;
    default:
        return false;
    }
}

/// All keys are the drag's: Esc ends it, Ctrl chooses the kind of move, the others do nothing.
bool NodeDrag::keyWhileDragging(QEvent& event) {
    switch (event.type()) {
    case QEvent::ShortcutOverride:
        event.accept();
        return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto& key = static_cast<const QKeyEvent&>(event);
        if (key.key() == Qt::Key_Escape && event.type() == QEvent::KeyPress)
            end();
        else if (key.key() == Qt::Key_Control)
            moveTo(global_,
                   Qt::KeyboardModifiers(modifiers_).setFlag(Qt::ControlModifier, event.type() == QEvent::KeyPress));
        return true;
    }
    case QEvent::ApplicationDeactivate:
        end();
        return false;
    default:
        return false;
    }
}

bool NodeDrag::keyInTree(const QObject* tree, QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    if (key.key() == Qt::Key_Escape && from_.cutMark()) {
        from_.setCutMark(std::nullopt);
        say({});
        return true;
    }
    if (tree == &from_ && key.key() == Qt::Key_X && key.modifiers() == Qt::ControlModifier) {
        cut();
        return true;
    }
    if (tree == onto_.data() && isPaste(key)) {
        paste(key.modifiers().testFlag(Qt::ShiftModifier));
        return true;
    }
    return false;
}

void NodeDrag::begin(QPoint global) {
    // The press has moved the focus to the row that it took hold of, unless something kept it from that.
    const auto position = from_.positionAt(held_->y());
    held_.reset();
    if (position < 0 || !from_.rowFocused(position) || !onto_)
        return;
    dragged_ = from_.nodes().key(position);
    name_ = from_.nameOf(position);
    global_ = global;
    label_ = new QLabel(from_.window());
    label_->setObjectName(QStringLiteral("trascinato"));
    label_->setTextFormat(Qt::PlainText);
    label_->setAttribute(Qt::WA_TransparentForMouseEvents);
    label_->setFont(from_.font());
    label_->setAutoFillBackground(true);
    label_->setFrameShape(QFrame::Box);
    label_->setMargin(4);
    label_->show();
    QApplication::setOverrideCursor(Qt::ForbiddenCursor);
    qApp->installEventFilter(this);
}

std::int32_t NodeDrag::targetAt(QPoint global) const {
    const TreeView* onto = onto_.data();
    if (onto == nullptr || !onto->isVisible() || !onto->isEnabled())
        return -1;
    const QWidget* window = onto->window();
    if (window->childAt(window->mapFromGlobal(global)) != onto->viewport())
        return -1;
    const auto position = onto->positionAt(onto->viewport()->mapFromGlobal(global).y());
    return position >= 0 && onto->nodes().key(position) != dragged_ ? position : -1;
}

void NodeDrag::moveTo(QPoint global, Qt::KeyboardModifiers modifiers) {
    global_ = global;
    modifiers_ = modifiers;
    const auto target = targetAt(global);
    if (target != target_)
        target >= 0 ? open_.start() : open_.stop();
    target_ = target;
    if (TreeView* onto = onto_.data())
        onto->setDropMark(target);
    if (scrollStep() == 0)
        scroll_.stop();
    else if (!scroll_.isActive())
        scroll_.start();
    tellTarget();
}

void NodeDrag::tellTarget() {
    const bool other = modifiers_.testFlag(Qt::ControlModifier);
    Qt::CursorShape shape = Qt::ForbiddenCursor;
    if (target_ >= 0)
        shape = other ? Qt::DragCopyCursor : Qt::DragMoveCursor;
    QApplication::changeOverrideCursor(shape);
    QString text = QStringLiteral("%1 → su un nodo della destinazione").arg(name_);
    if (const TreeView* onto = onto_.data(); onto != nullptr && target_ >= 0)
        text = QStringLiteral("%1 → sotto %2%3")
                   .arg(name_, onto->nameOf(target_), other ? QStringLiteral(" con validità") : QString());
    if (QLabel* label = label_.data()) {
        label->setText(text);
        label->adjustSize();
        const QWidget* window = from_.window();
        const QPoint place = window->mapFromGlobal(global_) + labelOffset;
        label->move(std::clamp(place.x(), 0, std::max(0, window->width() - label->width())),
                    std::clamp(place.y(), 0, std::max(0, window->height() - label->height())));
        label->raise();
    }
    say(text);
}

int NodeDrag::scrollStep() const {
    const TreeView* onto = onto_.data();
    if (onto == nullptr)
        return 0;
    const QWidget* viewport = onto->viewport();
    const QPoint point = viewport->mapFromGlobal(global_);
    const int edge = Appearance::instance().rowHeight();
    if (point.x() < 0 || point.x() >= viewport->width() || point.y() < -edge || point.y() >= viewport->height() + edge)
        return 0;
    if (point.y() < edge)
        return -1;
    return point.y() >= viewport->height() - edge ? 1 : 0;
}

void NodeDrag::scroll() {
    const TreeView* onto = onto_.data();
    if (!dragging() || onto == nullptr)
        return scroll_.stop();
    auto* bar = onto->verticalScrollBar();
    bar->setValue(bar->value() + scrollStep());
    moveTo(global_, modifiers_);
}

void NodeDrag::openHovered() {
    TreeView* onto = onto_.data();
    if (!dragging() || onto == nullptr || target_ < 0)
        return;
    onto->openBranch(target_);
    moveTo(global_, modifiers_);
}

void NodeDrag::drop() {
    const auto onto = target();
    const auto node = dragged_;
    const bool other = modifiers_.testFlag(Qt::ControlModifier);
    end();
    if (node && onto && dropped)
        guarded([&] { dropped({*node, *onto, other}); });
}

void NodeDrag::end() {
    if (!dragging())
        return;
    dragged_.reset();
    target_ = -1;
    open_.stop();
    scroll_.stop();
    qApp->removeEventFilter(this);
    QApplication::restoreOverrideCursor();
    delete label_.data();
    if (TreeView* onto = onto_.data())
        onto->setDropMark(-1);
    say({});
}

void NodeDrag::cut() {
    const auto position = TreeModel::position(from_.currentIndex());
    if (position < 0)
        return;
    from_.setCutMark(from_.nodes().key(position));
    say(QStringLiteral("Tagliato: %1 – Ctrl+V su un nodo della destinazione lo sposta, Ctrl+Maiusc+V con validità, "
                       "Esc annulla")
            .arg(from_.nameOf(position)));
}

void NodeDrag::paste(bool other) {
    const auto node = from_.cutMark();
    if (!node)
        return say(QStringLiteral("Niente da incollare: prima si taglia un nodo dell'origine con Ctrl+X."));
    const TreeView* tree = onto_.data();
    const auto position = tree != nullptr ? TreeModel::position(tree->currentIndex()) : -1;
    if (position < 0)
        return;
    const auto onto = tree->nodes().key(position);
    if (onto == *node)
        return say(QStringLiteral("Un nodo non si sposta sotto se stesso."));
    if (dropped)
        guarded([&] { dropped({*node, onto, other}); });
}

void NodeDrag::say(const QString& text) const {
    if (told)
        guarded([&] { told(text); });
}

} // namespace platform::qt
