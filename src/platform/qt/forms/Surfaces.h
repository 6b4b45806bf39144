#pragma once

#include "contract/Controls.h"
#include "platform/qt/forms/CaptionedControl.h"

#include <QGroupBox>
#include <QLabel>
#include <QWidget>

namespace platform::qt {

/// What frames share: they only hold other controls.
template <class Interface> class FrameBase : public CaptionedControl<Interface> {
public:
    using CaptionedControl<Interface>::CaptionedControl;

    contract::Twips contentTop() const override { return contentTop_; }
    void setContentTop(contract::Twips top) override { contentTop_ = top; }

private:
    contract::Twips contentTop_ = 0;
};

/// A bare pane, told to assistive programs as the group of what it holds.
class Pane : public QWidget {
    Q_OBJECT
public:
    explicit Pane(QWidget* parent);
};

/// Its caption is not drawn: it names the group.
class FrameControl : public FrameBase<contract::Frame> {
public:
    FrameControl(std::string_view name, QWidget* parent);
};

/// A pane with a thin line around it and a caption in its upper left corner.
class CaptionedBox : public QGroupBox {
    Q_OBJECT
public:
    explicit CaptionedBox(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

class GroupBoxControl : public FrameBase<contract::GroupBox> {
public:
    GroupBoxControl(std::string_view name, QWidget* parent);

protected:
    void showCaption(const QString& caption) override;

private:
    GroupBoxControl(std::string_view name, CaptionedBox* box);

    CaptionedBox* box_; ///< the control's widget; alive while widget_ is
};

class BackdropControl : public QtControl<contract::Backdrop> {
public:
    BackdropControl(std::string_view name, QWidget* parent);
    QJsonObject read() const override { return {}; }

private:
    BackdropControl(std::string_view name, QWidget* surface, bool filled);
};

/// One line of text that ends in an ellipsis where it does not fit, and can be read whole by resting the mouse on it.
class ElidedLabel : public QLabel {
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget* parent);
    void setHeading(bool heading);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool fits() const;
    QFont shownFont() const;
    int flags() const;
    bool heading_ = false;
};

class LabelControl : public CaptionedControl<contract::Label> {
public:
    LabelControl(std::string_view name, QWidget* parent);

    void setHeading(bool heading) override;

    /// The field that the label names: its mnemonic leads there, and it is read aloud with the label's caption.
    void setField(QWidget* field);
    bool hasField() const { return field_ != nullptr; }

protected:
    void showCaption(const QString& caption) override;

private:
    LabelControl(std::string_view name, ElidedLabel* label);
    void nameField();

    ElidedLabel* label_; ///< the control's widget; alive while widget_ is
    QPointer<QWidget> field_;
    QString givenName_; ///< the name that the label last gave its field
};

} // namespace platform::qt
