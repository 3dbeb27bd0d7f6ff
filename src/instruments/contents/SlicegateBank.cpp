#include "instruments/contents/SlicegateBank.h"

#include "instruments/preset/PresetFile.h"
#include "instruments/slicegate/SlicegateDeckState.h"
#include "support/language/Translate.h"

namespace
{
constexpr auto root = "slicegateBank";

std::string readBank (XmlPullParser& parser, SlicegateBank& bank)
{
    if (auto fault = PresetXml::checkRoot (parser, root); !fault.empty())
        return fault;
    bank.name = PresetXml::nameIn (parser);
    size_t count = 0;
    const auto readPad = [&]() -> std::string
    {
        if (parser.name() != SlicegateXml::root)
            return {};
        if (count == bank.pads.size())
            return N_ ("It holds more than eight pads.");
        return SlicegateXml::read (parser, bank.pads[count++]);
    };
    if (auto fault = PresetXml::readChildren (parser, readPad); !fault.empty())
        return fault;
    return count == bank.pads.size() ? std::string() : N_ ("It does not hold eight pads.");
}
}

std::variant<SlicegateBank, std::string> readSlicegateBank (std::string_view bytes)
{
    SlicegateBank bank;
    if (auto fault = PresetXml::readDocument (bytes, [&bank] (XmlPullParser& parser)
                                              { return readBank (parser, bank); });
        !fault.empty())
        return fault;
    return bank;
}

std::string writeSlicegateBank (const SlicegateBank& bank)
{
    auto text = PresetXml::header() + PresetXml::openRoot (root, bank.name, 0);
    for (const auto& pad : bank.pads)
        text += SlicegateXml::write (pad, 2);
    return text + "</" + root + ">\n";
}

SlicegateBank bankOf (const SlicegateDeckState& deck)
{
    SlicegateBank bank;
    for (int pad = 0; pad < padCount; ++pad)
        bank.pads[static_cast<size_t> (pad)] = deck.preset (pad);
    return bank;
}

void loadBank (SlicegateDeckState& deck, const SlicegateBank& bank)
{
    for (int pad = 0; pad < padCount; ++pad)
        deck.load (pad, bank.pads[static_cast<size_t> (pad)]);
}

std::string loadBank (SlicegateDeckState& deck, const juce::File& file)
{
    return PresetFile::load (file, &readSlicegateBank,
                             [&deck] (const SlicegateBank& bank) { loadBank (deck, bank); });
}

std::string saveBank (const SlicegateDeckState& deck, const juce::File& file)
{
    auto bank = bankOf (deck);
    bank.name = file.getFileNameWithoutExtension().toStdString();
    return PresetFile::write (file, writeSlicegateBank (bank));
}
