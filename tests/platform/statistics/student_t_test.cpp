#include <array>
#include <gtest/gtest.h>

#include "platform/statistics/sample_statistics.h"

namespace mero {

namespace {

/// For one, two and four degrees of freedom the quantile has a closed form.
double closedQuantile(double probability, int freedom) {
    constexpr double Pi = 3.14159265358979323846;
    const double product = 4.0 * probability * (1.0 - probability);
    switch (freedom) {
        case 1:
            return std::tan(Pi * (probability - 0.5));
        case 2:
            return 2.0 * (probability - 0.5) * std::sqrt(2.0 / product);
        default: {
            const double q = std::cos(std::acos(std::sqrt(product)) / 3.0) / std::sqrt(product);
            return (probability < 0.5 ? -2.0 : 2.0) * std::sqrt(q - 1.0);
        }
    }
}

TEST(StudentT, QuantilesEqualTheClosedFormsFarIntoTheTails) {
    for (const int freedom : {1, 2, 4}) {
        for (const double probability : {1e-6, 0.01, 0.025, 0.3, 0.6, 0.9, 0.975, 0.995, 0.999999}) {
            const double expected = closedQuantile(probability, freedom);
            EXPECT_NEAR(studentTQuantile(probability, freedom), expected, 1e-9 * std::abs(expected))
                << probability << " with " << freedom;
        }
    }
    EXPECT_EQ(studentTQuantile(0.5, 7.0), 0.0);
}

TEST(StudentT, QuantilesEqualThePrintedTables) {
    struct Case {
        double freedom;
        double at975;
    };
    for (const Case& known :
         {Case{1, 12.7062047362}, Case{2, 4.3026527297}, Case{3, 3.1824463053}, Case{4, 2.7764451052},
          Case{9, 2.2621571628}, Case{29, 2.0452296421}, Case{99, 1.9842169516}, Case{999, 1.9623414611}}) {
        EXPECT_NEAR(studentTQuantile(0.975, known.freedom), known.at975, 6e-11) << known.freedom;
    }
    EXPECT_NEAR(studentTQuantile(0.975, 1e8), 1.959963984540 + 2.3723e-8, 1e-11) << "nearly normal";
}

TEST(StudentT, ProbabilityOfAQuantileIsTheProbability) {
    for (const double freedom : {1.0, 1.5, 3.0, 19.0, 2001.0, 1e6}) {
        for (const double probability : {1e-4, 0.2, 0.5, 0.9, 0.975, 0.9999}) {
            EXPECT_NEAR(studentTProbability(studentTQuantile(probability, freedom), freedom), probability,
                        1e-12)
                << freedom;
        }
    }
}

TEST(SampleStatistics, AgreeWithHandCalculation) {
    SampleStatistics sample;
    for (const double value : {2.0, 4.0, 4.0, 4.0, 5.0, 5.0, 7.0, 9.0}) {
        sample.add(1e9 + value);  // a large mean costs no digits
    }
    EXPECT_EQ(sample.count(), 8U);
    EXPECT_DOUBLE_EQ(sample.mean(), 1e9 + 5.0);
    EXPECT_NEAR(sample.standardDeviation(), std::sqrt(32.0 / 7.0), 1e-7);
    EXPECT_NEAR(sample.confidenceHalfWidth(0.95), 2.364624251 * std::sqrt(32.0 / 7.0 / 8.0), 1e-7);
    SampleStatistics constant;
    constant.add(0.1);
    constant.add(0.1);
    EXPECT_EQ(constant.confidenceHalfWidth(0.95), 0.0);
}

}  // namespace

}  // namespace mero
