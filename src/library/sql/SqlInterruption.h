#pragma once

#include <stop_token>

/** Ends the statements of the thread that made it, as long as it lives, once the token is stopped: within some thousand
    of SQLite's steps. Statements of other threads on the same connection are never hit. */
class SqlInterruption
{
public:
    explicit SqlInterruption (std::stop_token);
    ~SqlInterruption();
    SqlInterruption (const SqlInterruption&) = delete;
    SqlInterruption& operator= (const SqlInterruption&) = delete;

    /** True if the calling thread's statements are to end. */
    static bool isDue();

private:
    const std::stop_token token;
    const SqlInterruption* const outer;
};
