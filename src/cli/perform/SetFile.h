#pragma once

#include "cli/perform/RunRoot.h"
#include "offline/OfflineHost.h"
#include "offline/set/SetScript.h"

#include <functional>
#include <optional>

/** Reads a set from its file. @returns nothing after a report of what is wrong */
std::optional<SetScript> readSetFile (const juce::File&);

/** The options of the host that performs a set in a root folder, which outlives the host. */
OfflineHost::Options hostingOf (const SetScript&, const RunRoot&);

/** Performs a set; what happens to it is reported on the error output.
    @param file    the tracks are seen from its folder
    @param print   takes the lines that the set prints; nobody without it
    @returns the paths that were not loaded */
juce::StringArray performSetFile (const SetScript&, OfflineHost&, const juce::File& file,
                                  std::function<void (const juce::String&)> print = {});

/** Reports the paths that were not loaded. @returns the exit code */
int endOfSet (const juce::StringArray& notLoaded);
