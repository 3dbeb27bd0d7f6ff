#pragma once

#include <functional>
#include <memory>
#include <utility>

/** A part of a window that can be made anew, as for another language. There is always one. Message thread. */
template <typename Part>
class RemadePart
{
public:
    using Make = std::function<std::unique_ptr<Part>()>;

    /** @param make   makes the part, now and each time; never null */
    explicit RemadePart (Make m) : make (std::move (m)), part (make()) {}

    /** Ends the part, then makes the next one. */
    void remake()
    {
        part.reset();
        part = make();
    }

    Part* operator->() const noexcept { return part.get(); }
    Part& operator*() const noexcept { return *part; }

private:
    const Make make;
    std::unique_ptr<Part> part;
};
