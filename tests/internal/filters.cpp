// The division of a convolution's sums, for all sums that it may be asked for.
#include "tavik/filters/convolution.h"

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "tavik/frame/arithmetic.h"

using namespace tavik;

namespace {

// Products and truncation never decrease with the sum, so what holds at a multiple and one below it holds between.
template <class Float> void expect_exact_at_multiple(int32_t divisor, Float reciprocal, int64_t multiple) {
    const auto quotient = [=](int64_t sum) { return truncate(static_cast<Float>(sum) * reciprocal); };
    for (const int64_t sum : {multiple, multiple - 1, -multiple, 1 - multiple})
        ASSERT_EQ(quotient(sum), sum / divisor) << sum << " / " << divisor;
}

TEST(Convolution, ShortReciprocalsDivideSumsExactly) {
    constexpr int32_t limit = 1 << 22;
    const auto check = [](int32_t divisor) {
        const auto reciprocal = reciprocal_away_from_zero<float>(divisor);
        const int64_t step = std::abs(int64_t{divisor});
        for (int64_t multiple = step; multiple < limit; multiple += step)
            expect_exact_at_multiple(divisor, reciprocal, multiple);
    };
    for (int32_t divisor = 16; divisor < 10000; divisor += divisor / 16) {
        check(divisor);
        check(-divisor);
    }
    for (int32_t divisor = 10000; divisor < limit; divisor += 1237) check(divisor);
}

TEST(Convolution, ReciprocalsDivideAll32BitSumsExactly) {
    constexpr int64_t limit = std::numeric_limits<int32_t>::max();
    for (const int64_t divisor :
         {1LL, 2LL, 3LL, 7LL, 9LL, 1000LL, 65537LL, 1000003LL, 2147483647LL, -3LL, -2147483648LL}) {
        const auto reciprocal = reciprocal_away_from_zero<double>(static_cast<int32_t>(divisor));
        const int64_t step = std::abs(divisor);
        const int64_t multiples = limit / step;
        // Near the ends and between.
        for (int64_t i = 0; i <= 3000; ++i)
            for (const int64_t count : {i, multiples / 3000 * i, multiples - i})
                if (count > 0) expect_exact_at_multiple(static_cast<int32_t>(divisor), reciprocal, count * step);
    }
}

} // namespace
