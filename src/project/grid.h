// Run-time sized grids of the project. Indices are 1-based in meaning; index 0
// of every dimension exists and stays unused, as in the rest of the system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tobel {

// Values by mesh row (0..rows) and mesh column (0..cols).
template <class T> struct Grid2 {
    int rows = 0;
    int cols = 0;
    std::vector<T> v;

    // Sizes to 0..r by 0..c and fills with zeros; contents are not kept.
    void redim(int r, int c)
    {
        rows = r < 0 ? 0 : r;
        cols = c < 0 ? 0 : c;
        v.assign(std::size_t(rows + 1) * std::size_t(cols + 1), T{});
    }
    // Where node (i, j) lies in v: grids of one mesh share it, so that one
    // index reads every column grid of a node.
    std::size_t index(int i, int j) const { return std::size_t(i) * std::size_t(cols + 1) + std::size_t(j); }
    T& operator()(int i, int j) { return v[index(i, j)]; }
    const T& operator()(int i, int j) const { return v[index(i, j)]; }
    void fill(T x) { v.assign(v.size(), x); }
};

// Elevations by mesh row, mesh column and surface index. The surface index
// runs fastest so that the layers of one node lie together, which is what the
// column evaluation walks through.
struct Grid3 {
    int rows = 0;
    int cols = 0;
    int planes = 0;
    std::vector<float> v;

    void redim(int r, int c, int k)
    {
        rows = r < 0 ? 0 : r;
        cols = c < 0 ? 0 : c;
        planes = k < 0 ? 0 : k;
        v.assign(std::size_t(rows + 1) * std::size_t(cols + 1) * std::size_t(planes + 1), 0.0f);
    }
    std::size_t at(int i, int j, int k) const
    {
        return (std::size_t(i) * std::size_t(cols + 1) + std::size_t(j)) * std::size_t(planes + 1) +
               std::size_t(k);
    }
    float& operator()(int i, int j, int k) { return v[at(i, j, k)]; }
    float operator()(int i, int j, int k) const { return v[at(i, j, k)]; }
};

} // namespace tobel
