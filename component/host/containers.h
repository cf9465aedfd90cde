#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

/// Sorted set, contiguous in memory: look-ups are binary searches, appending in ascending order is cheap. For
/// large unsorted input use `insertAll`, which merges, rather than single insertions.
template <class T>
class ISortedSet {
public:
    using const_iterator = typename std::vector<T>::const_iterator;

    ISortedSet() = default;
    ISortedSet(std::initializer_list<T> values) : items(values) { restoreOrder(); }

    /// True if `value` wasn't there before.
    bool insert(const T& value) {
        if (items.empty() || items.back() < value) {
            items.push_back(value);
            return true;
        }
        const auto place = std::lower_bound(items.begin(), items.end(), value);
        if (*place == value) {
            return false;
        }
        items.insert(place, value);
        return true;
    }

    void insertAll(const ISortedSet& other) { insertRange(other.begin(), other.end()); }

    template <class Iterator>
    void insertRange(Iterator first, Iterator last) {
        items.insert(items.end(), first, last);
        restoreOrder();
    }

    /// True if `value` was there.
    bool erase(const T& value) {
        const auto place = std::lower_bound(items.begin(), items.end(), value);
        if (place == items.end() || !(*place == value)) {
            return false;
        }
        items.erase(place);
        return true;
    }

    [[nodiscard]] bool contains(const T& value) const {
        return std::binary_search(items.begin(), items.end(), value);
    }

    void clear() { items.clear(); }
    [[nodiscard]] bool empty() const { return items.empty(); }
    [[nodiscard]] std::size_t size() const { return items.size(); }
    [[nodiscard]] const T& operator[](std::size_t index) const { return items[index]; }
    [[nodiscard]] const_iterator begin() const { return items.begin(); }
    [[nodiscard]] const_iterator end() const { return items.end(); }

    friend bool operator==(const ISortedSet& left, const ISortedSet& right) = default;

private:
    void restoreOrder() {
        std::sort(items.begin(), items.end());
        items.erase(std::unique(items.begin(), items.end()), items.end());
    }

    std::vector<T> items;
};

/// Sequence in the order of appending, contiguous in memory.
template <class T>
class ISequence {
public:
    using const_iterator = typename std::vector<T>::const_iterator;

    ISequence() = default;
    ISequence(std::initializer_list<T> values) : items(values) {}

    void append(T value) { items.push_back(std::move(value)); }
    void clear() { items.clear(); }
    [[nodiscard]] bool empty() const { return items.empty(); }
    [[nodiscard]] std::size_t size() const { return items.size(); }
    [[nodiscard]] const T& operator[](std::size_t index) const { return items[index]; }
    [[nodiscard]] const_iterator begin() const { return items.begin(); }
    [[nodiscard]] const_iterator end() const { return items.end(); }

    friend bool operator==(const ISequence& left, const ISequence& right) = default;

private:
    std::vector<T> items;
};
