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

namespace {

constexpr std::size_t NoPosition = MeroPositionIndex::Missing;

bool hasPath(const MeroDoubleResultItem& item, MeroPathView path) {
    return std::ranges::equal(item.getPath(), path);
}

}  // namespace

MeroDoubleResultItem* MeroDoubleResult::findItem(MeroPathView path) const {
    if (onlyItem != nullptr && hasPath(*onlyItem, path)) {
        return onlyItem;
    }
    return others != nullptr ? others->find(path) : nullptr;
}

MeroDoubleResultItem* MeroDoubleResult::OtherItems::find(MeroPathView path) const {
    if (index.empty()) {
        const auto found =
            std::ranges::find_if(items, [path](const auto& item) { return hasPath(*item, path); });
        return found != items.end() ? found->get() : nullptr;
    }
    const std::size_t position =
        index.find(hashOfPath(path), [&](std::size_t candidate) { return hasPath(*items[candidate], path); });
    return position != NoPosition ? items[position].get() : nullptr;
}

MeroDoubleResultItem& MeroDoubleResult::addToItem(double value, MeroPathView path) {
    MeroDoubleResultItem* const known = findItem(path);
    MeroDoubleResultItem& item = known != nullptr ? *known : addItem(path);
    item.add(value);
    return item;
}

MeroDoubleResultItem& MeroDoubleResult::addItem(MeroPathView path) {
    const MeroSharedDivisor* const shared = mode == ResultModeMean ? &sharedDivisor : nullptr;
    if (!first) {
        onlyItem = &first.emplace(path, mode, shared);
        return *first;
    }
    if (others == nullptr) {
        others = std::make_unique<OtherItems>();
        others->ordered.push_back(onlyItem);
    }
    others->items.push_back(std::make_unique<MeroDoubleResultItem>(path, mode, shared));
    others->indexNewItem();
    return *others->items.back();
}

void MeroDoubleResult::OtherItems::indexNewItem() {
    if (items.size() <= LinearLimit) {
        return;
    }
    const std::size_t firstNew = index.empty() ? 0 : items.size() - 1;
    for (std::size_t position = firstNew; position < items.size(); ++position) {
        index.add(hashOfPath(items[position]->getPath()), position);
    }
}

std::span<MeroDoubleResultItem* const> MeroDoubleResult::getItems() const {
    if (others == nullptr) {
        return {&onlyItem, first ? std::size_t{1} : std::size_t{0}};
    }
    auto& [items, index, ordered] = *others;
    const std::size_t known = ordered.size();
    if (known != items.size() + 1) {
        for (std::size_t position = known - 1; position < items.size(); ++position) {
            ordered.push_back(items[position].get());
        }
        const auto byKey = [](const auto* left, const auto* right) {
            return isBeforeAsPathKey(left->getPath(), right->getPath());
        };
        const auto firstNew = ordered.begin() + static_cast<std::ptrdiff_t>(known);
        std::sort(firstNew, ordered.end(), byKey);
        std::inplace_merge(ordered.begin(), firstNew, ordered.end(), byKey);
    }
    return ordered;
}

MeroDoubleResultItem* MeroDoubleResult::getNextItem() {
    const auto items = getItems();
    if (cursor >= items.size()) {
        cursor = 0;
        return nullptr;
    }
    return items[cursor++];
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
    __builtin_prefetch(this);
    __builtin_prefetch(&onlyItem);
}

void MeroDoubleResult::prefetchIndex(MeroPathView path) const {
    if (others != nullptr) {
        others->index.prefetch(hashOfPath(path));
    }
}

void MeroDoubleResult::prefetchPlace(MeroPathView path) const {
    const std::size_t position = others != nullptr ? others->index.findFirst(hashOfPath(path)) : NoPosition;
    if (position != NoPosition) {
        __builtin_prefetch(&others->items[position]);
    }
}

void MeroDoubleResult::prefetchItem(MeroPathView path) const {
    const std::size_t position = others != nullptr ? others->index.findFirst(hashOfPath(path)) : NoPosition;
    if (position != NoPosition) {
        others->items[position]->prefetch();
    }
}
