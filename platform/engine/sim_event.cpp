#include "platform/engine/sim_event.h"

namespace mero {

/// A sum of the fields, each times an odd constant of its own: no field's change is lost, and the products
/// don't wait for each other. Keys count by the hash that they remember.
std::uint64_t digestOf(const SimEvent& event) {
    const auto bitsOf = [](MeroId id) { return static_cast<std::uint64_t>(static_cast<std::uint32_t>(id)); };
    return static_cast<std::uint64_t>(event.time) * 0x9E3779B97F4A7C15ULL +
           static_cast<std::uint64_t>(event.code) * 0xC2B2AE3D27D4EB4FULL +
           bitsOf(event.mainModelId) * 0x165667B19E3779F9ULL + bitsOf(event.modelId) * 0xD6E8FEB86659FD93ULL +
           bitsOf(event.calledModelId) * 0xA0761D6478BD642FULL +
           bitsOf(event.callingObjectId) * 0xE7037ED1A0B428DBULL +
           bitsOf(event.objectId) * 0x8EBC6AF09C88C6E3ULL + bitsOf(event.resourceId) * 0x589965CC75374CC3ULL +
           bitsOf(event.executiveId) * 0x1D8E4E27C47D124FULL +
           bitsOf(event.assignedExecutiveId) * 0xEB44ACCAB455D165ULL +
           event.mainKey->hash() * 0xA3B195354A39B70DULL + event.key->hash() * 0x1B03738712FAD5C9ULL +
           event.calledKey->hash() * 0x2545F4914F6CDD1DULL + event.passKey->hash() * 0xD1342543DE82EF95ULL;
}

}  // namespace mero
