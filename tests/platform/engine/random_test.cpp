#include "platform/engine/random.h"

#include <gtest/gtest.h>
#include <vector>

namespace mero {
namespace {

std::vector<std::uint64_t> firstNumbers(RandomStream stream) {
    std::vector<std::uint64_t> numbers(1000);
    for (std::uint64_t& number : numbers) {
        number = stream.nextBits();
    }
    return numbers;
}

TEST(RandomStream, SeedAndNameDecideTheNumbers) {
    const auto numbers = firstNumbers({7, "branch/Order/Task/Check"});
    EXPECT_EQ(numbers, firstNumbers({7, "branch/Order/Task/Check"}));
    EXPECT_NE(numbers, firstNumbers({8, "branch/Order/Task/Check"}));
    EXPECT_NE(numbers, firstNumbers({7, "branch/Order/Task/Chec"}));
    EXPECT_NE(numbers, firstNumbers({7, ""}));
}

/// Runs of the past have to stay reproducible: whoever changes these changes every result.
TEST(RandomStream, NumbersOfASeedNeverChange) {
    RandomStream stream(1, "arrivals");
    EXPECT_EQ(stream.nextBits(), 641519136928492424ULL);
    EXPECT_EQ(stream.nextBits(), 6305517156358198799ULL);
}

TEST(RandomStream, StreamsOfNeighbouringSeedsAreUncorrelated) {
    constexpr int Count = 20000;
    double product = 0.0;
    RandomStream left(1, "x");
    RandomStream right(2, "x");
    for (int index = 0; index < Count; ++index) {
        product += (left.nextUnit() - 0.5) * (right.nextUnit() - 0.5);
    }
    // The standard deviation of the mean product is 1 / (12 * sqrt(count)).
    EXPECT_NEAR(product / Count, 0.0, 2.576 / (12.0 * 141.4));
}

}  // namespace
}  // namespace mero
