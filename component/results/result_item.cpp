#include "component/results/result_item.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "component/host/basic_services.h"

SV::String getPathKey(MeroPathView path) {
    std::string key;
    for (const MeroId id : path) {
        char digits[16];
        const auto end = std::to_chars(digits, digits + sizeof digits, id).ptr;
        key.append(digits, end);
        key.push_back('@');
    }
    return SV::String(key);
}

std::size_t hashOfPath(MeroPathView path) {
    if (path.empty()) {
        return 0;
    }
    std::uint64_t hash = path.size();
    for (const MeroId id : path.first(path.size() - 1)) {
        hash = (hash ^ static_cast<std::uint32_t>(id)) * 0x9E3779B97F4A7C15ULL;
        hash ^= hash >> 32;
    }
    return hash + static_cast<std::uint32_t>(path.back());
}

MeroResultItem::MeroResultItem(MeroPathView itemPath, SV::String key) : pathKey(std::move(key)) {
    path.assign(itemPath);
}

bool MeroSharedDivisor::change(int change) {
    if (change == DivisorRaised) {
        ++raises;
        return true;
    }
    if (change <= 0) {
        return false;
    }
    count = change;
    raises = 0;
    ++settings;
    return true;
}

MeroDoubleResultItem::MeroDoubleResultItem(MeroPathView itemPath, SV::String key, int combinationMode,
                                           const MeroSharedDivisor* sharedDivisor)
    : MeroResultItem(itemPath, std::move(key)), mode(combinationMode), shared(sharedDivisor) {
    if (shared != nullptr) {
        raisesSeen = shared->raises;
        settingsSeen = shared->settings;
    }
}

void MeroDoubleResultItem::add(double newValue) {
    const bool adds = mode == ResultModeSum || hasDivisor(mode);
    value = adds ? value + newValue : newValue;
}

bool MeroDoubleResultItem::addForPath(double newValue, MeroPathView otherPath) {
    if (!std::ranges::equal(getPath(), otherPath)) {
        return false;
    }
    add(newValue);
    return true;
}

double MeroDoubleResultItem::getValue() const {
    const std::int32_t count = hasDivisor(mode) ? getDivisor() : 0;
    return count >= 1 ? value / count : value;
}

std::int32_t MeroDoubleResultItem::getDivisor() const {
    if (shared == nullptr) {
        return divisor;
    }
    return settingsSeen == shared->settings ? divisor + shared->raises - raisesSeen
                                            : shared->count + shared->raises;
}

void MeroDoubleResultItem::catchUp() {
    divisor = getDivisor();
    if (shared != nullptr) {
        raisesSeen = shared->raises;
        settingsSeen = shared->settings;
    }
}

bool MeroDoubleResultItem::setDivisor(std::int32_t count) {
    if (count < 0) {
        displayErrorMessage("aearslt", __LINE__);
        return false;
    }
    if (!hasDivisor(mode)) {
        return false;
    }
    catchUp();
    divisor = count;
    return true;
}

bool MeroDoubleResultItem::changeDivisor(int change) {
    catchUp();
    if (change == DivisorRaised) {
        ++divisor;
        return true;
    }
    if (change > 0) {
        divisor = change;
        return true;
    }
    return false;
}
