#pragma once

#include "contract/Controls.h"
#include "platform/qt/forms/QtControl.h"
#include "platform/qt/tree/TypeListView.h"

#include <optional>
#include <string_view>

namespace platform::qt {

/// The list of the distinta types.
class TypeListControl : public QtControl<contract::TypeList> {
public:
    TypeListControl(std::string_view name, QWidget* parent);
    ~TypeListControl() override;

    void clear() override;
    void add(const contract::TypeEntry& entry) override;
    std::size_t count() const override;
    contract::TypeEntry entry(std::size_t position) const override;
    contract::TypeEntry entry(std::string_view key) const override;
    void refresh() override;
    std::optional<contract::TypeEntry> selected() const override;
    void select(std::size_t position) override;

    QJsonObject read() const override;
    QString select(const QString& key) override;
    QString key(int code, Qt::KeyboardModifiers modifiers) override;
    void settle() override;

private:
    int rowAt(std::size_t position) const;

    TypeListView* view_; // belongs to its parent widget
};

} // namespace platform::qt
