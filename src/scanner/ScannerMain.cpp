#include "scanner/ScannerLoop.h"

#include <juce_events/juce_events.h>

#include <cstring>

/** The scanner process: loads plug-ins for the program that has started it, so that one that crashes or hangs takes only this
    process with it. `platterdex-scanner scan yes|no MAILBOX`; the second word is carried out by whoever starts it, by
    the display it gives. */
int main (int argc, char** argv)
{
    if (argc != 4 || std::strcmp (argv[1], "scan") != 0)
        return 2;
    const juce::ScopedJuceInitialiser_GUI juce;
    return runScanner (argv[3]);
}
