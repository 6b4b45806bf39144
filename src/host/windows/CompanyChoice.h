#pragma once

#include <QComboBox>
#include <QDialog>
#include <QString>

#include <cstdint>
#include <vector>

namespace host {

/// Asks for the working company among those that the database has.
class CompanyChoice : public QDialog {
    Q_OBJECT
public:
    /// A company has no name of its own in the database: what a person knows it by are its distinte.
    struct Company {
        std::int64_t number = 0;
        QString distinte; ///< their descriptions; empty where it has none
    };

    /// companies: ascending. current: shown even where the database does not have it.
    CompanyChoice(const std::vector<Company>& companies, std::int64_t current, QWidget* parent);

    std::int64_t company() const;

private:
    QComboBox* list_;
};

} // namespace host
