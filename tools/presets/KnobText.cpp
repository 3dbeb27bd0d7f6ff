#include "KnobText.h"

#include "CurveText.h"

#include "fx/EffectSlot.h"
#include "fx/effect/BeatSteps.h"

#include <algorithm>
#include <charconv>
#include <sstream>

namespace
{
using CurveText::Fault;

constexpr CurveText::Ends wholeTurn { .last = 1.0, .scale = 4.0 };
constexpr int slotCount = 3;

std::string trimmed (const std::string& text)
{
    const auto first = text.find_first_not_of (" \t\r"), last = text.find_last_not_of (" \t\r");
    return first == std::string::npos ? std::string() : text.substr (first, last - first + 1);
}

/** Takes a text in quotes off the front. */
std::string takeQuoted (std::string& text)
{
    const auto close = text.size() > 1 && text.front() == '"' ? text.find ('"', 1) : std::string::npos;
    if (close == std::string::npos)
        throw Fault ("A name stands in quotes.");
    const auto name = text.substr (1, close - 1);
    text = trimmed (text.substr (close + 1));
    return name;
}

int takeNumber (std::string& text)
{
    int number = 0;
    const auto [stopped, error] = std::from_chars (text.data(), text.data() + text.size(), number);
    if (error != std::errc {})
        throw Fault ("A number is missing.");
    text = trimmed (text.substr (static_cast<size_t> (stopped - text.data())));
    return number;
}

int rowOf (SmartKnobRow ofSlot1, int slot)
{
    return static_cast<int> (ofSlot1) + slot;
}

/** The effects by their names without blanks. */
std::optional<double> effectOf (std::string_view word)
{
    for (int index = 0; index < FxType::count; ++index)
    {
        std::string name (FxType::name (index));
        std::erase (name, ' ');
        if (name == word)
            return FxType::selectorValue (index);
    }
    return {};
}

template <size_t count>
std::optional<double> stepOf (const std::array<BeatSteps::Step, count>& steps, std::string_view word)
{
    for (size_t i = 0; i < count; ++i)
        if (word == steps[i].text || word == std::string (steps[i].text) + "bar")
            return (static_cast<double> (i) + 0.5) / static_cast<double> (count);
    return {};
}

/** One preset on its way: its curves, and the effect that each slot holds. */
class Maker
{
public:
    Maker() { preset.content = SmartKnobPreset::empty(); }

    /** Reads a line such as "FX1 Param  1/8". */
    void addRow (const std::string& line)
    {
        for (int row = 0; row < SmartKnobRows::count; ++row)
            if (const std::string name (SmartKnobRows::row (row).name);
                line.starts_with (name) && line.size() > name.size() && line[name.size()] == ' ')
                return setRow (row, trimmed (line.substr (name.size())));
        throw Fault ("No row has the name at the start of \"" + line + "\".");
    }

    /** Switches the slots off that a preset of effects does not use, so that it sounds as named whatever they hold. */
    KnobText::Preset finish()
    {
        for (int slot = 0; slot < slotCount && usesEffects; ++slot)
            if (const auto row = rowOf (SmartKnobRow::fx1On, slot); !at (row).enabled)
                set (row, CurveText::step (0.0, 1.0, 0.0, wholeTurn));
        return preset;
    }

    KnobText::Preset preset;

private:
    PresetXml::Curve& at (int row) { return preset.content.rows[static_cast<size_t> (row)]; }

    void set (int row, const Envelope& envelope) { at (row) = { envelope, true, true }; }

    void setRow (int row, const std::string& text)
    {
        if (at (row).enabled)
            throw Fault ("The row " + std::string (SmartKnobRows::row (row).name) + " stands there twice.");
        const auto slotOf = [row] (SmartKnobRow first)
        {
            const auto slot = row - static_cast<int> (first);
            return slot >= 0 && slot < slotCount ? slot : -1;
        };
        if (const auto slot = slotOf (SmartKnobRow::fx1Select); slot >= 0)
            return setEffect (row, slot, text);
        if (slotOf (SmartKnobRow::fx1On) >= 0)
            return set (row, switchCurve (text));
        if (const auto slot = slotOf (SmartKnobRow::fx1Param); slot >= 0)
            return set (row, CurveText::read (text, wholeTurn,
                                              [this, slot] (std::string_view word)
                                              { return paramOf (slot, word); }));
        set (row, CurveText::read (text, wholeTurn));
    }

    void setEffect (int row, int slot, const std::string& text)
    {
        usesEffects = true;
        // The first effect that is named gives the steps their meaning.
        const auto remember = [this, slot] (std::string_view word)
        {
            auto& own = effects[static_cast<size_t> (slot)];
            if (own.empty())
                own = word;
            return effectOf (word);
        };
        set (row, CurveText::read (text, wholeTurn, remember));
    }

    std::optional<double> paramOf (int slot, std::string_view word) const
    {
        const auto& effect = effects[static_cast<size_t> (slot)];
        if (effect.empty())
            throw Fault ("The step of a slot comes after its effect.");
        return effect == "Delay" ? stepOf (BeatSteps::delay, word) : stepOf (BeatSteps::modulation, word);
    }

    /** "on", "off", "on after PLACE", "on before PLACE", or a curve. */
    static Envelope switchCurve (const std::string& text)
    {
        const auto place = [&text] (std::string_view start)
        { return CurveText::read (text.substr (start.size()), wholeTurn).point (0).value; };
        if (text == "on" || text == "off")
            return CurveText::step (text == "on", 1.0, text == "on", wholeTurn);
        if (text.starts_with ("on after "))
            return CurveText::step (0.0, place ("on after "), 1.0, wholeTurn);
        if (text.starts_with ("on before "))
            return CurveText::step (1.0, place ("on before "), 0.0, wholeTurn);
        return CurveText::read (text, wholeTurn);
    }

    std::array<std::string, slotCount> effects;
    bool usesEffects = false;
};

class Reader
{
public:
    void readLine (const std::string& whole)
    {
        const auto line = trimmed (whole.substr (0, whole.find ('#')));
        if (line.empty())
            return;
        if (line.starts_with ("group "))
            return startGroup (line.substr (6));
        if (line.front() >= '0' && line.front() <= '9')
            return startPreset (line);
        if (!maker)
            throw Fault ("A row stands outside a preset.");
        maker->addRow (line);
    }

    std::vector<KnobText::Group> finish()
    {
        endPreset();
        return std::move (groups);
    }

private:
    void startGroup (std::string text)
    {
        endPreset();
        groups.push_back ({ takeQuoted (text), {} });
    }

    void startPreset (std::string text)
    {
        endPreset();
        if (groups.empty())
            throw Fault ("A preset stands outside a group.");
        maker.emplace();
        maker->preset.id = takeNumber (text);
        maker->preset.name = takeQuoted (text);
        maker->preset.words = text;
        for (const auto& group : groups)
            for (const auto& other : group.presets)
                if (other.id == maker->preset.id)
                    throw Fault ("The id " + std::to_string (other.id) + " is taken.");
    }

    void endPreset()
    {
        if (maker)
            groups.back().presets.push_back (maker->finish());
        maker.reset();
    }

    std::vector<KnobText::Group> groups;
    std::optional<Maker> maker;
};
}

std::vector<KnobText::Group> KnobText::read (const std::string& text)
{
    Reader reader;
    std::istringstream stream (text);
    auto number = 0;
    for (std::string line; std::getline (stream, line);)
    {
        ++number;
        try
        {
            reader.readLine (line);
        }
        catch (const CurveText::Fault& fault)
        {
            throw CurveText::Fault ("Line " + std::to_string (number) + ": " + fault.what());
        }
    }
    return reader.finish();
}
