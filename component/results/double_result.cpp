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
    const auto hasPath = [path](const auto& item) { return std::ranges::equal(item->getPath(), path); };
    if (index.empty()) {
        const auto found = std::ranges::find_if(items, hasPath);
        return found != items.end() ? found->get() : nullptr;
    }
    const std::size_t position =
        index.find(hashOfPath(path), [&](std::size_t candidate) { return hasPath(items[candidate]); });
    return position != MeroPositionIndex::Missing ? items[position].get() : nullptr;
}

MeroDoubleResultItem& MeroDoubleResult::addToItem(double value, MeroPathView path) {
    MeroDoubleResultItem* item = findItem(path);
    if (item == nullptr) {
        item = items
                   .emplace_back(std::make_unique<MeroDoubleResultItem>(
                       path, getPathKey(path), mode, mode == ResultModeMean ? &sharedDivisor : nullptr))
                   .get();
        indexNewItem();
    }
    item->add(value);
    return *item;
}

void MeroDoubleResult::indexNewItem() {
    if (items.size() <= LinearLimit) {
        return;
    }
    const std::size_t firstNew = index.empty() ? 0 : items.size() - 1;
    for (std::size_t position = firstNew; position < items.size(); ++position) {
        index.add(hashOfPath(items[position]->getPath()), position);
    }
}

const std::vector<MeroDoubleResultItem*>& MeroDoubleResult::getItems() const {
    if (ordered.size() != items.size()) {
        const auto byKey = [](const auto* left, const auto* right) {
            return left->getKey() < right->getKey();
        };
        const auto known = static_cast<std::ptrdiff_t>(ordered.size());
        for (std::size_t position = ordered.size(); position < items.size(); ++position) {
            ordered.push_back(items[position].get());
        }
        std::sort(ordered.begin() + known, ordered.end(), byKey);
        std::inplace_merge(ordered.begin(), ordered.begin() + known, ordered.end(), byKey);
    }
    return ordered;
}

MeroDoubleResultItem* MeroDoubleResult::getNextItem() {
    if (cursor >= items.size()) {
        cursor = 0;
        return nullptr;
    }
    return getItems()[cursor++];
}

double MeroDoubleResult::getTotal() const {
    double total = 0.0;
    for (const auto* item : getItems()) {
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

// Prefetching

void MeroDoubleResult::prefetch() const {
    __builtin_prefetch(&items);
    __builtin_prefetch(&sharedDivisor);
}

void MeroDoubleResult::prefetchIndex(MeroPathView path) const {
    if (index.empty()) {
        __builtin_prefetch(items.data());
    } else {
        index.prefetch(hashOfPath(path));
    }
}

void MeroDoubleResult::prefetchPlace(MeroPathView path) const {
    const std::size_t position = index.findFirst(hashOfPath(path));
    if (position != MeroPositionIndex::Missing) {
        __builtin_prefetch(&items[position]);
    }
}

void MeroDoubleResult::prefetchItem(MeroPathView path) const {
    const std::size_t position = index.empty() ? 0 : index.findFirst(hashOfPath(path));
    if (position < items.size()) {
        items[position]->prefetch();
    }
}
