#include "midi/mapping/MidiMappingFile.h"

#include "support/files/ReplaceFile.h"
#include "support/xml/XmlPullParser.h"

#include <algorithm>
#include <array>

namespace
{
constexpr int fileVersion = 2000;

/** The attribute that only this program reads, and the words in it. */
constexpr const char* featureAttribute = "features";

struct FeatureWord
{
    MidiControlFeature feature;
    const char* word;
};

constexpr std::array featureWords { FeatureWord { MidiControlFeature::fine, "14bit" },
                                    FeatureWord { MidiControlFeature::takeover, "takeover" },
                                    FeatureWord { MidiControlFeature::wheel, "wheel" } };

int number (const XmlPullParser& xml, const char* name)
{
    const auto* text = xml.attribute (name);
    return text != nullptr ? static_cast<int> (std::clamp<juce::int64> (
               juce::String (juce::CharPointer_UTF8 (text->c_str())).getLargeIntValue(), -1, 1 << 20))
                           : 0;
}

/** Reads the features of a row; those that no control type of its command has are left out. */
MidiControlFeature readFeatures (const XmlPullParser& xml, int id, MidiControlType type)
{
    auto all = MidiControlFeature::none;
    if (const auto* text = xml.attribute (featureAttribute))
        for (const auto& each : featureWords)
            if (text->find (each.word) != std::string::npos)
                all = all | each.feature;
    if (all == MidiControlFeature::none)
        return all;
    const auto choices = controlChoices (id);
    const auto isOffered =
        std::any_of (choices.begin(), choices.end(),
                     [&] (const auto& choice) { return choice.type == type && choice.features == all; });
    return isOffered ? all : MidiControlFeature::none;
}

/** @param id   a command */
MidiMappingRow readRow (const XmlPullParser& xml, int id)
{
    MidiMappingRow row { std::clamp (number (xml, "status"), 0, 255),
                         std::clamp (number (xml, "data"), 0, 255), std::clamp (number (xml, "res0"), 0, 3) };
    row.features = readFeatures (xml, id, row.type());
    return row;
}

juce::String writtenFeatures (MidiControlFeature features)
{
    juce::StringArray words;
    for (const auto& each : featureWords)
        if (has (features, each.feature))
            words.add (each.word);
    return words.joinIntoString (" ");
}
}

std::optional<MidiMappingFile> parseMidiMapping (std::unique_ptr<juce::InputStream> source)
{
    using Event = XmlPullParser::Event;
    XmlPullParser xml (std::move (source));
    MidiMappingFile file;
    bool isInControls = false;
    for (;;)
    {
        const auto event = xml.next();
        if (event == Event::failed)
            return {};
        if (event == Event::finished)
            return file;
        if (event == Event::end && xml.depth() == 1)
            isInControls = false;
        if (event != Event::start)
            continue;
        if (xml.depth() == 1)
        {
            if (xml.name() != "midiMapping")
                return {};
            if (xml.attribute ("lamps") != nullptr)
                file.showsLamps = number (xml, "lamps") > 0;
        }
        else if (xml.depth() == 2)
            isInControls = xml.name() == "controls";
        else if (xml.depth() == 3 && isInControls && xml.name() == "value")
        {
            const auto id = number (xml, "id");
            if (MidiMapping::isCommand (id))
                file.rows.emplace_back (id, readRow (xml, id));
        }
    }
}

juce::String mappingText (const MidiMapping& mapping)
{
    juce::XmlElement root ("midiMapping");
    root.setAttribute ("version", fileVersion);
    root.setAttribute ("name", "");
    if (mapping.showsLamps)
        root.setAttribute ("lamps", 1);
    auto* controls = root.createNewChildElement ("controls");
    for (int id = 0; id < MidiMapping::rowCount; ++id)
    {
        const auto row = mapping.row (id);
        auto* value = controls->createNewChildElement ("value");
        value->setAttribute ("id", id);
        value->setAttribute ("status", row.status);
        value->setAttribute ("data", row.data);
        value->setAttribute ("res0", row.controlType);
        value->setAttribute ("res1", row.spare);
        if (row.features != MidiControlFeature::none)
            value->setAttribute (featureAttribute, writtenFeatures (row.features));
    }
    return root.toString();
}

bool loadMidiMapping (const juce::File& file, MidiMapping& mapping)
{
    if (!file.existsAsFile())
        return false;
    const auto content = parseMidiMapping (file.createInputStream());
    if (!content)
        return false;
    for (const auto& [id, row] : content->rows)
        mapping.setRow (id, row);
    if (content->showsLamps)
        mapping.showsLamps = *content->showsLamps;
    return true;
}

bool saveMidiMapping (const MidiMapping& mapping, const juce::File& file)
{
    const auto text = mappingText (mapping);
    return replaceFile (file, text.toRawUTF8(), text.getNumBytesAsUTF8());
}
