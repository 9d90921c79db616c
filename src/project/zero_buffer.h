// The storage of the per-node grids. A search's working copies of the
// project each hold every grid of the mesh, yet their trials write only
// their slides and most of each grid stays at zero. So the storage comes
// zero-filled from calloc, and a copy writes only the pages of its source
// that hold other bits than zeros. A block the C library maps apart (large
// ones: see the search's runner) comes as pages the system commits only
// once they are written: a copy then costs memory for what its source and
// its own trials set, not for the mesh.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace tobel {

// Whether the n bytes at b are all zero bits.
inline bool all_zero_bytes(const unsigned char* b, std::size_t n)
{
    unsigned char any = 0;
    for (std::size_t i = 0; i < n; ++i)
        any |= b[i];
    return any == 0;
}

// Elements whose all-zero bits are the value T{} (numbers and flags).
template <class T> class ZeroBuffer {
    static_assert(std::is_trivially_copyable_v<T> && std::is_arithmetic_v<T>);

  public:
    using value_type = T;
    using iterator = T*;
    using const_iterator = const T*;

    ZeroBuffer() = default;
    explicit ZeroBuffer(std::size_t n) { allocate(n); }
    ZeroBuffer(const ZeroBuffer& o)
    {
        allocate(o.n_);
        copy_pages(o.p_, true);
    }
    ZeroBuffer(ZeroBuffer&& o) noexcept : p_(std::exchange(o.p_, nullptr)), n_(std::exchange(o.n_, 0)) {}
    ZeroBuffer& operator=(const ZeroBuffer& o)
    {
        if (this == &o)
            return *this;
        if (n_ != o.n_) {
            ZeroBuffer t(o);
            swap(t);
        } else {
            copy_pages(o.p_, false);
        }
        return *this;
    }
    ZeroBuffer& operator=(ZeroBuffer&& o) noexcept
    {
        ZeroBuffer t(std::move(o));
        swap(t);
        return *this;
    }
    ~ZeroBuffer() { std::free(p_); }

    void swap(ZeroBuffer& o) noexcept
    {
        std::swap(p_, o.p_);
        std::swap(n_, o.n_);
    }

    // n elements, all x; a new size takes fresh storage. Zeros are written
    // only over pages that hold anything else.
    void assign(std::size_t n, T x)
    {
        const T zero{};
        const bool zeros = std::memcmp(&x, &zero, sizeof(T)) == 0;
        if (n != n_) {
            ZeroBuffer t(n);
            swap(t);
            if (zeros)
                return;
        }
        if (zeros)
            copy_pages(nullptr, false);
        else
            std::fill(begin(), end(), x);
    }

    std::size_t size() const { return n_; }
    bool empty() const { return n_ == 0; }
    T* data() { return p_; }
    const T* data() const { return p_; }
    T* begin() { return p_; }
    T* end() { return p_ + n_; }
    const T* begin() const { return p_; }
    const T* end() const { return p_ + n_; }
    T& operator[](std::size_t i) { return p_[i]; }
    const T& operator[](std::size_t i) const { return p_[i]; }

    // Element by element, as the values compare (a NaN equals nothing).
    friend bool operator==(const ZeroBuffer& a, const ZeroBuffer& b)
    {
        return a.n_ == b.n_ && std::equal(a.begin(), a.end(), b.begin());
    }

  private:
    T* p_ = nullptr;
    std::size_t n_ = 0;

    void allocate(std::size_t n)
    {
        if (n == 0)
            return;
        p_ = static_cast<T*>(std::calloc(n, sizeof(T)));
        if (p_ == nullptr)
            throw std::bad_alloc();
        n_ = n;
    }

    // Makes this bit for bit the n_ elements at from (all zeros when null), a
    // page at a time: a page that is zero in both (as all of fresh storage
    // is) is not written.
    void copy_pages(const T* from, bool fresh)
    {
        constexpr std::uintptr_t page = 4096;
        auto* d = reinterpret_cast<unsigned char*>(p_);
        const auto* s = reinterpret_cast<const unsigned char*>(from);
        const std::size_t bytes = n_ * sizeof(T);
        std::size_t at = 0;
        while (at < bytes) {
            // Chunks end on the page boundaries of the destination.
            const std::uintptr_t next = (reinterpret_cast<std::uintptr_t>(d + at) / page + 1) * page;
            const std::size_t len = std::min<std::size_t>(
                bytes - at, std::size_t(next - reinterpret_cast<std::uintptr_t>(d + at)));
            if (s != nullptr && !all_zero_bytes(s + at, len))
                std::memcpy(d + at, s + at, len);
            else if (!fresh && !all_zero_bytes(d + at, len))
                std::memset(d + at, 0, len);
            at += len;
        }
    }
};

} // namespace tobel
