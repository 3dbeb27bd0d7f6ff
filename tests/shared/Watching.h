#pragma once

#include "library/import/ImportProgress.h"

#include <gtest/gtest.h>

/** Checks that the progress of an import or export rises, and cancels after so many steps. */
class Watching : public ImportProgress
{
public:
    explicit Watching (int steps = 1 << 30) : left (steps) {}

    void setProgress (double part) override
    {
        EXPECT_GE (part, last);
        EXPECT_LE (part, 1.0);
        last = part;
        --left;
    }

    void setStatusText (const juce::String& text) override { texts.add (text); }
    bool shouldExit() const override { return left <= 0; }

    juce::StringArray texts;
    double last = 0.0;

private:
    int left;
};
