#pragma once

#include <atomic>
#include <type_traits>

/** A field that one thread writes and others read without a lock.

    It reads and writes like a plain T, as single relaxed atomic accesses, and has T's size and alignment.
    It orders nothing: use Published where the reader goes on to read what the writer wrote before.
    Read-modify-write (+=) is a load and a store, not one atomic step: one writer at a time. */
template <typename T>
class Relaxed
{
    static_assert (std::is_trivially_copyable_v<T> && sizeof (T) <= 8);

public:
    constexpr Relaxed() noexcept = default;
    constexpr Relaxed (T initial) noexcept : value (initial) {}
    Relaxed (const Relaxed& other) noexcept : value (other.get()) {}

    Relaxed& operator= (const Relaxed& other) noexcept
    {
        set (other.get());
        return *this;
    }

    T operator= (T next) noexcept
    {
        set (next);
        return next;
    }

    operator T() const noexcept { return get(); }
    T get() const noexcept
    {
        return std::atomic_ref<T> (const_cast<T&> (value)).load (std::memory_order_relaxed);
    }
    void set (T next) noexcept { std::atomic_ref<T> (value).store (next, std::memory_order_relaxed); }

    T operator+= (T step) noexcept { return *this = static_cast<T> (get() + step); }
    T operator-= (T step) noexcept { return *this = static_cast<T> (get() - step); }
    T operator*= (T factor) noexcept { return *this = static_cast<T> (get() * factor); }

private:
    alignas (sizeof (T)) T value {};
};

static_assert (sizeof (Relaxed<double>) == 8 && sizeof (Relaxed<signed char>) == 1);

/** A counter whose rise publishes what was written before it: the writer stores with release order, a reader that
    sees the value sees everything written before the store. */
template <typename T>
class Published
{
public:
    constexpr Published() noexcept = default;
    constexpr Published (T initial) noexcept : value (initial) {}
    Published (const Published& other) noexcept : value (other.get()) {}

    Published& operator= (const Published& other) noexcept
    {
        *this = other.get();
        return *this;
    }

    T operator= (T next) noexcept
    {
        value.store (next, std::memory_order_release);
        return next;
    }

    operator T() const noexcept { return value.load (std::memory_order_acquire); }
    T get() const noexcept { return value.load (std::memory_order_acquire); }

private:
    std::atomic<T> value {};
    static_assert (std::atomic<T>::is_always_lock_free);
};
