#pragma once

#include "contract/Controls.h"
#include "platform/qt/forms/QtControl.h"

#include <QJsonObject>
#include <QWidget>

namespace platform::qt {

/// The bar that the user drags. It knows nothing of panes: it tells how far it is dragged, in pixels.
class SplitterBar : public QWidget {
    Q_OBJECT
public:
    explicit SplitterBar(QWidget* parent);

    /// The colour is the light theme's; the dark one keeps to its own lines.
    void setLook(bool sideBySide, bool locked, contract::Color color);

signals:
    void dragBegun();
    /// Pixels from where the drag began, along the bar's way.
    void dragged(int distance);
    void dragEnded(int distance);
    /// One step of the keyboard: pixels, or as far as it goes.
    void stepped(int distance);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int along(const QMouseEvent& event) const;

    bool sideBySide_ = false;
    bool locked_ = false;
    QColor color_;
    bool dragging_ = false;
    int pressedAt_ = 0;
};

class SplitterControl : public QtControl<contract::Splitter> {
public:
    SplitterControl(std::string_view name, QWidget* parent);

    void setUp(const Settings& settings) override;
    const Settings& settings() const override { return settings_; }

    /// Of both panes; the bar's widget stands where setBar() says.
    void setBounds(const contract::Rect& bounds) override;
    void setBar(const contract::Rect& bar) override;

    double share() const override { return share_; }
    void setShare(double percent) override;

    QJsonObject read() const override;

private:
    SplitterControl(std::string_view name, SplitterBar* bar);
    /// What both panes share, in twips.
    contract::Twips room() const;
    void moveFirstPaneTo(double twips);
    void showDrag(int distance);
    void placeBar();

    SplitterBar* handle_; ///< the control's widget; alive while widget_ is
    Settings settings_;
    contract::Rect bar_;
    double share_ = 50.0;
    double firstAtDrag_ = 0.0;
    QObject context_;
};

} // namespace platform::qt
