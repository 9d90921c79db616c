// Two doubles worked on by one instruction, and the mask of a comparison of
// two such: the compiler's vector types, for the few loops over a trial's
// columns that the optimiser does not turn into vector instructions itself.
// Every lane goes through the same operations in the same order as the
// scalar code it stands for, so the results are the same bit for bit.
#pragma once

#include <cmath>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tobel {

using Double2 = double __attribute__((vector_size(16)));
using Mask2 = long long __attribute__((vector_size(16)));

inline Double2 load2(const double* x)
{
    Double2 v;
    std::memcpy(&v, x, sizeof v);
    return v;
}

inline void store2(double* x, Double2 v)
{
    std::memcpy(x, &v, sizeof v);
}

// The square roots of both lanes, each rounded as std::sqrt rounds it.
inline Double2 sqrt2(Double2 x)
{
#if defined(__SSE2__)
    return _mm_sqrt_pd(x);
#else
    return Double2{std::sqrt(x[0]), std::sqrt(x[1])};
#endif
}

} // namespace tobel
