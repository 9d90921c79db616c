// Two doubles worked on by one instruction, and the mask of a comparison of
// two such: the compiler's vector types, for the few loops over a trial's
// columns that the optimiser does not turn into vector instructions itself.
// Every lane goes through the same operations in the same order as the
// scalar code it stands for, so the results are the same bit for bit.
#pragma once

#include <cstring>

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

} // namespace tobel
