#include "midi/native/table/ModelPage.h"

#include "midi/native/table/ModelList.h"

#include <algorithm>

namespace
{
juce::String addressText (const Address& address)
{
    const auto channel = " ch. " + juce::String (address.channel() + 1);
    switch (address.status >> 4)
    {
    case 0x9:
        return "note " + juce::String (address.data) + channel;
    case 0xb:
        return "CC " + juce::String (address.data) + channel;
    case 0xe:
        return "bend" + channel;
    default:
        return {};
    }
}

juce::String layerText (const Layer& layer)
{
    juce::StringArray words;
    if (layer.shift >= 0)
        words.add (layer.shift != 0 ? "with shift" : "without shift");
    if (layer.deckMode >= 0)
        words.add ("pad layer " + juce::String (layer.deckMode + 1));
    if (layer.surfaceMode >= 0)
        words.add ("layer " + juce::String (layer.surfaceMode + 1));
    return words.joinIntoString (", ");
}

const char* formText (Form form) noexcept
{
    switch (form)
    {
    case Form::press:
        return "press";
    case Form::absolute:
    case Form::centre64:
    case Form::centre63:
        return "place";
    case Form::inverted:
    case Form::centreInverted:
        return "place, turned round";
    case Form::fine16:
    case Form::fine32:
    case Form::bend:
        return "place, 14 bits";
    case Form::bendInverted:
        return "place, 14 bits, turned round";
    default:
        return "steps";
    }
}

const char* const sideText[] { "", "left side", "right side", "chosen deck" };

juce::String cells (const Addresses& at, Decks decks)
{
    juce::String text;
    for (size_t i = 0; i < at.size(); ++i)
        text << (i == 0 && decks != Decks::listed
                     ? sideText[static_cast<size_t> (decks)] + juce::String (": ")
                     : juce::String())
             << addressText (at[i]) << " | ";
    return text.trimEnd();
}

juce::String lampText (const Model& model, const Control& control)
{
    juce::StringArray all;
    for (const auto& lamp : model.lamps)
        if (lamp.function == control.function && lamp.decks == control.decks)
            for (const auto& address : lamp.at)
                if (address.isSet())
                    all.addIfNotAlreadyThere (addressText (address));
    return all.joinIntoString (", ");
}

bool hasControl (const Model& model, const Lamp& lamp)
{
    return std::ranges::any_of (model.controls, [&lamp] (const auto& control)
                                { return control.function == lamp.function && control.decks == lamp.decks; });
}

juce::String controlTable (const Model& model)
{
    juce::String text ("| Function | Deck A | Deck B | Deck C | Deck D | Values | Layer | Lamps |\n"
                       "|---|---|---|---|---|---|---|---|\n");
    for (const auto& control : model.controls)
        text << "| " << functionText (control.function) << " | " << cells (control.at, control.decks) << " "
             << formText (control.form) << " | " << layerText (control.layer) << " | "
             << lampText (model, control) << " |\n";
    return text;
}

juce::String lampTable (const Model& model)
{
    juce::String rows;
    for (const auto& lamp : model.lamps)
        if (!hasControl (model, lamp))
            rows << "| " << functionText (lamp.function) << " | " << cells (lamp.at, lamp.decks) << " "
                 << layerText (lamp.layer) << " |\n";
    return rows.isEmpty() ? juce::String()
                          : "\nFurther lamps:\n\n| Shows | Deck A | Deck B | Deck C | Deck D | Layer "
                            "|\n|---|---|---|---|---|---|\n"
                                + rows;
}

/** The names of controls without functions, as the mapping editor shows them beside what they send. */
juce::String nameTable (int model)
{
    juce::String rows;
    for (const auto& each : ModelList::namedControls (model))
        rows << "| " << juce::String (std::string (each.name)) << " | " << addressText (each.at) << " |\n";
    return rows.isEmpty() ? juce::String() : "\n| Control | Sends |\n|---|---|\n" + rows;
}
}

juce::String functionText (const Function& function)
{
    const auto& row = rowOf (function.id);
    juce::String text (std::string (row.label));
    const auto isNumbered = row.constant.find ("{n}") != std::string_view::npos
                            || function.id == FunctionId::deckMode || function.id == FunctionId::surfaceMode;
    if (isNumbered)
        text << " " << function.which + 1;
    else if (function.id == FunctionId::selectDeck)
        text << " " << juce::String::charToString (static_cast<juce::juce_wchar> ('A' + function.which));
    else if (function.id == FunctionId::loopBeats || function.id == FunctionId::rollBeats)
    {
        constexpr int beatIndex = 5; // of a loop of one beat
        const int n = function.which;
        text << " "
             << (n >= beatIndex ? juce::String (1 << (n - beatIndex))
                                : "1/" + juce::String (1 << (beatIndex - n)));
    }
    return text;
}

juce::String supportText (int model)
{
    switch (ModelList::entry (model).support)
    {
    case ModelList::Support::native:
        return ModelList::entry (model).table->isDoubtful ? "native, untried" : "native";
    case ModelList::Support::mapping:
        return "mapping";
    case ModelList::Support::namesOnly:
        return "names";
    }
    return {};
}

juce::String modelRemark (int model)
{
    const auto& entry = ModelList::entry (model);
    if (entry.table == nullptr)
        return entry.remark + juce::String (*entry.facts != 0 ? " " : "") + entry.facts;
    juce::String text (std::string (entry.table->remark));
    if (entry.table->isDoubtful)
        text << " The numbers are those of a sister device and nobody has tried them: if one is wrong, write "
                "the table out with"
             << " `platterdex controllers --mapping " << model << "`, change it, and load that instead.";
    return text;
}

juce::String modelPage (int model)
{
    const auto& entry = ModelList::entry (model);
    juce::String text;
    text << "# " << entry.name << "\n\nModel " << model << ": " << supportText (model) << ". "
         << modelRemark (model);
    if (entry.table == nullptr)
        return text << "\n" << nameTable (model);
    return text << "\n\n" << controlTable (*entry.table) << lampTable (*entry.table);
}
