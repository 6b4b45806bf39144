#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <utility>

namespace contract {

/// A growing array of plain values of one size, with room for a few inside the object: most results are one row or
/// none, and a result of 23 columns must not take 23 allocations.
class CellStore {
public:
    CellStore() {} // NOLINT(modernize-use-equals-default): the room inside is not cleared
    CellStore(const CellStore& other) { append(other.data(), other.bytes_); }
    CellStore(CellStore&& other) noexcept { take(other); }
    CellStore& operator=(const CellStore& other) {
        if (this != &other) {
            bytes_ = 0;
            append(other.data(), other.bytes_);
        }
        return *this;
    }
    CellStore& operator=(CellStore&& other) noexcept {
        if (this != &other)
            take(other);
        return *this;
    }
    ~CellStore() = default;

    /// Size in bytes of what it holds.
    std::size_t bytes() const { return bytes_; }
    /// Bytes taken outside the object.
    std::size_t allocated() const { return heap_ ? capacity_ : 0; }
    const char* data() const { return heap_ ? heap_.get() : inside_; }

    void append(const char* bytes, std::size_t count) {
        if (count == 0)
            return;
        if (count > capacity_ - bytes_)
            grow(bytes_ + count);
        std::memcpy(begin() + bytes_, bytes, count);
        bytes_ += count;
    }

    /// Where that many more bytes have room, behind those it holds; written() then takes in what was put there. Valid
    /// until the next change.
    char* room(std::size_t count) {
        if (count > capacity_ - bytes_)
            grow(bytes_ + count);
        return begin() + bytes_;
    }
    void written(std::size_t count) { bytes_ += count; }

    /// The same value that many times.
    template <class T> void fill(T value, std::size_t count) {
        char* into = room(count * sizeof value);
        for (std::size_t i = 0; i < count; ++i)
            std::memcpy(into + i * sizeof value, &value, sizeof value);
        written(count * sizeof value);
    }
    template <class T> void push(T value) {
        if (sizeof value > capacity_ - bytes_)
            grow(bytes_ + sizeof value);
        std::memcpy(begin() + bytes_, &value, sizeof value);
        bytes_ += sizeof value;
    }
    /// The value at a position that is counted in values of that type.
    template <class T> T at(std::size_t position) const {
        T value;
        std::memcpy(&value, data() + position * sizeof value, sizeof value);
        return value;
    }
    template <class T> void put(std::size_t position, T value) {
        std::memcpy(begin() + position * sizeof value, &value, sizeof value);
    }

    /// Room for that many bytes in all.
    void reserve(std::size_t bytes) {
        if (bytes > capacity_)
            moveTo(bytes);
    }

private:
    static constexpr std::size_t insideBytes = 16;

    struct Free {
        void operator()(char* block) const;
    };

    char* begin() { return heap_ ? heap_.get() : inside_; }
    void grow(std::size_t needed);
    void moveTo(std::size_t capacity);
    void take(CellStore& other) noexcept {
        heap_ = std::move(other.heap_);
        bytes_ = std::exchange(other.bytes_, 0);
        capacity_ = std::exchange(other.capacity_, insideBytes);
        if (!heap_)
            std::memcpy(inside_, other.inside_, bytes_);
    }

    std::unique_ptr<char[], Free> heap_;
    std::size_t bytes_ = 0;
    std::size_t capacity_ = insideBytes;
    char inside_[insideBytes];
};

} // namespace contract
