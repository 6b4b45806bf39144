#include "concurrent/Journal.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <new>
#include <stdexcept>

#include <sys/mman.h>

namespace concurrent {

Journal::Journal() {
    void* memory = ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::runtime_error("no shared memory");
    shared_ = new (memory) Shared{};
}

Journal::~Journal() {
    ::munmap(shared_, sizeof(Shared));
}

Entry& Journal::next() {
    const auto place = shared_->size.fetch_add(1);
    if (place >= capacity)
        throw std::runtime_error("the journal is full");
    return shared_->entries[place];
}

std::size_t Journal::size() const {
    return shared_->size.load();
}

void Journal::tell(int user, bool error, std::string_view text) {
    const auto place = shared_->toldCount.fetch_add(1);
    if (place >= mostTold)
        return;
    auto& told = shared_->told[place];
    told.error = error;
    told.user = user;
    told.transactions = size();
    const auto length = std::min(text.size(), sizeof told.text - 1);
    std::memcpy(told.text, text.data(), length);
    told.written = true;
}

std::size_t Journal::toldCount() const {
    return std::min(shared_->toldCount.load(), mostTold);
}

std::string Journal::toldAround(std::size_t transaction) const {
    constexpr std::size_t nearby = 4;
    std::string lines;
    for (std::size_t i = 0; i < toldCount(); ++i) {
        const auto& told = shared_->told[i];
        if (!told.written || told.transactions + nearby < transaction || told.transactions > transaction + nearby)
            continue;
        lines += "user " + std::to_string(told.user) + " was told after " + std::to_string(told.transactions) +
                 (told.error ? " transactions, in an error display: " : " transactions: ") + told.text + "\n";
    }
    return lines;
}

std::string Journal::errorsTold() const {
    std::map<std::string, int> counts;
    for (std::size_t i = 0; i < toldCount(); ++i)
        if (shared_->told[i].written && shared_->told[i].error)
            ++counts[shared_->told[i].text];
    std::string lines;
    for (const auto& [text, count] : counts)
        lines += std::to_string(count) + " times: " + text + "\n";
    return lines;
}

} // namespace concurrent
