#pragma once

#include "contract/Fields.h"
#include "platform/qt/forms/QtControl.h"
#include "platform/qt/look/FlatButton.h"

#include <QJsonObject>

#include <functional>
#include <vector>

namespace platform::qt {

class DataFrameControl;

/// Buttons that go from record to record of a data-entry frame; those for a new record and for deleting show only where
/// they are allowed.
class GridNavigatorControl : public QtControl<contract::GridNavigator> {
public:
    GridNavigatorControl(std::string_view name, QWidget* parent);

    void bind(contract::DataFrame& frame) override;
    void setAllowInsert(bool allowed) override;
    void setAllowDelete(bool allowed) override;
    void setAskBeforeMove(bool ask) override { askBeforeMove_ = ask; }
    void release() override;

    QJsonObject read() const override;
    /// Presses the button of that caption ("primo", ...).
    QString chooseItem(const QString& key) override;

private:
    static constexpr std::size_t arrows = 4; ///< the first buttons
    FlatButton* addButton(QWidget* bar, Glyph glyph, const QString& caption, const std::function<void()>& action);
    /// Whether the record shown may be left; asks where there are changes.
    bool mayMove();
    void moveBy(int rows);
    void moveToEnd(bool last);
    void remove();
    void enableArrows();
    void attempt(const std::function<void()>& action);

    DataFrameControl* frame_ = nullptr;
    bool askBeforeMove_ = true;
    FlatButton* insert_ = nullptr;
    FlatButton* delete_ = nullptr;
    std::vector<FlatButton*> buttons_;
    QObject context_;
};

} // namespace platform::qt
