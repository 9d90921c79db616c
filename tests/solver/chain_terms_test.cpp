// The coefficients of a column's thrust increment in Spencer's and the
// Morgenstern-Price method, in their single-division form.
#include <gtest/gtest.h>

#include <cmath>

#include "solver/spencer_mp.h"

namespace tobel::test {
namespace {

TEST(chain_terms, equal_the_forms_through_rho)
{
    // m_alpha 1, n_alpha 0.5: rho = 2; lambda f = 0.3: d = 2.3; k = 0.1;
    // alpha of the 3-4-5 triangle (tan 0.75, sin 0.6, cos 0.8).
    const ChainTerms t = chain_terms(1.0, 0.5, 0.3, 0.1, 0.6, 0.8, 0.75);
    EXPECT_NEAR(t.a1, 1.2 / 2.3, 1e-15);  // (1 + 0.1 * 2) / 2.3
    EXPECT_NEAR(t.a2, 2.75 / 2.3, 1e-15); // (0.75 + 2) / 2.3
    EXPECT_NEAR(t.a3, 2.2 / 2.3, 1e-15);  // (0.6 + 2 * 0.8) / 2.3
}

TEST(chain_terms, a_negative_n_alpha_keeps_its_sign_in_rho)
{
    // rho = 1 / -0.25 = -4; d = 0.5 - 4 = -3.5.
    const ChainTerms t = chain_terms(1.0, -0.25, 0.5, 0.0, 0.6, 0.8, 0.75);
    EXPECT_NEAR(t.a1, 1 / -3.5, 1e-15);
    EXPECT_NEAR(t.a2, (0.75 - 4) / -3.5, 1e-15);
    EXPECT_NEAR(t.a3, (0.6 - 3.2) / -3.5, 1e-15);
}

TEST(chain_terms, a_small_n_alpha_gives_k_one_and_cos_alpha)
{
    for (double na : {0.0001, -0.0001, 0.0, 0.00005}) {
        const ChainTerms t = chain_terms(1.0, na, 0.3, 0.15, 0.6, 0.8, 0.75);
        EXPECT_EQ(t.a1, 0.15) << na;
        EXPECT_EQ(t.a2, 1.0) << na;
        EXPECT_EQ(t.a3, 0.8) << na;
    }
}

TEST(chain_terms, a_zero_denominator_is_not_finite)
{
    // lambda f n_alpha + m_alpha = 0: d = 0 in the form through rho.
    const ChainTerms t = chain_terms(-0.5, 0.5, 1.0, 0.0, 0.6, 0.8, 0.75);
    EXPECT_FALSE(std::isfinite(t.a1));
}

} // namespace
} // namespace tobel::test
