// Run-time sized grids of the project. Indices are 1-based in meaning; index 0
// of every dimension exists and stays unused, as in the rest of the system.
// A copy of a grid costs memory for its non-zero pages only (zero_buffer.h).
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "project/zero_buffer.h"

namespace tobel {

// Values by mesh row (0..rows) and mesh column (0..cols).
template <class T> struct Grid2 {
    int rows = 0;
    int cols = 0;
    ZeroBuffer<T> v;

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
//
// A search's working copies of the project share the elevations: a copy
// holds a snapshot of the user's grid, common to every copy, and takes a row
// from it only when its trials come to that row (take_rows). A trial writes
// the sliding plane and the plane after it over its slide only, and reads
// the layers, so a copy costs memory for the rows of its slides, not for the
// mesh. A routine of a trial takes the rows it reads or writes before it
// comes to them (a reader beyond them may use `read`); a grid of the user's
// project has no snapshot and holds every row.
struct Grid3 {
    int rows = 0;
    int cols = 0;
    int planes = 0;
    ZeroBuffer<float> v;
    std::shared_ptr<const Grid3> snapshot; // what the untaken rows hold
    std::vector<char> taken;               // by row, while there is a snapshot

    void redim(int r, int c, int k)
    {
        rows = r < 0 ? 0 : r;
        cols = c < 0 ? 0 : c;
        planes = k < 0 ? 0 : k;
        v.assign(std::size_t(rows + 1) * std::size_t(cols + 1) * std::size_t(planes + 1), 0.0f);
        snapshot.reset();
        taken.clear();
    }
    std::size_t at(int i, int j, int k) const
    {
#ifdef TOBEL_CHECK_ROWS
        if (snapshot && (i < 0 || i > rows || taken[std::size_t(i)] == 0))
            row_not_taken(i);
#endif
        return (std::size_t(i) * std::size_t(cols + 1) + std::size_t(j)) * std::size_t(planes + 1) +
               std::size_t(k);
    }
    float& operator()(int i, int j, int k)
    {
        return v[at(i, j, k)];
    }
    float operator()(int i, int j, int k) const
    {
        return v[at(i, j, k)];
    }

    // Rows r0..r1 (within 0..rows) hold the snapshot's values, unless taken
    // before and perhaps written since.
    void take_rows(int r0, int r1)
    {
        if (!snapshot || v.empty())
            return;
        r0 = std::max(r0, 0);
        r1 = std::min(r1, rows);
        const std::size_t row_size = std::size_t(cols + 1) * std::size_t(planes + 1);
        for (int r = r0; r <= r1; ++r) {
            char& t = taken[std::size_t(r)];
            if (t != 0)
                continue;
            const std::size_t first = std::size_t(r) * row_size;
            std::memcpy(v.data() + first, snapshot->v.data() + first, row_size * sizeof(float));
            t = 1;
        }
    }
    void take_all_rows()
    {
        take_rows(0, rows);
    }

    // The value at (i, j, k) for a reader that goes beyond the rows of its
    // trial: an untaken row still holds what the snapshot holds.
    float read(int i, int j, int k) const
    {
#ifdef TOBEL_CHECK_ROWS
        if (snapshot && (i < 0 || i > rows))
            row_not_taken(i);
#endif
        if (snapshot && taken[std::size_t(i)] == 0)
            return (*snapshot)(i, j, k);
        return (*this)(i, j, k);
    }

  private:
    [[noreturn]] static void row_not_taken(int i)
    {
        std::fprintf(stderr, "elevations: row %d read before it was taken from the snapshot\n", i);
        std::abort();
    }
};

// A working copy's elevations: those of the snapshot, no row taken yet.
inline Grid3 grid_over_snapshot(std::shared_ptr<const Grid3> s)
{
    Grid3 g;
    g.rows = s->rows;
    g.cols = s->cols;
    g.planes = s->planes;
    g.v = ZeroBuffer<float>(s->v.size());
    g.taken.assign(std::size_t(g.rows + 1), 0);
    g.snapshot = std::move(s);
    return g;
}

} // namespace tobel
