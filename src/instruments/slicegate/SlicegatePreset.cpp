#include "instruments/slicegate/SlicegatePreset.h"

#include "support/language/Translate.h"

#include <algorithm>
#include <array>

namespace
{
/** One option of a pad: each child of `options` is asked for both. */
void readOption (const XmlPullParser& parser, SlicegatePreset& preset)
{
    if (parser.attribute ("play_mode") != nullptr)
        preset.playMode =
            static_cast<PlayMode> (std::clamp (PresetXml::numberIn (parser, "play_mode", 0), 0, 2));
    if (parser.attribute ("advance_mode") != nullptr)
        preset.rolling = PresetXml::numberIn (parser, "advance_mode", 1) > 0;
}
}

std::string SlicegateXml::read (XmlPullParser& parser, SlicegatePreset& preset)
{
    if (auto fault = PresetXml::checkRoot (parser, root); !fault.empty())
        return fault;
    preset.name = PresetXml::nameIn (parser);
    auto curves = 0;
    const auto readCurve = [&]() -> std::string
    {
        if (parser.name() != "Env" || curves == 2)
            return {};
        return PresetXml::readCurve (parser, curves++ == 0 ? preset.time : preset.volume);
    };
    const auto readPart = [&]() -> std::string
    {
        if (parser.name() == "envelopes")
            return PresetXml::readChildren (parser, readCurve);
        if (parser.name() != "options")
            return {};
        preset.playMode = PlayMode::oneShot;
        preset.rolling = true;
        return PresetXml::readChildren (parser,
                                        [&]() -> std::string
                                        {
                                            readOption (parser, preset);
                                            return {};
                                        });
    };
    if (auto fault = PresetXml::readChildren (parser, readPart); !fault.empty())
        return fault;
    return curves == 2 ? std::string() : N_ ("It does not hold a pad's two curves.");
}

std::string SlicegateXml::write (const SlicegatePreset& preset, int indent)
{
    const std::string blanks (static_cast<size_t> (indent), ' ');
    const auto option = [&] (const char* name, int value)
    { return blanks + "    <value " + name + "=\"" + std::to_string (value) + "\"/>\n"; };

    auto text = PresetXml::openRoot (root, preset.name, indent);
    text += blanks + "  <envelopes>\n";
    for (const auto* curve : { &preset.time, &preset.volume })
        text += PresetXml::write (*curve, indent + 4);
    text += blanks + "  </envelopes>\n" + blanks + "  <options>\n";
    text += option ("play_mode", static_cast<int> (preset.playMode.value_or (PlayMode::oneShot)));
    text += option ("advance_mode", preset.rolling.value_or (true) ? 1 : 0);
    return text + blanks + "  </options>\n" + blanks + "</" + root + ">\n";
}

std::variant<SlicegatePreset, std::string> readSlicegatePreset (std::string_view bytes)
{
    SlicegatePreset preset;
    if (auto fault = PresetXml::readDocument (bytes, [&preset] (XmlPullParser& parser)
                                              { return SlicegateXml::read (parser, preset); });
        !fault.empty())
        return fault;
    return preset;
}

std::string writeSlicegatePreset (const SlicegatePreset& preset)
{
    return PresetXml::header() + SlicegateXml::write (preset);
}
