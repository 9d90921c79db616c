// Two doubles worked on by one instruction, and the mask of a comparison of
// two such: the compiler's vector types, for the few loops over a trial's
// columns that the optimiser does not turn into vector instructions itself.
// Every lane goes through the same operations in the same order as the
// scalar code it stands for, so the results are the same bit for bit.
#pragma once

#include <cmath>
#include <cstddef>
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

// Calls f(i, lanes) for the entries 0..n-1 two at a time: lane 0 is entry i,
// lane 1 entry i + 1, or at an odd end (lanes = 1) entry i again. A lane
// goes through what the other does, so the odd one needs no scalar copy of
// the formulas.
template <class F> inline void in_pairs(std::size_t n, F&& f)
{
    for (std::size_t i = 0; i < n; i += 2)
        f(i, i + 1 < n ? std::size_t(2) : std::size_t(1));
}

// Entries i and i + lanes - 1 of x, as in_pairs hands them out.
inline Double2 load_pair(const double* x, std::size_t i, std::size_t lanes)
{
    return Double2{x[i], x[i + lanes - 1]};
}

// The first `lanes` lanes of v to entries i, i + 1 of x.
inline void store_pair(double* x, std::size_t i, std::size_t lanes, Double2 v)
{
    x[i] = v[0];
    if (lanes == 2)
        x[i + 1] = v[1];
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
