#include "platform/shared/Waiting.h"

namespace platform::shared {

Waiting& Waiting::instance() {
    static Waiting waiting;
    return waiting;
}

void Waiting::boundCommands(bool bound) {
    bound_ = bound;
    commandBegins();
}

void Waiting::operationWaits() {
    if (!bound_)
        commandBegins();
}

Waiting::Time Waiting::left(Time longest) const {
    return spent_ < longest ? longest - spent_ : Time(0);
}

} // namespace platform::shared
