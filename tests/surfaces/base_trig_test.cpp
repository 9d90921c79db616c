// The base trigonometry the ellipsoid hands the solver: the sine, cosine and
// tangent of the very single precision dips it stores, from the slopes it
// rounds, and dips that are those of the description's formulas.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "surface_fixture.h"
#include "surfaces/base_trig.h"
#include "surfaces/ellipsoid.h"

namespace tobel::test {
namespace {

// A few units in a double's last place of 1.
constexpr double few_ulps = 1e-15;

// The four-lane forms, built for the processors that have them.
TOBEL_LANES4_TARGET void quick_atan_of_four(const double* x, double* out)
{
    store_lanes(out, 0, 4, quick_atan_lanes(load_lanes<Double4>(x, 0, 4)));
}

TOBEL_LANES4_TARGET void sqrt_of_four(const double* x, double* out)
{
    store_lanes(out, 0, 4, sqrt_lanes(load_lanes<Double4>(x, 0, 4)));
}

TOBEL_LANES4_TARGET void rounded_angle_of_four(const double* s0, const double* c0, const double* angle,
                                               const double* stored, double* s, double* c)
{
    const SinCosOf<Double4> r =
        rounded_angle_of(load_lanes<Double4>(s0, 0, 4), load_lanes<Double4>(c0, 0, 4),
                         load_lanes<Double4>(angle, 0, 4), load_lanes<Double4>(stored, 0, 4));
    store_lanes(s, 0, 4, r.s);
    store_lanes(c, 0, 4, r.c);
}

TEST(base_trig, angle_sum_over_the_rounding_gives_the_functions_of_the_stored_angle)
{
    // The 3-4-5 triangle: sin = 0.6, cos = 0.8 of atan(0.75) exactly.
    const double a = std::atan(0.75);
    const float stored = float(a);
    ASSERT_NE(double(stored), a); // the rounding moved the angle
    const SinCos sc = rounded_angle(0.6, 0.8, a, stored);
    // The library functions of the stored angle, the description's values.
    EXPECT_NEAR(sc.s, std::sin(double(stored)), few_ulps);
    EXPECT_NEAR(sc.c, std::cos(double(stored)), few_ulps);
    // And not those of the unrounded angle: the rounding of about 3e-8
    // shows in the eighth digit.
    EXPECT_GT(std::abs(sc.s - 0.6), 1e-9);
}

TEST(base_trig, a_value_at_the_midpoint_of_two_floats_is_a_tie)
{
    // 1 + 2^-24 lies halfway between the floats 1 and 1 + 2^-23.
    const double mid = 1.0 + std::ldexp(1.0, -24);
    EXPECT_TRUE(near_float_tie(mid, 1e-12));
    // 2^-50 (9e-16) off the midpoint is within 1e-12 of it.
    EXPECT_TRUE(near_float_tie(mid + std::ldexp(1.0, -50), 1e-12));
    // 2^-30 (9.3e-10) off is not.
    EXPECT_FALSE(near_float_tie(mid + std::ldexp(1.0, -30), 1e-12));
    EXPECT_FALSE(near_float_tie(mid - std::ldexp(1.0, -30), 1e-12));
    // A float itself is no tie.
    EXPECT_FALSE(near_float_tie(1.0, 1e-12));
    EXPECT_FALSE(near_float_tie(-0.75, 1e-12));
}

TEST(base_trig, quick_arc_tangent_gives_the_angles_of_known_tangents)
{
    const double pi = 3.14159265358979323846;
    EXPECT_NEAR(quick_atan(1.0), pi / 4, 2e-16);
    EXPECT_NEAR(quick_atan(-1.0), -pi / 4, 2e-16);
    EXPECT_NEAR(quick_atan(std::sqrt(3.0)), pi / 3, 3e-16);
    EXPECT_NEAR(quick_atan(1 / std::sqrt(3.0)), pi / 6, 2e-16);
    EXPECT_NEAR(quick_atan(1e6), pi / 2 - 1e-6, 3e-16); // pi/2 - 1/x, the x^-3 term 3e-19
    EXPECT_EQ(quick_atan(0.0), 0.0);
    EXPECT_TRUE(std::signbit(quick_atan(-0.0)));
}

TEST(base_trig, quick_arc_tangent_rounds_to_the_library_float_away_from_ties)
{
    int checked = 0;
    for (int i = -40000; i <= 40000; ++i) {
        // Tangents from -40 to 40, denser near 0.
        const double x = double(i) * 1e-3 * (1 + std::abs(double(i)) * 1e-4);
        const double q = quick_atan(x), lib = std::atan(x);
        ASSERT_NEAR(q, lib, 4e-16 * std::abs(lib) + 1e-300) << x;
        if (near_float_tie(q, 1e-14))
            continue;
        ASSERT_EQ(float(q), float(lib)) << x;
        ++checked;
    }
    EXPECT_GT(checked, 80000 - 10);
}

// The table of the quick arc tangent: at a tabulated tangent k / 8 the series
// is 0 and the angle is the entry itself, the library's atan(k / 8).
TEST(base_trig, quick_arc_tangent_of_an_eighth_is_the_library_angle)
{
    for (int k = 0; k <= 8; ++k) {
        const double x = double(k) / 8;
        EXPECT_EQ(quick_atan(x), std::atan(x)) << k;
        EXPECT_EQ(quick_atan(-x), std::atan(-x)) << k;
    }
}

// The builder works out the dips of a row's cut nodes a step at a time over
// the row. Every node must get, bit for bit, what the steps give node by node:
// the quick arc tangents (the library's near a tie) and the angle sums of the
// rounded dips. Three ellipsoids one after another over a sloping ground.
TEST(base_trig, quick_arc_tangent_of_two_and_four_lanes_is_that_of_each_bit_for_bit)
{
    auto bits = [](double x) { return std::bit_cast<std::uint64_t>(x); };
    std::vector<double> xs = {0.0,
                              -0.0,
                              1.0,
                              -1.0,
                              std::nextafter(1.0, 2.0),
                              std::nextafter(1.0, 0.0),
                              1.0 / 16,
                              3.0 / 16,
                              15.0 / 16,
                              16.0,
                              1e-310,
                              1e299,
                              2e300,
                              -3e300,
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()};
    // The midpoints between the tabulated tangents, where k changes, and
    // their neighbours; then values over every magnitude, both signs.
    for (int k = 0; k < 8; ++k) {
        const double m = (2 * k + 1) / 16.0;
        for (double x : {m, std::nextafter(m, 0.0), std::nextafter(m, 1.0)}) {
            xs.push_back(x);
            xs.push_back(1 / x);
        }
    }
    std::mt19937_64 gen(7);
    std::uniform_real_distribution<double> exponent(-30, 30), mantissa(1, 10);
    for (int i = 0; i < 20000; ++i) {
        const double x = mantissa(gen) * std::pow(10.0, exponent(gen));
        xs.push_back(i % 2 == 0 ? x : -x);
    }
    int compared = 0;
    for (std::size_t i = 0; i < xs.size(); ++i)
        for (std::size_t j : {i, (i * 7 + 3) % xs.size()}) {
            const Double2 q = quick_atan_lanes(Double2{xs[i], xs[j]});
            const double a = quick_atan(xs[i]), b = quick_atan(xs[j]);
            if (std::isnan(a)) {
                EXPECT_TRUE(std::isnan(q[0]));
            } else {
                EXPECT_EQ(bits(q[0]), bits(a)) << xs[i];
            }
            if (std::isnan(b)) {
                EXPECT_TRUE(std::isnan(q[1]));
            } else {
                EXPECT_EQ(bits(q[1]), bits(b)) << xs[j];
            }
            ++compared;
        }
    EXPECT_GT(compared, 40000);
    if (!four_lanes_available())
        GTEST_SKIP() << "no four-lane instructions on this processor";
    const std::size_t n = xs.size();
    for (std::size_t i = 0; i < n; ++i) {
        const double x[4] = {xs[i], xs[(i * 7 + 3) % n], xs[(i + 1) % n], xs[(i * 13 + 5) % n]};
        double q[4];
        quick_atan_of_four(x, q);
        for (int j = 0; j < 4; ++j) {
            const double a = quick_atan(x[j]);
            if (std::isnan(a))
                EXPECT_TRUE(std::isnan(q[j]));
            else
                EXPECT_EQ(bits(q[j]), bits(a)) << x[j];
        }
    }
}

TEST(base_trig, roots_and_rounded_angles_of_two_and_four_lanes_are_those_of_each_bit_for_bit)
{
    auto bits = [](double x) { return std::bit_cast<std::uint64_t>(x); };
    // The angle sum over the rounding difference d, written out.
    auto by_hand = [](double s0, double c0, double angle, float stored) {
        const double d = double(stored) - angle;
        const double h = 1 - d * d / 2;
        return SinCos{s0 * h + c0 * d, c0 * h - s0 * d};
    };
    std::mt19937_64 gen(11);
    std::uniform_real_distribution<double> angle(-1.5, 1.5), magnitude(-20, 20);
    for (int i = 0; i < 20000; ++i) {
        const double a0 = angle(gen), a1 = angle(gen);
        const float f0 = float(a0), f1 = float(a1);
        const SinCos r0 = by_hand(std::sin(a0), std::cos(a0), a0, f0);
        const SinCos r1 = by_hand(std::sin(a1), std::cos(a1), a1, f1);
        const SinCos one = rounded_angle(std::sin(a0), std::cos(a0), a0, f0);
        ASSERT_EQ(bits(one.s), bits(r0.s)) << a0;
        ASSERT_EQ(bits(one.c), bits(r0.c)) << a0;
        const SinCosOf<Double2> r =
            rounded_angle_of(Double2{std::sin(a0), std::sin(a1)}, Double2{std::cos(a0), std::cos(a1)},
                             Double2{a0, a1}, Double2{double(f0), double(f1)});
        ASSERT_EQ(bits(r.s[0]), bits(r0.s)) << a0;
        ASSERT_EQ(bits(r.c[0]), bits(r0.c)) << a0;
        ASSERT_EQ(bits(r.s[1]), bits(r1.s)) << a1;
        ASSERT_EQ(bits(r.c[1]), bits(r1.c)) << a1;
        const double x0 = std::pow(10.0, magnitude(gen)), x1 = std::pow(10.0, magnitude(gen));
        const Double2 q = sqrt_lanes(Double2{x0, x1});
        ASSERT_EQ(bits(q[0]), bits(std::sqrt(x0))) << x0;
        ASSERT_EQ(bits(q[1]), bits(std::sqrt(x1))) << x1;
        if (four_lanes_available()) {
            // Lanes 2 and 3 the other way round.
            const double s0[4] = {std::sin(a0), std::sin(a1), std::sin(a1), std::sin(a0)};
            const double c0[4] = {std::cos(a0), std::cos(a1), std::cos(a1), std::cos(a0)};
            const double an[4] = {a0, a1, a1, a0};
            const double st[4] = {double(f0), double(f1), double(f1), double(f0)};
            double s4[4], c4[4];
            rounded_angle_of_four(s0, c0, an, st, s4, c4);
            const SinCos want[4] = {r0, r1, r1, r0};
            for (int j = 0; j < 4; ++j) {
                ASSERT_EQ(bits(s4[j]), bits(want[j].s)) << an[j];
                ASSERT_EQ(bits(c4[j]), bits(want[j].c)) << an[j];
            }
            const double x[4] = {x0, x1, -x0, 0.0};
            double q4[4];
            sqrt_of_four(x, q4);
            ASSERT_EQ(bits(q4[0]), bits(std::sqrt(x0))) << x0;
            ASSERT_EQ(bits(q4[1]), bits(std::sqrt(x1))) << x1;
            ASSERT_TRUE(std::isnan(q4[2])) << x0;
            ASSERT_EQ(bits(q4[3]), bits(0.0));
        }
    }
    // A negative lane is not a number, as the library's root of it.
    const Double2 q = sqrt_lanes(Double2{-1.0, 4.0});
    EXPECT_TRUE(std::isnan(q[0]));
    EXPECT_EQ(q[1], 2.0);
    // The angle sum over the rounding is near the library's functions of the
    // stored angle: within a few units of a double's last place.
    const double a = 0.7;
    const SinCos r = rounded_angle(std::sin(a), std::cos(a), a, float(a));
    EXPECT_NEAR(r.s, std::sin(double(float(a))), 4e-16);
    EXPECT_NEAR(r.c, std::cos(double(float(a))), 4e-16);
}

TEST(base_trig, the_dips_of_a_row_at_once_are_those_worked_out_node_by_node)
{
    auto p = make_project({61, 81, 0, 30, 0, 40});
    set_ground(*p, [](double x, double y) { return 10 + 0.4 * y + 0.05 * x; });
    struct Centre {
        float x, y, z, radius, aspect;
    };
    // The last two lie on a mesh line (X 15) and midway between two (X
    // 12.25): there a row takes its dips from the row mirrored about the
    // centre wherever that row cut the same column, though the ground, which
    // rises with X, cuts the two rows differently.
    const Centre centres[] = {{14.3f, 17.9f, 31.7f, 21.3f, 0.7f},
                              {9.1f, 22.4f, 35.2f, 24.9f, 0.45f},
                              {20.6f, 12.3f, 27.8f, 17.1f, 1.0f},
                              {15.0f, 17.9f, 31.7f, 21.3f, 0.7f},
                              {12.25f, 20.2f, 33.4f, 23.6f, 0.6f}};
    // Both widths of the row loops, where the processor has four lanes.
    for (const bool two_lanes : {false, true}) {
        p->work.two_lanes = two_lanes;
        clear_sliding_surface(*p);
        for (const Centre& e0 : centres) {
            p->ell_x = e0.x;
            p->ell_y = e0.y;
            p->ell_z = e0.z;
            p->ell_radius = e0.radius;
            p->ell_aspect = e0.aspect;
            build_ellipsoid(*p);
            const bool on_a_line = e0.x == 15.0f || e0.x == 12.25f;
            if (on_a_line) {
                EXPECT_GT(p->work.mirrored_nodes, 300u);
            } else {
                EXPECT_EQ(p->work.mirrored_nodes, 0u);
            }
            const double a = p->ell_aspect, rr = p->ell_radius, k = a * a * rr * rr;
            int cut = 0;
            int cut_on_one_side_only = 0;
            for (int row = 1; row <= p->num_rows; ++row)
                for (int col = 1; col <= p->num_cols; ++col) {
                    if (sliding(*p, row, col) == ground(*p, row, col))
                        continue;
                    ++cut;
                    if (on_a_line) {
                        // The node mirrored about the centre's X.
                        const int mirror =
                            int(std::lround(2 * double(e0.x - p->x_min) / double(p->row_spacing))) + 2 - row;
                        if (mirror < 1 || mirror > p->num_rows ||
                            sliding(*p, mirror, col) == ground(*p, mirror, col))
                            ++cut_on_one_side_only;
                    }
                    const double dx = double(p->ell_x) - double(float(node_x(*p, row)));
                    const double dy = double(float(node_y(*p, col))) - double(p->ell_y);
                    const double rl = rr * std::sqrt(1.0 - dx * dx / k);
                    const double slope_x = ((-dx) / a) / std::sqrt(k - dx * dx);
                    ASSERT_EQ(sliding(*p, row, col), float(double(p->ell_z) - std::sqrt(rl * rl - dy * dy)));
                    // The Y dip and its functions.
                    const double t = dy / rl;
                    const double ct = std::sqrt(1.0 - t * t);
                    double ay = quick_atan(t / ct);
                    if (near_float_tie(ay, 1e-14))
                        ay = std::atan(t / ct);
                    const float dip_y = float(ay);
                    const SinCos sy = rounded_angle(t, ct, ay, dip_y);
                    // The X dip and its functions.
                    double v = slope_x / sy.c;
                    double ax = quick_atan(v);
                    if (near_float_tie(ax, 1e-12)) {
                        v = slope_x / std::cos(double(dip_y));
                        ax = std::atan(v);
                    }
                    const float dip_x = float(ax);
                    const double cb = 1.0 / std::sqrt(1.0 + v * v);
                    const SinCos sx = rounded_angle(v * cb, cb, ax, dip_x);
                    ASSERT_EQ(p->surf_dip_y(row, col), dip_y) << row << "," << col;
                    ASSERT_EQ(p->surf_dip_x(row, col), dip_x) << row << "," << col;
                    const BaseTrig* e = find_base_trig(p->work, row, col, dip_x, dip_y);
                    ASSERT_NE(e, nullptr) << row << "," << col;
                    EXPECT_EQ(e->sin_a, sy.s);
                    EXPECT_EQ(e->cos_a, sy.c);
                    EXPECT_EQ(e->tan_a, sy.s / sy.c);
                    EXPECT_EQ(e->sin_b, sx.s);
                    EXPECT_EQ(e->cos_b, sx.c);
                    EXPECT_EQ(e->tan_b, sx.s / sx.c);
                }
            EXPECT_GT(cut, 300);
            if (on_a_line) {
                EXPECT_GT(cut_on_one_side_only, 10);
            }
        }
    }
}

// Sphere R = 25 centred at X 20, Y 20, Z 40 over flat ground at 100, mesh
// 0..40 by 1. Node row 6 (X 5), col 33 (Y 32): dx = 20 - 5 = 15, so
// Rl = 25 sqrt(1 - 225 / 625) = 20; dy = 32 - 20 = 12, t = dy / Rl = 0.6,
// sqrt(1 - t^2) = 0.8: tan(alpha) = 0.75, sin 0.6, cos 0.8. The X slope before
// the tilt is -15 / sqrt(625 - 225) = -0.75; over cos(alpha) = 0.8 it is
// tan(beta) = -0.9375, cos(beta) = 1 / sqrt(1 + 0.87890625) = 0.72953...,
// sin(beta) = -0.9375 cos(beta).
TEST(base_trig, the_ellipsoid_leaves_the_trigonometry_of_a_node_worked_out_by_hand)
{
    auto p = make_project({41, 41, 0, 40, 0, 40});
    set_ground(*p, [](double, double) { return 100.0; });
    p->ell_x = 20;
    p->ell_y = 20;
    p->ell_z = 40;
    p->ell_radius = 25;
    p->ell_aspect = 1;
    clear_sliding_surface(*p);
    build_ellipsoid(*p);
    const int r = 6, c = 33;
    ASSERT_EQ(node_x(*p, r), 5.0);
    ASSERT_EQ(node_y(*p, c), 32.0);
    EXPECT_EQ(sliding(*p, r, c), 24.0f); // 40 - sqrt(400 - 144)
    const float dx = p->surf_dip_x(r, c), dy = p->surf_dip_y(r, c);
    const BaseTrig* e = find_base_trig(p->work, r, c, dx, dy);
    ASSERT_NE(e, nullptr);
    const double cos_b = 1 / std::sqrt(1.87890625);
    // The rounding of the dips to floats moves the functions by about 1e-8.
    EXPECT_NEAR(e->sin_a, 0.6, 1e-7);
    EXPECT_NEAR(e->cos_a, 0.8, 1e-7);
    EXPECT_NEAR(e->tan_a, 0.75, 1e-7);
    EXPECT_NEAR(e->tan_b, -0.9375, 1e-7);
    EXPECT_NEAR(e->cos_b, cos_b, 1e-7);
    EXPECT_NEAR(e->sin_b, -0.9375 * cos_b, 1e-7);
    // Exactly, they are the functions of the stored angles.
    EXPECT_NEAR(e->sin_a, std::sin(double(dy)), few_ulps);
    EXPECT_NEAR(e->cos_a, std::cos(double(dy)), few_ulps);
    EXPECT_NEAR(e->tan_a, std::tan(double(dy)), few_ulps);
    EXPECT_NEAR(e->sin_b, std::sin(double(dx)), few_ulps);
    EXPECT_NEAR(e->cos_b, std::cos(double(dx)), few_ulps);
    EXPECT_NEAR(e->tan_b, std::tan(double(dx)), 2 * few_ulps);
}

TEST(base_trig, stored_dips_are_those_of_the_formulas_at_every_node)
{
    // An elongated ellipsoid over a sloping ground on a fine mesh.
    auto p = make_project({61, 81, 0, 30, 0, 40});
    set_ground(*p, [](double, double y) { return 10 + 0.4 * y; });
    p->ell_x = 14.3f;
    p->ell_y = 17.9f;
    p->ell_z = 31.7f;
    p->ell_radius = 21.3f;
    p->ell_aspect = 0.7f;
    clear_sliding_surface(*p);
    build_ellipsoid(*p);
    const double a = p->ell_aspect, rr = p->ell_radius, k = a * a * rr * rr;
    int inside = 0;
    for (int row = 1; row <= p->num_rows; ++row)
        for (int col = 1; col <= p->num_cols; ++col) {
            if (sliding(*p, row, col) == ground(*p, row, col))
                continue;
            ++inside;
            // Steps 2 and 7 of the builder, with the node coordinates in single precision.
            const double ddx = double(p->ell_x) - double(float(node_x(*p, row)));
            const double ddy = double(float(node_y(*p, col))) - double(p->ell_y);
            const double rl = rr * std::sqrt(1 - ddx * ddx / k);
            const double t = ddy / rl;
            const float dip_y = float(std::atan(t / std::sqrt(1 - t * t)));
            const float dip_x =
                float(std::atan(((-ddx) / a / std::sqrt(k - ddx * ddx)) / std::cos(double(dip_y))));
            ASSERT_EQ(p->surf_dip_y(row, col), dip_y) << row << "," << col;
            ASSERT_EQ(p->surf_dip_x(row, col), dip_x) << row << "," << col;
            const BaseTrig* e = find_base_trig(p->work, row, col, dip_x, dip_y);
            ASSERT_NE(e, nullptr) << row << "," << col;
            EXPECT_NEAR(e->sin_a, std::sin(double(dip_y)), few_ulps);
            EXPECT_NEAR(e->cos_b, std::cos(double(dip_x)), few_ulps);
        }
    EXPECT_GT(inside, 500);
}

TEST(base_trig, an_entry_stands_only_for_the_dips_it_names)
{
    SolverWork w;
    w.trig_box = {2, 3, 4, 6};
    w.trig.resize(6);
    w.trig[4] = base_trig_of(0.25f, -0.5f); // node (3, 5): (3 - 2) * 3 + (5 - 4)
    ASSERT_NE(find_base_trig(w, 3, 5, 0.25f, -0.5f), nullptr);
    EXPECT_DOUBLE_EQ(find_base_trig(w, 3, 5, 0.25f, -0.5f)->tan_b, std::tan(0.25));
    EXPECT_EQ(find_base_trig(w, 3, 5, 0.25f, 0.5f), nullptr);
    EXPECT_EQ(find_base_trig(w, 3, 4, 0.25f, -0.5f), nullptr);
    EXPECT_EQ(find_base_trig(w, 4, 5, 0.25f, -0.5f), nullptr); // beyond the box
    // A node with other dips gets the library's values.
    const BaseTrig b = node_base_trig(w, 3, 5, 0.1f, 0.2f);
    EXPECT_EQ(b.sin_a, std::sin(double(0.2f)));
    EXPECT_EQ(b.cos_b, std::cos(double(0.1f)));
}

} // namespace
} // namespace tobel::test
