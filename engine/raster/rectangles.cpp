#include "engine/raster/rectangles.h"

#include <cmath>

namespace engine {

Quotient MultiplyDivide(std::int64_t first, std::int64_t second, std::int64_t divisor)
{
    // The guess is off by a few at most. Its remainder is small, so it comes out right in arithmetic
    // modulo 2^64, in which the product itself is lost.
    const long double guess = std::floor(static_cast<long double>(first) * static_cast<long double>(second)
                                         / static_cast<long double>(divisor));
    std::int64_t quotient = static_cast<std::int64_t>(guess);
    std::int64_t remainder =
        static_cast<std::int64_t>(static_cast<std::uint64_t>(first) * static_cast<std::uint64_t>(second)
                                  - static_cast<std::uint64_t>(quotient) * static_cast<std::uint64_t>(divisor));
    for (; remainder < 0; remainder += divisor)
        --quotient;
    for (; remainder >= divisor; remainder -= divisor)
        ++quotient;
    return {quotient, remainder};
}

} // namespace engine
