#pragma once

#include "platform/qt/forms/Session.h"

#include <QString>

#include <functional>

namespace host {

/// Lets the user move a node of the form's origin by dragging it onto one of the destination, or by cutting and pasting
/// it: both nodes get the focus as the keyboard would give it, then the button of the move is clicked. The form itself
/// does what it does for its button, question and all.
///
/// hint: takes what stands in the status line meanwhile; empty when it is over. A form without the two trees is left as
/// it is. The form must not change hands: what is made here lives as long as its origin tree.
void letNodesBeDragged(platform::qt::FormWindow& form, std::function<void(const QString&)> hint);

} // namespace host
