#include "instruments/sampler/SamplerBank.h"

#include "instruments/sampler/SamplerSlot.h"

#include <algorithm>

namespace
{
constexpr int version = 2000;
constexpr const char *rootName = "samplerBank", *listName = "samples", *sampleName = "value";

juce::String textOf (const XmlPullParser& parser, const char* attribute)
{
    const auto* found = parser.attribute (attribute);
    return found != nullptr ? juce::String::fromUTF8 (found->data(), static_cast<int> (found->size()))
                            : juce::String();
}

std::optional<SamplerBank::Sample> sampleOf (const XmlPullParser& parser)
{
    SamplerBank::Sample sample;
    const auto number = textOf (parser, "slot_number").trim();
    sample.slot = number.getIntValue();
    if (number.isEmpty() || !number.containsOnly ("0123456789") || number.length() > 2
        || sample.slot >= SamplerBank::padCount)
        return {};
    sample.filePath = textOf (parser, "filepath");
    sample.name = textOf (parser, "name");
    const auto mode = textOf (parser, "play_mode").getIntValue();
    sample.playMode = mode >= 0 && mode < samplePlayModeCount ? mode : 0;
    sample.followsVelocity = textOf (parser, "velocity").getIntValue() != 0;
    sample.isUnsaved = textOf (parser, "unsaved").getIntValue() != 0;
    return sample;
}
}

std::optional<SamplerBank> SamplerBank::read (XmlPullParser parser)
{
    using Event = XmlPullParser::Event;
    SamplerBank bank;
    auto isBank = false, isInList = false;
    for (;;)
    {
        const auto event = parser.next();
        if (event == Event::finished || event == Event::failed)
            break;
        if (event == Event::end && parser.depth() == 1)
            isInList = false;
        if (event != Event::start)
            continue;
        if (parser.depth() == 1)
        {
            if (parser.name() != rootName)
                return {};
            isBank = true;
            bank.name = textOf (parser, "name");
        }
        else if (parser.depth() == 2)
        {
            isInList = parser.name() == listName;
        }
        else if (parser.depth() == 3 && isInList && parser.name() == sampleName)
        {
            auto sample = sampleOf (parser);
            if (!sample)
                continue;
            std::erase_if (bank.samples, [&] (const auto& other) { return other.slot == sample->slot; });
            bank.samples.push_back (std::move (*sample));
        }
    }
    return isBank ? std::optional (std::move (bank)) : std::nullopt;
}

juce::String SamplerBank::toXml() const
{
    juce::XmlElement root (rootName);
    root.setAttribute ("version", version);
    root.setAttribute ("name", name);
    auto* list = root.createNewChildElement (listName);
    for (const auto& sample : samples)
    {
        auto* value = list->createNewChildElement (sampleName);
        value->setAttribute ("slot_number", sample.slot);
        value->setAttribute ("filepath", sample.filePath);
        value->setAttribute ("name", sample.name);
        value->setAttribute ("play_mode", sample.playMode);
        if (sample.followsVelocity)
            value->setAttribute ("velocity", 1);
        if (sample.isUnsaved)
            value->setAttribute ("unsaved", 1);
    }
    return root.toString();
}
