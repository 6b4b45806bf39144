#include "concurrent/Journal.h"

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

} // namespace concurrent
