#pragma once

#include "midi/ports/PortElements.h"

/** The file "script_setup.xml": the ports of the scripts, and their files in the order of their loading. */
struct ScriptSetup
{
    static constexpr int mostScripts = 32;

    PortLists ports;
    juce::StringArray files;
};

/** Reads a set-up. Takes any bytes. A second mention of a file is dropped, and so are files beyond mostScripts.
    @returns nothing if the bytes are none as a whole */
std::optional<ScriptSetup> parseScriptSetup (std::unique_ptr<juce::InputStream>);

/** The text of a set-up file: programs that know one script alone take the last. */
juce::String scriptSetupText (const MidiPortSet&, const juce::StringArray& files);
