#pragma once

#include "contract/Host.h"
#include "host/services/HostContext.h"
#include "host/windows/HostWindow.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

#include <optional>

namespace host {

/// A list to choose a code from, with a search over all its columns.
class LookupWindow : public HostWindow {
    Q_OBJECT
public:
    /// Reads the rows and shows them; the code chosen (the first column's), nothing when the list was left. Throws what
    /// the connection throws.
    static std::optional<std::int64_t> choose(HostContext& context, const contract::LookupRequest& request,
                                              contract::Connection& connection);

    LookupWindow(const contract::LookupRequest& request, const contract::Snapshot& rows, QWidget* parent);

    /// Picks the row of that code and confirms; the reason of a refusal.
    QString pick(const QString& code);
    std::optional<std::int64_t> chosen() const { return chosen_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fill(const contract::Snapshot& rows, std::size_t columns);
    void search(const QString& text);
    void confirm();

    QLineEdit* search_;
    QTableWidget* list_;
    QPushButton* accept_;
    std::optional<std::int64_t> chosen_;
    QString typed_; ///< letters typed in the list, one soon after the other
    QElapsedTimer sinceTyped_;
};

} // namespace host
