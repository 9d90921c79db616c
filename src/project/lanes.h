// Several doubles worked on by one instruction, and the mask of a comparison
// of such: the compiler's vector types, for the few loops over a trial's
// columns that the optimiser does not turn into vector instructions itself.
// Every lane goes through the same operations in the same order as the
// scalar code it stands for, so the results are the same bit for bit.
//
// Two lanes are what every x86-64 processor has. Four need AVX2: a loop
// written over a lane type V is built for both, the four-lane form in a
// function marked TOBEL_LANES4_TARGET, and chosen at run time by
// take_four_lanes(). No form uses fused multiply-adds, whose single
// rounding would change results.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define TOBEL_X86_LANES 1
#endif

// GCC notes that a four-lane value passed to or from a function built
// without AVX goes through other registers than with it. So four-lane values
// pass only through the helpers here and in base_trig.h, which are always
// built into their callers, and through the compiler's builtins: never
// through a function that is called (std::bit_cast is one).
#pragma GCC diagnostic ignored "-Wpsabi"

namespace tobel {

using Double2 = double __attribute__((vector_size(16)));
using Double4 = double __attribute__((vector_size(32)));

// The lanes of a lane type, and the type of its comparisons.
template <class V> inline constexpr std::size_t lane_count = sizeof(V) / sizeof(double);
template <class V> using MaskOf = decltype(V{} < V{});

#if defined(TOBEL_X86_LANES)
#define TOBEL_LANES4_TARGET [[gnu::target("avx2")]]
#else
#define TOBEL_LANES4_TARGET
#endif

// Put after a lambda's parameters: the lambda is built into the function
// that calls it, so that a four-lane loop's body is built for the four-lane
// target too.
#define TOBEL_LANE_BODY __attribute__((always_inline))

// Whether this processor runs the four-lane forms.
inline bool four_lanes_available()
{
#if defined(TOBEL_X86_LANES)
    return __builtin_cpu_supports("avx2");
#else
    return false;
#endif
}

// Whether to take the four-lane form: where the processor has it, unless two
// lanes are asked for (the solver work's `two_lanes`, for comparisons).
inline bool take_four_lanes(bool two_lanes)
{
    return !two_lanes && four_lanes_available();
}

// x in every lane (a signed zero stays signed, as it would not in V{} + x).
template <class V> [[gnu::always_inline]] inline V broadcast(double x)
{
    V v{};
    for (std::size_t j = 0; j < lane_count<V>; ++j)
        v[j] = x;
    return v;
}

// Calls f(i, lanes) for the entries 0..n-1 a lane type's width at a time:
// lane j is entry i + j, or at a short end (lanes < the width) the last entry
// again. A lane goes through what the others do, so the short end needs no
// scalar copy of the formulas.
template <class V, class F> [[gnu::always_inline]] inline void in_lanes(std::size_t n, F&& f)
{
    constexpr std::size_t w = lane_count<V>;
    for (std::size_t i = 0; i < n; i += w)
        f(i, std::min(w, n - i));
}

// Entries i.. of x as in_lanes hands them out.
template <class V>
[[gnu::always_inline]] inline V load_lanes(const double* x, std::size_t i, std::size_t lanes)
{
    V v{};
    if (lanes == lane_count<V>) {
        std::memcpy(&v, x + i, sizeof v);
        return v;
    }
    for (std::size_t j = 0; j < lane_count<V>; ++j)
        v[j] = x[i + std::min(j, lanes - 1)];
    return v;
}

// The first `lanes` lanes of v to entries i.. of x.
template <class V>
[[gnu::always_inline]] inline void store_lanes(double* x, std::size_t i, std::size_t lanes, const V& v)
{
    if (lanes == lane_count<V>) {
        std::memcpy(x + i, &v, sizeof v);
        return;
    }
    for (std::size_t j = 0; j < lanes; ++j)
        x[i + j] = v[j];
}

// The square roots of every lane, each rounded as std::sqrt rounds it.
inline Double2 sqrt_lanes(Double2 x)
{
#if defined(TOBEL_X86_LANES)
    return _mm_sqrt_pd(x);
#else
    return Double2{std::sqrt(x[0]), std::sqrt(x[1])};
#endif
}

TOBEL_LANES4_TARGET inline Double4 sqrt_lanes(Double4 x)
{
#if defined(TOBEL_X86_LANES)
    return _mm256_sqrt_pd(x);
#else
    return Double4{std::sqrt(x[0]), std::sqrt(x[1]), std::sqrt(x[2]), std::sqrt(x[3])};
#endif
}

} // namespace tobel
