#include "support/files/OwnBinary.h"

#include <dlfcn.h>
#include <sys/auxv.h>

juce::File ownBinary()
{
    Dl_info own {}, program {};
    const auto isFound = dladdr (reinterpret_cast<const void*> (&ownBinary), &own) != 0
                         && dladdr (reinterpret_cast<const void*> (getauxval (AT_ENTRY)), &program) != 0;
    // A program that the shell has found by its name alone knows no path of its own.
    if (!isFound || own.dli_fbase == program.dli_fbase)
        return juce::File ("/proc/self/exe").getLinkedTarget();
    return juce::File::getCurrentWorkingDirectory().getChildFile (
        juce::String (juce::CharPointer_UTF8 (own.dli_fname)));
}
