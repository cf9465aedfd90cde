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
    std::size_t hash = path.size();
    for (const MeroId id : path) {
        hash = (hash ^ static_cast<std::uint32_t>(id)) * 0x9E3779B97F4A7C15ULL;
    }
    return hash;
}

MeroResultItem::MeroResultItem(MeroPathView itemPath, SV::String key)
    : path(itemPath.begin(), itemPath.end()), pathKey(std::move(key)) {}

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
    return hasDivisor(mode) && divisor >= 1 ? value / divisor : value;
}

bool MeroDoubleResultItem::setDivisor(std::int32_t count) {
    if (count < 0) {
        displayErrorMessage("aearslt", __LINE__);
        return false;
    }
    if (!hasDivisor(mode)) {
        return false;
    }
    divisor = count;
    return true;
}

bool MeroDoubleResultItem::changeDivisor(int change) {
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
