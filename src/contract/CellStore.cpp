#include "contract/CellStore.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace contract {

namespace {

constexpr std::size_t firstBlock = 64;

} // namespace

void CellStore::Free::operator()(char* block) const {
    std::free(block); // NOLINT(cppcoreguidelines-no-malloc)
}

void CellStore::grow(std::size_t needed) {
    moveTo(std::max({needed, capacity_ + capacity_ / 2, firstBlock}));
}

// A block is enlarged where it stands when that is possible: for the large ones the system moves pages, not bytes.
void CellStore::moveTo(std::size_t capacity) {
    const bool first = !heap_;
    char* block = static_cast<char*>(std::realloc(heap_.get(), capacity)); // NOLINT(cppcoreguidelines-no-malloc)
    if (!block)
        throw std::bad_alloc();
    (void)heap_.release();
    heap_.reset(block);
    capacity_ = capacity;
    if (first)
        std::memcpy(block, inside_, bytes_);
}

} // namespace contract
