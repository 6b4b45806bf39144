#pragma once

#include "platform/qt/forms/QtForm.h"

#include <QDialog>

namespace platform::qt {

class ButtonControl;

/// The window of a dialog.
class DialogWindow : public QDialog {
    Q_OBJECT
public:
    explicit DialogWindow(QWidget* parent);

signals:
    void closePressed();
    void geometryChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void reject() override;
};

/// A form over the host's window. With a data-entry frame it gets the buttons CMD_SALVA and CMD_RIPRISTINA in a row
/// below its controls, and asks before it closes on changes.
class DialogForm : public QtForm {
public:
    DialogForm(std::string_view name, QWidget* mainWindow);
    ~DialogForm() override;

    contract::Rect bounds() const override { return bounds_; }
    void setBounds(const contract::Rect& bounds) override;

protected:
    Extent clientSize() const override;
    void showWindow() override;
    void hideWindow() override;
    void activateWindow() override;
    void standModal(bool modal) override;
    bool mayLeave() override;
    void dataFrameAdded(DataFrameControl& frame) override;

private:
    /// The main window's upper left corner on the screen.
    QPoint origin() const;
    void applyBounds();
    void geometryChanged();
    void layOut();
    std::unique_ptr<ButtonControl> dataEntryButton(const char* name, const char* caption, const char* tip);
    /// Whether the record was saved; a failure is shown.
    bool trySave();

    QPointer<QWidget> mainWindow_;
    QPointer<DialogWindow> dialog_;
    QPointer<QWidget> bar_; ///< the row of the data-entry buttons
    ButtonControl* save_ = nullptr;
    ButtonControl* restore_ = nullptr;
    ButtonControl* close_ = nullptr;
    DataFrameControl* frame_ = nullptr;
    contract::Rect bounds_;
    QRect given_; ///< in pixels, relative to the main window: what bounds_ became
};

} // namespace platform::qt
