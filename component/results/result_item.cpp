#include "component/results/result_item.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

#include "component/host/basic_services.h"

namespace {

/// An identifier of a path key.
class KeyPart {
public:
    explicit KeyPart(MeroId id) {
        char* const end = std::to_chars(text, text + sizeof text, id).ptr;
        *end = '@';
        size = static_cast<std::size_t>(end - text) + 1;
    }
    [[nodiscard]] std::string_view view() const { return {text, size}; }

private:
    char text[16];
    std::size_t size;
};

std::size_t lengthOfPathKey(MeroPathView path) {
    std::size_t length = 0;
    for (const MeroId id : path) {
        length += KeyPart(id).view().size();
    }
    return length;
}

}  // namespace

SV::String getPathKey(MeroPathView path) {
    std::string key;
    for (const MeroId id : path) {
        key += KeyPart(id).view();
    }
    return SV::String(key);
}

bool isBeforeAsPathKey(MeroPathView left, MeroPathView right) {
    const std::size_t lengthOfLeft = lengthOfPathKey(left);
    const std::size_t lengthOfRight = lengthOfPathKey(right);
    if (lengthOfLeft != lengthOfRight) {
        return lengthOfLeft < lengthOfRight;
    }
    const auto [ofLeft, ofRight] = std::ranges::mismatch(left, right);
    return ofLeft != left.end() && KeyPart(*ofLeft).view() < KeyPart(*ofRight).view();
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

MeroDoubleResultItem::MeroDoubleResultItem(MeroPathView itemPath, int combinationMode,
                                           const MeroSharedDivisor* sharedDivisor)
    : MeroResultItem(itemPath), mode(combinationMode), shared(sharedDivisor) {
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
