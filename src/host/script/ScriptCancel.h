#pragma once

#include "host/script/ScriptRequest.h"

namespace host {

/// Presses "Annulla" for a script: {"do":"cancel","after":N} arms it for the next line that does some work, which is
/// given up once it has run N statements, at the first moment where it can be. What only prepares or reads does no
/// work.
class ScriptCancel {
public:
    static void request(const ScriptRequest& request);
    /// Around each line of the script.
    static void lineBegins(const ScriptRequest& request);
    static void lineEnds();
};

} // namespace host
