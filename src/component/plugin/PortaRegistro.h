#pragma once

#include "contract/Cinterface.h"
#include "contract/MoveRegistry.h"

namespace qz {

/// The registry of moves as the class offers it to its host, over the class's own connection and context.
class PortaRegistro : public contract::MoveRegistry {
public:
    bool KeepsRegistry() const override { return tiene_; }
    void KeepsRegistry(bool value) override {
        tiene_ = value;
        registroCambiato();
    }

    std::vector<contract::Operation> Operations(const contract::OperationFilter& filter) override;
    std::vector<contract::OperationRow> OperationRows(std::int64_t operation) override;
    contract::Undoing PreviewUndo(std::int64_t operation) override;
    contract::Undoing Undo(std::int64_t operation) override;
    std::string ColumnCaption(std::string_view column) const override;

protected:
    virtual contract::Cinterface& contesto() = 0;
    /// Whether the registry is kept has changed.
    virtual void registroCambiato() = 0;

private:
    bool tiene_ = false;
};

} // namespace qz
