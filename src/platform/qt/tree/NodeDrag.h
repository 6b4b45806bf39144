#pragma once

#include "platform/qt/tree/TreeView.h"

#include <QLabel>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <optional>

namespace platform::qt {

/// Nodes of one tree that the user moves onto a node of another one: dragged with the mouse, or cut (Ctrl+X) there and
/// pasted (Ctrl+V) here. What is then to happen is the listener's.
///
/// The mouse that holds a row stays the first tree's until it is let go, so the whole drag is in its events: nothing
/// leaves the window, nothing else can take the node, and no loop of events runs inside another. While a node is held
/// over a closed branch that branch opens, at the upper and the lower edge the tree scrolls, and Esc, another button or
/// another window ends the drag. Belongs to the first tree's view.
class NodeDrag : public QObject {
    Q_OBJECT
public:
    static constexpr int openMilliseconds = 600;  ///< over a closed branch until it opens
    static constexpr int scrollMilliseconds = 80; ///< from row to row at an edge

    struct Drop {
        std::int64_t node; ///< key in the first tree
        std::int64_t onto; ///< key in the other one
        bool other;        ///< the other kind of move: Ctrl while it was dropped, Shift while it was pasted
    };

    /// Both must live as long as one another; they stand in one window.
    NodeDrag(TreeView& from, TreeView& onto);
    ~NodeDrag() override;

    std::function<void(const Drop&)> dropped;
    /// What a drop would do, and what was cut; empty when that is over.
    std::function<void(const QString&)> told;

    bool dragging() const { return dragged_.has_value(); }
    /// The node on which a drop would be taken now.
    std::optional<std::int64_t> target() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool sourceEvent(QEvent& event);
    bool keyWhileDragging(QEvent& event);
    bool keyInTree(const QObject* tree, QEvent& event);
    void begin(QPoint global);
    void moveTo(QPoint global, Qt::KeyboardModifiers modifiers);
    void drop();
    void end();
    /// The node under the mouse that would take the dragged one; -1 for none.
    std::int32_t targetAt(QPoint global) const;
    /// Rows by which the mouse at an edge scrolls the other tree: -1, 0 or 1.
    int scrollStep() const;
    void scroll();
    void openHovered();
    void tellTarget();
    void cut();
    void paste(bool other);
    void say(const QString& text) const;

    TreeView& from_;
    QPointer<TreeView> onto_;
    std::optional<QPoint> held_; ///< where the mouse went down on a row, in the viewport
    std::optional<std::int64_t> dragged_;
    QPoint global_;
    Qt::KeyboardModifiers modifiers_;
    std::int32_t target_ = -1;
    QString name_; ///< of the dragged node
    QPointer<QLabel> label_;
    QTimer open_;
    QTimer scroll_;
};

} // namespace platform::qt
