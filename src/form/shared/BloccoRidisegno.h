#pragma once

#include "plugin/contract/Form.h"

namespace qz {

/// Locks a form against redrawing while it lives; locks nest. However a clearing ends, the form is drawn again.
class BloccoRidisegno {
public:
    explicit BloccoRidisegno(contract::Form& form) : form_(form) { form_.lockUpdate(true); }
    BloccoRidisegno(const BloccoRidisegno&) = delete;
    BloccoRidisegno& operator=(const BloccoRidisegno&) = delete;
    ~BloccoRidisegno() { form_.lockUpdate(false); }

private:
    contract::Form& form_;
};

} // namespace qz
