#pragma once

#include "contract/MovePreview.h"

#include <QJsonObject>

namespace host {

/// A node of a plan: `id`, `account`, `name`, `outcome`, `reason`, `before`, `after`, `copy`, and `line` where it is of
/// a list.
QJsonObject planRowJson(const contract::MoveRow& row);
/// `refused`, `rows` and `counts` of a plan.
QJsonObject planJson(const contract::MovePlan& plan);

} // namespace host
