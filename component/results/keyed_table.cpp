#include "component/results/keyed_table.h"

namespace {

/// Characters of the decimal text, the sign included.
int lengthAsDecimalText(std::int32_t number) {
    int length = number < 0 ? 2 : 1;
    for (std::int64_t rest = number < 0 ? -std::int64_t{number} : number; rest >= 10; rest /= 10) {
        ++length;
    }
    return length;
}

}  // namespace

bool isBeforeAsDecimalText(std::int32_t left, std::int32_t right) {
    if (left > 0 && right > 0) {
        return left < right;
    }
    const int leftLength = lengthAsDecimalText(left);
    const int rightLength = lengthAsDecimalText(right);
    if (leftLength != rightLength) {
        return leftLength < rightLength;
    }
    if (left < 0 && right < 0) {
        return left > right;
    }
    return left < right;
}
