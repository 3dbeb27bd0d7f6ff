#pragma once

/** A page of the preferences that can put its settings back as they were at first. */
struct RestorablePage
{
    virtual ~RestorablePage() = default;

    /** Resets the page's settings, and no others. */
    virtual void restoreDefaults() = 0;
};
