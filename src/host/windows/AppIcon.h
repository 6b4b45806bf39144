#pragma once

#include <QIcon>

namespace host {

/// The program's icon, painted: a small hierarchy with a branch on its way to the other side.
QIcon applicationIcon();

} // namespace host
