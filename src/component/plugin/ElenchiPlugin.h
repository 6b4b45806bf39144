#pragma once

#include "contract/MoveLists.h"

namespace qz {

class FRMQZ_COPIADISTINTA;

/// The public class's lists of moves, over the form that it holds.
class ElenchiPlugin : public contract::MoveLists {
public:
    contract::MovePlan planList(const std::vector<contract::MoveLine>& lines, contract::Unnamed unnamed) override;
    contract::MovePlan moveList(const std::vector<contract::MoveLine>& lines, contract::Unnamed unnamed) override;
    contract::MovePlan planSelected(const contract::MoveManner& manner) override;
    contract::MovePlan moveSelected(const contract::MoveManner& manner) override;

protected:
    /// The main form; nothing before it is shown.
    virtual FRMQZ_COPIADISTINTA* form() const = 0;
};

} // namespace qz
