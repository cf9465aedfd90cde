#include "component/agents/object_values.h"

#include <algorithm>
#include <utility>

#include "component/results/keyed_table.h"

namespace {

std::size_t hashOf(MeroId object) {
    return static_cast<std::uint32_t>(object);
}

}  // namespace

std::size_t MeroObjectValues::positionAmongMany(MeroId object) const {
    return many->index.find(hashOf(object),
                            [&](std::size_t position) { return many->objects[position] == object; });
}

MeroAgentObjectValue& MeroObjectValues::add(MeroId object) {
    if (count < InPlace) {
        objects[count] = object;
        return values[count++] = {};
    }
    if (count == InPlace) {
        if (many == nullptr) {
            many = std::make_unique<Many>();
        }
        for (std::size_t position = 0; position < InPlace; ++position) {
            many->add(objects[position], values[position]);
        }
    }
    many->add(object, {});
    ++count;
    return many->values.back();
}

void MeroObjectValues::clear() {
    if (!isInPlace()) {
        many->clear();
    }
    count = 0;
}

void MeroObjectValues::sort() {
    if (!isInPlace()) {
        many->sort();
        return;
    }
    for (std::size_t end = 1; end < count; ++end) {
        for (std::size_t place = end; place > 0 && isBeforeAsDecimalText(objects[place], objects[place - 1]);
             --place) {
            std::swap(objects[place], objects[place - 1]);
            std::swap(values[place], values[place - 1]);
        }
    }
}

void MeroObjectValues::Many::add(MeroId object, const MeroAgentObjectValue& value) {
    index.add(hashOf(object), objects.size());
    objects.push_back(object);
    values.push_back(value);
}

void MeroObjectValues::Many::clear() {
    objects.clear();
    values.clear();
    index.clear();
}

void MeroObjectValues::Many::sort() {
    if (std::ranges::is_sorted(objects, isBeforeAsDecimalText)) {
        return;
    }
    std::vector<std::pair<MeroId, MeroAgentObjectValue>> entries;
    entries.reserve(objects.size());
    for (std::size_t position = 0; position < objects.size(); ++position) {
        entries.emplace_back(objects[position], values[position]);
    }
    std::ranges::sort(entries, isBeforeAsDecimalText, &std::pair<MeroId, MeroAgentObjectValue>::first);
    clear();
    for (const auto& [object, value] : entries) {
        add(object, value);
    }
}
