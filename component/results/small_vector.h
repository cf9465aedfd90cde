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
    [[nodiscard]] bool isInPlace() const { return capacity == InPlace; }
    [[nodiscard]] T* entries() { return isInPlace() ? reinterpret_cast<T*>(room) : heap; }
    [[nodiscard]] const T* entries() const { return isInPlace() ? reinterpret_cast<const T*>(room) : heap; }

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
        if (!isInPlace()) {
            std::allocator<T>().deallocate(heap, capacity);
        }
    }

    std::uint32_t count = 0;
    std::uint32_t capacity = InPlace;
    union {
        T* heap = nullptr;  ///< where the entries are, once there are more than find room
        alignas(T) std::byte room[InPlace * sizeof(T)];
    };
};
