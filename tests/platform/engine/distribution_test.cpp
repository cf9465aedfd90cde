#include "platform/engine/distribution.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace mero {
namespace {

struct Moments {
    double mean = 0.0;
    double variance = 0.0;
    double least = 0.0;
    double most = 0.0;
};

constexpr int SampleCount = 200'000;

Moments measure(const Distribution& distribution) {
    RandomStream random(42, "test");
    Moments moments;
    double squares = 0.0;
    for (int index = 1; index <= SampleCount; ++index) {
        const double value = distribution.sample(random);
        moments.least = index == 1 ? value : std::min(moments.least, value);
        moments.most = index == 1 ? value : std::max(moments.most, value);
        const double difference = value - moments.mean;
        moments.mean += difference / index;
        squares += difference * (value - moments.mean);
    }
    moments.variance = squares / (SampleCount - 1);
    return moments;
}

struct MomentCase {
    std::string text;
    double mean;
    double variance;
    double least;
    double most;
};

class DistributionMoments : public testing::TestWithParam<MomentCase> {};

TEST_P(DistributionMoments, AreThoseOfTheory) {
    const auto distribution = Distribution::parse(GetParam().text);
    ASSERT_TRUE(distribution.isGood()) << distribution.error().text;
    const Moments moments = measure(distribution.value());
    EXPECT_NEAR(moments.mean, GetParam().mean, 2.576 * std::sqrt(GetParam().variance / SampleCount) + 1e-9);
    EXPECT_NEAR(moments.variance, GetParam().variance, 0.05 * GetParam().variance + 1e-9);
    EXPECT_GE(moments.least, GetParam().least);
    EXPECT_LE(moments.most, GetParam().most);
}

constexpr double Any = INFINITY;

INSTANTIATE_TEST_SUITE_P(
    Texts, DistributionMoments,
    testing::Values(MomentCase{"fixed(12.5)", 12.5, 0.0, 12.5, 12.5},
                    MomentCase{" uniform ( 2 , 8 ) ", 5.0, 3.0, 2.0, 8.0},
                    MomentCase{"triangular(1,2,6)", 3.0, 14.0 / 12.0, 1.0, 6.0},
                    MomentCase{"triangular(3,3,3)", 3.0, 0.0, 3.0, 3.0},
                    MomentCase{"exponential(60)", 60.0, 3600.0, 0.0, Any},
                    MomentCase{"exponential(100) in [1800,3600]", 1900.0, 10000.0, 1800.0, 3600.0},
                    MomentCase{"normal(-5,2)", -5.0, 4.0, -Any, Any},
                    MomentCase{"lognormal(100,2500)", 100.0, 2500.0, 0.0, Any},
                    MomentCase{"gamma(10,50)", 10.0, 50.0, 0.0, Any},
                    MomentCase{"gamma(3,90)", 3.0, 90.0, 0.0, Any},
                    MomentCase{"gamma(3,0)", 3.0, 0.0, 3.0, 3.0},
                    MomentCase{"mixture(fixed(1); fixed(3))", 2.0, 1.0, 1.0, 3.0},
                    MomentCase{"uniform(0,10) in [4,6]", 5.0, 4.0 / 12.0, 4.0, 6.0},
                    MomentCase{"fixed(9) in [1,5]", 5.0, 0.0, 5.0, 5.0},
                    MomentCase{"mixture(uniform(0,1) in [0,1];fixed(2))in[0,1]", 0.5, 1.0 / 12.0, 0.0, 1.0}));

struct RefusedCase {
    std::string text;
    std::string error;
};

class RefusedDistribution : public testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedDistribution, NamesThePlace) {
    const auto distribution = Distribution::parse(GetParam().text);
    ASSERT_FALSE(distribution.isGood());
    EXPECT_EQ(distribution.error().text, GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, RefusedDistribution,
    testing::Values(RefusedCase{"", "column 1: expected the name of a distribution"},
                    RefusedCase{"poisson(3)", "column 1: expected the name of a distribution"},
                    RefusedCase{"fixed 3", "column 7: expected \"(\""},
                    RefusedCase{"fixed()", "column 7: expected a number"},
                    RefusedCase{"fixed(nan)", "column 7: expected a number"},
                    RefusedCase{"fixed(1,5)", "column 8: expected \")\""},
                    RefusedCase{"uniform(1)", "column 10: expected \",\""},
                    RefusedCase{"uniform(5,2)", "column 9: the maximum lies below the minimum"},
                    RefusedCase{"exponential(-1)", "column 13: the mean is negative"},
                    RefusedCase{"lognormal(0,1)",
                                "column 11: the mean has to be positive and the variance not negative"},
                    RefusedCase{"mixture()", "column 9: expected the name of a distribution"},
                    RefusedCase{"fixed(1) in [3,2]", "column 14: the upper limit lies below the lower one"},
                    RefusedCase{"fixed(1) and more", "column 10: expected the end of the distribution"}));

TEST(RefusedDistributionDepth, NestingHasALimit) {
    std::string text = "fixed(1)";
    for (int depth = 0; depth < 100'000; ++depth) {
        text.insert(0, "mixture(");
    }
    EXPECT_FALSE(Distribution::parse(text).isGood());
}

}  // namespace
}  // namespace mero
