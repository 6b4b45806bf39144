#pragma once

#include <QLabel>
#include <QPointer>

namespace platform::qt {

/// A sentence that stands at a field and says what is wrong with it: at its side where the window has the room, else
/// below or above it. It takes no room of the form and no press of the mouse, and goes where its field goes.
class FieldNote : public QLabel {
    Q_OBJECT
public:
    /// For a field that has its window already.
    explicit FieldNote(QWidget* field);

    /// Empty hides it.
    void say(const QString& sentence);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watch();
    void place();

    QPointer<QWidget> field_;
};

} // namespace platform::qt
