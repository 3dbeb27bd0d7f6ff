#include "midi/mapping/MidiScriptGenerator.h"

#include "engine/CommandTable.h"
#include "midi/mapping/ScriptLogger.h"

namespace
{
using Type = MidiControlType;

/** The snippets of the control types 0 to 3; an empty one is the one before it. "ROW" stands for the command's constant. */
struct Snippets
{
    std::array<const char*, 4> texts;

    const char* of (Type type) const
    {
        auto index = static_cast<size_t> (type);
        while (texts[index] == nullptr)
            --index;
        return texts[index];
    }
};

Snippets snippetsOf (MappingShape shape)
{
    switch (shape)
    {
    case MappingShape::trigger:
        return { { "if(value > 0) set(ROW);" } };
    case MappingShape::held:
        return { { "set(ROW, isDown);" } };
    case MappingShape::continuous:
        return { { "set(ROW, value01);", "set(ROW, 1.0 - value01);", "set(ROW, get(ROW) + valueInc * 0.05);",
                   "set(ROW, get(ROW) - valueInc * 0.05);" } };
    case MappingShape::pitch:
        return { { "set(ROW, value01);", "set(ROW, 1.0 - value01);",
                   "set(ROW, (1.0 - get(ROW)) + valueInc * 0.0005);",
                   "set(ROW, (1.0 - get(ROW)) - valueInc * 0.0005);" } };
    case MappingShape::resetToCentre:
        return { { "if(value > 0) set(ROW, 0.5);" } };
    case MappingShape::stepped:
        return { { "set(ROW, 0x7F - value);", "set(ROW, value);" } };
    case MappingShape::jog:
        return { { "set(ROW, value - 64.0, -0.01, 0.1);" } };
    case MappingShape::seek:
        return { { "set(ROW, value01);", "set(ROW, 1.0 - value01);" } };
    }
    return { { "{}" } };
}

constexpr int firstPlaySynchronized = 5, lastPlaySynchronized = 8;
constexpr int firstPitchReset = 25, lastPitchReset = 28, pitchBeforeReset = 4;
constexpr int autoCrossfaderRight = 280;
constexpr int firstSlotDryWet = 437, lastSlotDryWet = 440;

/** The constant that a row's snippet names. Some rows of published scripts differ from their family; scripts that users have
    built on keep their text, so these differences stay. */
juce::String constantOf (int row, Type type)
{
    const auto isWithin = [row] (int first, int last) { return row >= first && row <= last; };
    if (isWithin (firstPlaySynchronized, lastPlaySynchronized))
        return CommandTable::constant (firstPlaySynchronized);
    if (isWithin (firstSlotDryWet, lastSlotDryWet) && type == Type::absolute)
        return CommandTable::constant (firstSlotDryWet);
    if (isWithin (firstPitchReset, lastPitchReset))
        return CommandTable::constant (row - pitchBeforeReset);
    return juce::String (CommandTable::constant (row)) + (row == autoCrossfaderRight ? " " : "");
}

juce::String hex (int value)
{
    return "0x" + juce::String::toHexString (value).toUpperCase();
}

void addBlocks (juce::StringArray& lines, const MidiMapping& mapping, std::initializer_list<int> kinds)
{
    for (int number = 0; number < MidiMapping::rowCount; ++number)
    {
        const auto row = mapping.row (number);
        if (std::find (kinds.begin(), kinds.end(), row.status & 0xf0) == kinds.end())
            continue;
        lines.add ("    if(status == " + hex (row.status) + " && data == " + hex (row.data) + ") {");
        lines.add ("      " + controlSnippet (row.type(), number));
        lines.add ("      return;");
        lines.add ("    }");
    }
}

void addEmptyCallback (juce::StringArray& lines, const char* declaration, const char* comment)
{
    for (const auto* line : { declaration, "{", comment, "}", "" })
        lines.add (line);
}
}

juce::String controlSnippet (MidiControlType type, int row)
{
    if (!MidiMapping::isCommand (row))
        return "{}";
    return juce::String (snippetsOf (CommandTable::find (row)->shape).of (type))
        .replace ("ROW", constantOf (row, type));
}

juce::StringArray midiScriptLines (const MidiMapping& mapping)
{
    juce::StringArray lines;
    for (const auto* line :
         { "#include \"px_commands.h\"", "",
           "void OnMidiMessageReceived (const string &in name, int status, int data, int value)", "{",
           "  // this callback is called when a midi message is received from a midi device", "",
           "  // stack", "  float value01 = value / 127.0;",
           "  float valueInc = (value < 0x40) ? -1.0 : 1.0;", "  float isDown = (value > 0) ? 1.0 : 0.0;", "",
           "  // NN's", "  if((status & 0xF0) == 0x90) {", "" })
        lines.add (line);
    addBlocks (lines, mapping, { 0x90, 0x80 });
    for (const auto* line : { "  }", "", "  // CC's", "  if((status & 0xF0) == 0xB0) {", "" })
        lines.add (line);
    addBlocks (lines, mapping, { 0xb0 });
    for (const auto* line : { "  }", "}", "" })
        lines.add (line);
    addEmptyCallback (lines, "void OnTimerCallback()",
                      "  // this callback is called continunuosly by PX every 50 ms");
    addEmptyCallback (lines, "void OnStart()",
                      "  // this callback is called by PX when the script is started");
    addEmptyCallback (lines, "void OnStop()",
                      "  // this callback is called by PX when the script is stopped");
    lines.add ("// EOF");
    return lines;
}

bool generateMidiScript (const MidiMapping& mapping, const juce::File& file)
{
    return writeScript (midiScriptLines (mapping), file);
}
