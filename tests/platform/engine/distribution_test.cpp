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
    if (const auto mean = distribution.value().mean()) {
        EXPECT_NEAR(*mean, GetParam().mean, 1e-9 * std::abs(GetParam().mean));
    } else {
        EXPECT_NE(GetParam().text.find("in"), std::string::npos) << "only limits keep the mean unknown";
    }
    EXPECT_NEAR(moments.variance, GetParam().variance, 0.05 * GetParam().variance + 1e-9);
    EXPECT_GE(moments.least, GetParam().least);
    EXPECT_LE(moments.most, GetParam().most);
}

constexpr double Any = INFINITY;

INSTANTIATE_TEST_SUITE_P(
    Texts, DistributionMoments,
    testing::Values(
        MomentCase{"fixed(12.5)", 12.5, 0.0, 12.5, 12.5},
        MomentCase{" uniform ( 2 , 8 ) ", 5.0, 3.0, 2.0, 8.0},
        MomentCase{"triangular(1,2,6)", 3.0, 14.0 / 12.0, 1.0, 6.0},
        MomentCase{"triangular(3,3,3)", 3.0, 0.0, 3.0, 3.0},
        MomentCase{"exponential(60)", 60.0, 3600.0, 0.0, Any},
        MomentCase{"exponential(100) in [1800,3600]", 1900.0, 10000.0, 1800.0, 3600.0},
        MomentCase{"normal(-5,2)", -5.0, 4.0, -Any, Any},
        MomentCase{"lognormal(100,2500)", 100.0, 2500.0, 0.0, Any},
        MomentCase{"gamma(10,50)", 10.0, 50.0, 0.0, Any}, MomentCase{"gamma(3,90)", 3.0, 90.0, 0.0, Any},
        MomentCase{"gamma(3,0)", 3.0, 0.0, 3.0, 3.0}, MomentCase{"erlang(12,4)", 12.0, 36.0, 0.0, Any},
        MomentCase{"weibull(2,10)", 8.862269254527580, 21.460183660255170, 0.0, Any},
        MomentCase{"beta(2,3,10,20)", 14.0, 4.0, 10.0, 20.0},
        MomentCase{"beta(0.001,0.003,0,1)", 0.25, 0.1875 / 1.004, 0.0, 1.0},
        MomentCase{"poisson(2.5)", 2.5, 2.5, 0.0, Any},
        MomentCase{"poisson(1000,60)", 60000.0, 3600000.0, 0.0, Any},
        MomentCase{"poisson(0)", 0.0, 0.0, 0.0, 0.0}, MomentCase{"binomial(0.3,10)", 3.0, 2.1, 0.0, 10.0},
        MomentCase{"binomial(0.02,5000,60)", 6000.0, 352800.0, 0.0, 300000.0},
        MomentCase{"binomial(1,40)", 40.0, 0.0, 40.0, 40.0},
        MomentCase{"discrete(10:1; 20:2; 40:1; 99:0)", 22.5, 118.75, 10.0, 40.0},
        MomentCase{"discrete(5:0; 7:0.1)", 7.0, 0.0, 7.0, 7.0},
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
                    RefusedCase{"cauchy(3)", "column 1: expected the name of a distribution"},
                    RefusedCase{"fixed 3", "column 7: expected \"(\""},
                    RefusedCase{"fixed()", "column 7: expected a number"},
                    RefusedCase{"fixed(nan)", "column 7: expected a number"},
                    RefusedCase{"fixed(1,5)", "column 8: expected \")\""},
                    RefusedCase{"uniform(1)", "column 10: expected \",\""},
                    RefusedCase{"uniform(5,2)", "column 9: the maximum lies below the minimum"},
                    RefusedCase{"exponential(-1)", "column 13: the mean is negative"},
                    RefusedCase{"lognormal(0,1)",
                                "column 11: the mean has to be positive and the variance not negative"},
                    RefusedCase{"erlang(1,1.5)",
                                "column 8: the mean is negative, or the number of phases isn't 1, 2, 3 …"},
                    RefusedCase{"weibull(0,1)", "column 9: shape and scale have to be positive"},
                    RefusedCase{"beta(1,1,5,2)",
                                "column 6: a shape isn't positive, or the maximum lies below the minimum"},
                    RefusedCase{"poisson(1e300)", "column 9: the mean isn't between 0 and 1000000000"},
                    RefusedCase{"poisson(1,)", "column 11: expected a number"},
                    RefusedCase{"discrete()", "column 10: expected a number"},
                    RefusedCase{"discrete(1)", "column 11: expected \":\""},
                    RefusedCase{"discrete(1:-1)", "column 12: the weight is negative"},
                    RefusedCase{"discrete(1:0; 2:0)", "column 10: all weights are 0"},
                    RefusedCase{"mixture()", "column 9: expected the name of a distribution"},
                    RefusedCase{"fixed(1) in [inf,2]", "column 14: expected a number"},
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
