#include "midi/script/ScriptSetup.h"

std::optional<ScriptSetup> parseScriptSetup (std::unique_ptr<juce::InputStream> source)
{
    using Event = XmlPullParser::Event;
    XmlPullParser xml (std::move (source));
    ScriptSetup setup;
    for (auto event = xml.next(); event != Event::finished; event = xml.next())
    {
        if (event == Event::failed
            || (event == Event::start && xml.depth() == 1 && xml.name() != "midiScript"))
            return {};
        if (event != Event::start || xml.depth() != 2 || readPortElement (xml, setup.ports))
            continue;
        const auto* const file = xml.name() == "script" ? xml.attribute ("file") : nullptr;
        if (file != nullptr && !file->empty() && setup.files.size() < ScriptSetup::mostScripts)
            setup.files.addIfNotAlreadyThere (juce::String::fromUTF8 (file->c_str()));
    }
    return setup;
}

juce::String scriptSetupText (const MidiPortSet& ports, const juce::StringArray& files)
{
    juce::XmlElement root ("midiScript");
    root.setAttribute ("version", 2000);
    root.setAttribute ("name", "");
    writePortElements (root, ports);
    for (const auto& file : files)
        root.createNewChildElement ("script")->setAttribute ("file", file);
    return root.toString();
}
