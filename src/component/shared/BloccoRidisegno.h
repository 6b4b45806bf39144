#pragma once

#include "contract/Form.h"

#include <exception>

namespace qz {

/// Locks a form against redrawing until it is told to unlock it, or ends; locks nest. However a clearing ends, the form
/// is drawn again.
class BloccoRidisegno {
public:
    explicit BloccoRidisegno(contract::Form& form) : form_(form) {}
    BloccoRidisegno(const BloccoRidisegno&) = delete;
    BloccoRidisegno& operator=(const BloccoRidisegno&) = delete;
    ~BloccoRidisegno() {
        try {
            sblocca();
        } catch (const std::exception&) {
            bloccata_ = false; // what brought us here is the error to report
        }
    }

    void blocca() {
        form_.lockUpdate(true);
        bloccata_ = true;
    }
    /// Does nothing while the form is not locked.
    void sblocca() {
        if (!bloccata_)
            return;
        form_.lockUpdate(false);
        bloccata_ = false;
    }

private:
    contract::Form& form_;
    bool bloccata_ = false;
};

} // namespace qz
