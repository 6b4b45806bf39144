#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

namespace platform::qt {

/// When a tree tells of a focus that moved.
///
/// At once when the program or the mouse moved it. After a key, once no further key is waiting: what held-down keys
/// pile up while a listener works is told once, for the node on which they end. And again once the focus has rested.
class TreeFocusEvents : public QObject {
    Q_OBJECT
public:
    /// How long the focus stays where it is before it counts as resting.
    static constexpr int restMilliseconds = 150;

    TreeFocusEvents();

    std::function<void()> changed;       ///< the focused node changed
    std::function<void()> rested;        ///< the same, after the rest
    std::function<void()> columnChanged; ///< the focused column changed

    void nodeMoved();
    void columnMoved();

    /// Between the two, what moved waits. They nest.
    void hold() { ++held_; }
    void release(bool byKey);

    /// Tells at once what waits for further keys.
    void flush();
    /// flush(), and does not wait for the rest.
    void settle();
    /// Tells of a new content: both events at once, and nothing that waited.
    void raiseAll();
    void forget();

private:
    void wait();

    QTimer keys_;
    QTimer rest_;
    int held_ = 0;
    bool node_ = false;
    bool column_ = false;
    bool resting_ = false;
};

} // namespace platform::qt
