// The grids' storage: a copy skips the source's zero pages, so it must still
// reproduce every bit, whatever the destination held and wherever the page
// boundaries fall.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "project/grid.h"
#include "project/zero_buffer.h"

namespace {

using tobel::ZeroBuffer;

template <class T> bool same_bits(const ZeroBuffer<T>& a, const ZeroBuffer<T>& b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0;
}

template <class T> bool all_zero_bits(const ZeroBuffer<T>& a)
{
    for (const T x : a) {
        const T zero{};
        if (std::memcmp(&x, &zero, sizeof(T)) != 0)
            return false;
    }
    return true;
}

// Several pages of floats, zero but for values that are easy to lose: a
// negative zero (not zero bits), a NaN with a payload, a subnormal, and
// single values on either side of the page boundaries of any alignment.
ZeroBuffer<float> sparse_floats(std::size_t n)
{
    ZeroBuffer<float> a(n);
    a[0] = 1.5f;
    a[1023] = -0.0f;
    a[1024] = std::numeric_limits<float>::denorm_min();
    std::uint32_t bits = 0x7fc01234u;
    std::memcpy(&a[3000], &bits, sizeof bits);
    a[4095] = -7.25f;
    a[4096] = 3.0f;
    a[n - 1] = 9.0f;
    return a;
}

TEST(zero_buffer, fresh_storage_reads_as_zeros)
{
    ZeroBuffer<float> a(100000);
    EXPECT_EQ(a.size(), 100000u);
    EXPECT_TRUE(all_zero_bits(a));
    ZeroBuffer<std::int16_t> b(7);
    EXPECT_TRUE(all_zero_bits(b));
    ZeroBuffer<int> e;
    EXPECT_TRUE(e.empty());
    EXPECT_EQ(e.begin(), e.end());
}

TEST(zero_buffer, a_copy_keeps_every_bit)
{
    const ZeroBuffer<float> a = sparse_floats(20000);
    const ZeroBuffer<float> b(a);
    EXPECT_TRUE(same_bits(a, b));
    EXPECT_TRUE(std::signbit(b[1023]));
    EXPECT_TRUE(std::isnan(b[3000]));
    EXPECT_EQ(b[1024], std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(b[19999], 9.0f);
}

TEST(zero_buffer, a_copy_over_old_values_clears_what_the_source_has_not)
{
    ZeroBuffer<float> old(20000);
    old.assign(20000, 4.0f);
    const ZeroBuffer<float> a = sparse_floats(20000);
    old = a;
    EXPECT_TRUE(same_bits(a, old));
    // And back to all zeros from a zero source.
    old = ZeroBuffer<float>(20000);
    EXPECT_TRUE(all_zero_bits(old));
}

TEST(zero_buffer, a_copy_at_every_offset_into_the_page)
{
    // The copy works in chunks ending on the destination's page boundaries:
    // shift the single values across them one element at a time.
    for (std::size_t shift = 0; shift < 8; ++shift) {
        ZeroBuffer<double> a(3000);
        a[511 + shift] = -1.0;
        a[512 + shift] = 2.0;
        a[1535 - shift] = 3.0;
        ZeroBuffer<double> b(3000);
        b.assign(3000, 8.0);
        b = a;
        EXPECT_TRUE(same_bits(a, b)) << shift;
        const ZeroBuffer<double> c(a);
        EXPECT_TRUE(same_bits(a, c)) << shift;
    }
}

TEST(zero_buffer, a_copy_of_another_size_takes_that_size)
{
    ZeroBuffer<int> a(10);
    a[9] = 5;
    ZeroBuffer<int> b(50000);
    b[40000] = 1;
    b = a;
    EXPECT_EQ(b.size(), 10u);
    EXPECT_EQ(b[9], 5);
    a = ZeroBuffer<int>();
    EXPECT_TRUE(a.empty());
}

TEST(zero_buffer, assign_fills_with_the_bits_of_the_value)
{
    ZeroBuffer<float> a(10);
    a.assign(10, -0.0f);
    for (const float x : a)
        EXPECT_TRUE(std::signbit(x));
    a.assign(10, 0.0f);
    EXPECT_TRUE(all_zero_bits(a));
    a.assign(6000, 2.5f);
    EXPECT_EQ(a.size(), 6000u);
    EXPECT_EQ(a[5999], 2.5f);
    a.assign(7000, 0.0f);
    EXPECT_TRUE(all_zero_bits(a));
}

TEST(zero_buffer, moves_and_self_assignment)
{
    ZeroBuffer<float> a = sparse_floats(20000);
    const ZeroBuffer<float> keep(a);
    ZeroBuffer<float>& self = a;
    a = self;
    EXPECT_TRUE(same_bits(a, keep));
    ZeroBuffer<float> b(std::move(a));
    EXPECT_TRUE(same_bits(b, keep));
    EXPECT_TRUE(a.empty()); // NOLINT: a moved-from buffer is empty
    ZeroBuffer<float> c(5);
    c = std::move(b);
    EXPECT_TRUE(same_bits(c, keep));
}

TEST(zero_buffer, equality_compares_values)
{
    ZeroBuffer<float> a(4), b(4);
    a[2] = -0.0f;
    EXPECT_TRUE(a == b); // -0 equals 0 as a value
    b[3] = std::numeric_limits<float>::quiet_NaN();
    a[3] = b[3];
    EXPECT_FALSE(a == b); // a NaN equals nothing
}

TEST(zero_buffer, a_grid_copy_is_the_grid)
{
    tobel::Grid3 g;
    g.redim(40, 60, 3);
    g(40, 60, 3) = 1.0f;
    g(1, 1, 0) = -2.0f;
    tobel::Grid3 h = g;
    EXPECT_EQ(h.rows, 40);
    EXPECT_EQ(h(40, 60, 3), 1.0f);
    EXPECT_EQ(h(1, 1, 0), -2.0f);
    EXPECT_TRUE(same_bits(g.v, h.v));
    tobel::Grid2<std::int16_t> d;
    d.redim(30, 30);
    d.fill(-1);
    tobel::Grid2<std::int16_t> e = d;
    EXPECT_EQ(e(30, 30), -1);
    EXPECT_TRUE(same_bits(d.v, e.v));
}

} // namespace
