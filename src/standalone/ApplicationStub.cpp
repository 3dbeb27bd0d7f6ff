#include "standalone/Application.h"
#include "standalone/Verb.h"

int runApplication (const juce::StringArray& arguments)
{
    if (!arguments.isEmpty())
        return failWith ("There is no option " + arguments[0] + "; see platterdex --help.");
    return failWith ("This build has no window; see platterdex --help for what it can do without one.");
}
