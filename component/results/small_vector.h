#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

/// Sequence that keeps its first few entries in place, so that small ones cost no allocation and lie beside
/// their owner. Entries move when it grows. It can't be copied or moved.
template <class T, std::size_t InPlace>
class MeroSmallVector {
public:
    using iterator = T*;
    using const_iterator = const T*;

    MeroSmallVector() = default;
    MeroSmallVector(const MeroSmallVector&) = delete;
    MeroSmallVector& operator=(const MeroSmallVector&) = delete;
    ~MeroSmallVector() {
        clear();
        releaseHeap();
    }

    void push_back(T entry) {
        if (count == capacity) {
            grow();
        }
        std::construct_at(entries() + count, std::move(entry));
        ++count;
    }
    /// Takes the place of what was there.
    void assign(std::span<const T> others) {
        clear();
        for (const T& other : others) {
            push_back(other);
        }
    }
    void pop_back() {
        --count;
        std::destroy_at(entries() + count);
    }
    /// Keeps the memory.
    void clear() {
        std::destroy_n(entries(), count);
        count = 0;
    }

    [[nodiscard]] T& operator[](std::size_t index) { return entries()[index]; }
    [[nodiscard]] const T& operator[](std::size_t index) const { return entries()[index]; }
    [[nodiscard]] T& back() { return entries()[count - 1]; }
    [[nodiscard]] T* data() { return entries(); }
    [[nodiscard]] const T* data() const { return entries(); }
    [[nodiscard]] bool empty() const { return count == 0; }
    [[nodiscard]] std::size_t size() const { return count; }
    [[nodiscard]] iterator begin() { return entries(); }
    [[nodiscard]] iterator end() { return entries() + count; }
    [[nodiscard]] const_iterator begin() const { return entries(); }
    [[nodiscard]] const_iterator end() const { return entries() + count; }

private:
    [[nodiscard]] T* entries() { return heap != nullptr ? heap : reinterpret_cast<T*>(room); }
    [[nodiscard]] const T* entries() const {
        return heap != nullptr ? heap : reinterpret_cast<const T*>(room);
    }

    void grow() {
        const std::uint32_t wanted = capacity * 2;
        T* const larger = std::allocator<T>().allocate(wanted);
        std::uninitialized_move_n(entries(), count, larger);
        std::destroy_n(entries(), count);
        releaseHeap();
        heap = larger;
        capacity = wanted;
    }
    void releaseHeap() {
        if (heap != nullptr) {
            std::allocator<T>().deallocate(heap, capacity);
        }
    }

    T* heap = nullptr;  ///< null while the entries are in place
    std::uint32_t count = 0;
    std::uint32_t capacity = InPlace;
    alignas(T) std::byte room[InPlace * sizeof(T)];
};
