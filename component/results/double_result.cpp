#include "component/results/double_result.h"

#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/repository.h"

MeroId MeroAtomarResult::getModelOfObject() const {
    MeroId modelId = MeroNoId;
    auto* const manager = MeroCoreModelingManager::GetGlobal();
    if (manager == nullptr || manager->enhanced().getModelOfInstance(objectId, modelId) != RepositoryOk) {
        displayErrorMessage("aearslt", __LINE__);
        return MeroNoId;
    }
    return modelId;
}

MeroDoubleResultItem* MeroDoubleResult::findItem(MeroPathView path) const {
    const auto hasPath = [path](const MeroDoubleResultItem& item) {
        return std::ranges::equal(item.getPath(), path);
    };
    if (index.empty()) {
        const auto found = std::ranges::find_if(items, [&](const auto& item) { return hasPath(*item); });
        return found != items.end() ? found->get() : nullptr;
    }
    const auto [first, last] = index.equal_range(hashOfPath(path));
    const auto found = std::find_if(first, last, [&](const auto& entry) { return hasPath(*entry.second); });
    return found != last ? found->second : nullptr;
}

MeroDoubleResultItem& MeroDoubleResult::addToItem(double value, MeroPathView path) {
    MeroDoubleResultItem* item = findItem(path);
    if (item == nullptr) {
        auto made = std::make_unique<MeroDoubleResultItem>(path, getPathKey(path), mode);
        item = made.get();
        const auto place =
            std::ranges::lower_bound(items, made->getKey(), std::less<>{},
                                     [](const auto& other) -> const SV::String& { return other->getKey(); });
        items.insert(place, std::move(made));
        if (items.size() == LinearLimit + 1) {
            for (const auto& each : items) {
                index.emplace(hashOfPath(each->getPath()), each.get());
            }
        } else if (items.size() > LinearLimit) {
            index.emplace(hashOfPath(path), item);
        }
    }
    item->add(value);
    return *item;
}

MeroDoubleResultItem* MeroDoubleResult::getNextItem() {
    if (cursor >= items.size()) {
        cursor = 0;
        return nullptr;
    }
    return items[cursor++].get();
}

double MeroDoubleResult::getTotal() const {
    double total = 0.0;
    for (const auto& item : items) {
        total += item->getValue();
    }
    return total;
}

bool MeroDoubleResult::setDivisorAll(int change) {
    if (change == DivisorKept) {
        return true;
    }
    if (mode != ResultModeMean || (change != DivisorRaised && change <= 0)) {
        return false;
    }
    for (const auto& item : items) {
        item->changeDivisor(change);
    }
    return true;
}

bool MeroDoubleResult::setDivisorItem(int change, MeroPathView path) {
    if (change == DivisorKept) {
        return true;
    }
    MeroDoubleResultItem* const item = hasDivisor(mode) ? findItem(path) : nullptr;
    return item != nullptr && item->changeDivisor(change);
}
