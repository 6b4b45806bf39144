#pragma once

#include <QWidget>

namespace platform::qt {

/// The area in which a form's controls stand. It hears the keys that no control took.
class FormArea : public QWidget {
    Q_OBJECT
public:
    explicit FormArea(QWidget* parent);

signals:
    void resized();
    void enterPressed();
    void escapePressed();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace platform::qt
