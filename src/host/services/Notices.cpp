#include "host/services/Notices.h"

#include <algorithm>

namespace host {

void Notices::add(const Notice& notice) {
    const auto same = [&](const Notice& each) { return each.brief == notice.brief; };
    if (std::any_of(all_.begin(), all_.end(), same))
        return;
    all_.push_back(notice);
    if (changed)
        changed();
}

void Notices::remove(const QString& brief) {
    if (std::erase_if(all_, [&](const Notice& each) { return each.brief == brief; }) > 0 && changed)
        changed();
}

} // namespace host
