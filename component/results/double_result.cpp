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
        item = items
                   .emplace_back(std::make_unique<MeroDoubleResultItem>(
                       path, getPathKey(path), mode, mode == ResultModeMean ? &sharedDivisor : nullptr))
                   .get();
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

const std::vector<std::unique_ptr<MeroDoubleResultItem>>& MeroDoubleResult::getItems() const {
    if (ordered != items.size()) {
        const auto byKey = [](const auto& left, const auto& right) {
            return left->getKey() < right->getKey();
        };
        const auto behind = items.begin() + static_cast<std::ptrdiff_t>(ordered);
        std::sort(behind, items.end(), byKey);
        std::inplace_merge(items.begin(), behind, items.end(), byKey);
        ordered = items.size();
    }
    return items;
}

MeroDoubleResultItem* MeroDoubleResult::getNextItem() {
    if (cursor >= items.size()) {
        cursor = 0;
        return nullptr;
    }
    return getItems()[cursor++].get();
}

double MeroDoubleResult::getTotal() const {
    double total = 0.0;
    for (const auto& item : getItems()) {
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
    sharedDivisor.change(change);
    return true;
}

bool MeroDoubleResult::setDivisorItem(int change, MeroPathView path) {
    if (change == DivisorKept) {
        return true;
    }
    MeroDoubleResultItem* const item = hasDivisor(mode) ? findItem(path) : nullptr;
    return item != nullptr && item->changeDivisor(change);
}
