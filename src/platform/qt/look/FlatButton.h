#pragma once

#include "platform/qt/look/Glyphs.h"

#include <QPushButton>

namespace platform::qt {

/// A button drawn flat: picture and caption, the caption cut with an ellipsis where it does not fit, the picture alone
/// where not even that fits. Without a caption it is a tool button, whose frame shows under the mouse or the keyboard.
class FlatButton : public QPushButton {
    Q_OBJECT
public:
    explicit FlatButton(QWidget* parent);

    void setGlyph(Glyph glyph);
    void setPrimary(bool primary);
    /// A chevron after the caption says that a list opens.
    void setOpensList(bool opens);

    /// What a tool tip shows: the text that was set, or a caption that was cut off, and the keys that press the button.
    QString hint() const;

protected:
    bool event(QEvent* event) override;
    /// Enter presses the button that has the keyboard, whatever the form's default is.
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Content;
    Content content() const;
    void paintPlate(QPainter& painter) const;

    Glyph glyph_ = Glyph::none;
    bool primary_ = false;
    bool opensList_ = false;
};

} // namespace platform::qt
