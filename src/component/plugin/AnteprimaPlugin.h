#pragma once

#include "contract/MovePreview.h"

namespace qz {

class FRMQZ_COPIADISTINTA;

/// The public class's preview of moves, over the form that it holds.
class AnteprimaPlugin : public contract::MovePreview {
public:
    contract::Date proposedEnd() const override;
    contract::MovePlan plan(const contract::MoveManner& manner) override;
    void move(const contract::MoveManner& manner) override;
    bool show(std::int64_t node) override;

protected:
    /// The main form; nothing before it is shown.
    virtual FRMQZ_COPIADISTINTA* form() const = 0;

private:
    FRMQZ_COPIADISTINTA& formAperta() const;
};

} // namespace qz
