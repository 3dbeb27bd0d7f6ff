#include "instruments/smartknob/SmartKnobPreset.h"

SmartKnobPreset SmartKnobPreset::empty()
{
    SmartKnobPreset preset;
    preset.rows.resize (SmartKnobRows::count,
                        PresetXml::Curve { .envelope = {}, .visible = false, .enabled = false });
    return preset;
}

std::string SmartKnobXml::read (XmlPullParser& parser, SmartKnobPreset& preset)
{
    if (auto fault = PresetXml::checkRoot (parser, root); !fault.empty())
        return fault;
    preset.name = PresetXml::nameIn (parser);
    const auto readRow = [&]() -> std::string
    {
        if (parser.name() != "Env" || preset.rows.size() == static_cast<size_t> (SmartKnobRows::count))
            return {};
        return PresetXml::readCurve (parser, preset.rows.emplace_back());
    };
    return PresetXml::readChildren (parser,
                                    [&]() -> std::string
                                    {
                                        if (parser.name() != "envelopes")
                                            return {};
                                        return PresetXml::readChildren (parser, readRow);
                                    });
}

std::string SmartKnobXml::write (const SmartKnobPreset& preset, int indent)
{
    const std::string blanks (static_cast<size_t> (indent), ' ');
    auto text = PresetXml::openRoot (root, preset.name, indent);
    text += blanks + "  <envelopes>\n";
    for (const auto& row : preset.rows)
        text += PresetXml::write (row, indent + 4);
    return text + blanks + "  </envelopes>\n" + blanks + "</" + root + ">\n";
}

std::variant<SmartKnobPreset, std::string> readSmartKnobPreset (std::string_view bytes)
{
    SmartKnobPreset preset;
    if (auto fault = PresetXml::readDocument (bytes, [&preset] (XmlPullParser& parser)
                                              { return SmartKnobXml::read (parser, preset); });
        !fault.empty())
        return fault;
    return preset;
}

std::string writeSmartKnobPreset (const SmartKnobPreset& preset)
{
    return PresetXml::header() + SmartKnobXml::write (preset);
}
