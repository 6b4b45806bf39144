#pragma once

#include "platform/qt/forms/QtForm.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace platform::qt {

/// The window of a document form.
class DocumentWindow : public QMdiSubWindow {
    Q_OBJECT
public:
    DocumentWindow();

    /// Title bar and frame, in pixels; nothing while maximised.
    QMargins frameMargins() const;

signals:
    void closePressed();
    void geometryChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

/// A form that stands in the host's document area.
class DocumentForm : public QtForm {
public:
    DocumentForm(std::string_view name, QMdiArea* documents);
    ~DocumentForm() override;

    /// The whole window's, title bar and frame included.
    contract::Rect bounds() const override;
    void setBounds(const contract::Rect& bounds) override;
    void setWindowState(int state) override;
    int windowState() const override { return state_; }

protected:
    Extent clientSize() const override;
    void showWindow() override;
    void hideWindow() override;
    void activateWindow() override;
    void standModal(bool modal) override;

private:
    void applyBounds();
    void applyState();
    /// Ends what standModal() did to the other widgets.
    void releaseOthers();
    void geometryChanged();
    void activatedInArea(QMdiSubWindow* window);

    QPointer<QMdiArea> documents_;
    QPointer<DocumentWindow> sub_;
    contract::Rect bounds_;
    QRect given_; ///< in pixels, what bounds_ became
    int state_ = 0;
    bool activating_ = false;
    std::vector<QPointer<QWidget>> kept_; ///< widgets that stand disabled behind this form
};

} // namespace platform::qt
