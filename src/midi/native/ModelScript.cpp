#include "midi/native/ModelScript.h"

#include "engine/CommandTable.h"
#include "midi/mapping/ScriptLogger.h"
#include "midi/native/table/FunctionNumbers.h"
#include "midi/native/table/ModelList.h"
#include "midi/native/table/ModelPage.h"

#include <algorithm>

namespace
{
/** The kinds of numbers that rows have. */
enum class Number
{
    none,
    command,
    which,
    function
};

template <typename Key>
struct Name
{
    Key key;
    const char* name;
    Number number = Number::none;
};

constexpr Name<Act> actNames[] {
    { Act::centre, "CENTRE", Number::command },
    { Act::fullOrNone, "FULL_OR_NONE", Number::command },
    { Act::nextOfTen, "NEXT_OF_TEN", Number::command },
    { Act::stepDown, "SEMITONE_DOWN", Number::command },
    { Act::stepUp, "SEMITONE_UP", Number::command },
    { Act::storeCue, "STORE_CUE", Number::command },
    { Act::stop, "STOP" },
    { Act::loopBeats, "LOOP_BEATS", Number::which },
    { Act::rollBeats, "ROLL_BEATS", Number::which },
    { Act::timecode, "TIMECODE" },
    { Act::timecodeMode, "TIMECODE_MODE" },
    { Act::jog, "JOG" },
    { Act::jogBend, "JOG_BEND" },
    { Act::jogScratch, "JOG_SCRATCH" },
    { Act::jogSearch, "JOG_SEARCH" },
    { Act::touch, "TOUCH", Number::command },
    { Act::scratchMode, "SCRATCH_MODE" },
    { Act::searchMode, "SEARCH_MODE" },
    { Act::shift, "SHIFT" },
    { Act::deckMode, "PAD_LAYER", Number::which },
    { Act::deckModeFlip, "PAD_LAYER_FLIP" },
    { Act::surfaceMode, "LAYER", Number::which },
    { Act::surfaceModeFlip, "LAYER_FLIP" },
    { Act::selectDeck, "SELECT_DECK", Number::which },
    { Act::nextDeck, "NEXT_DECK" },
};

constexpr Name<Light> lightNames[] {
    { Light::reading, "READING", Number::command },
    { Light::full, "FULL", Number::command },
    { Light::held, "HELD", Number::function },
    { Light::play, "PLAYING" },
    { Light::sync, "SYNCED" },
    { Light::loop, "LOOPING" },
    { Light::centred, "AT_CENTRE" },
    { Light::timecode, "IN_TIMECODE" },
    { Light::timecodeMode, "IN_TIMECODE_MODE" },
    { Light::shift, "SHIFTED" },
    { Light::scratchMode, "IN_SCRATCH_MODE" },
    { Light::searchMode, "IN_SEARCH_MODE" },
    { Light::deckMode, "IN_PAD_LAYER", Number::which },
    { Light::deckModeFlip, "IN_PAD_LAYER_FLIP" },
    { Light::surfaceMode, "IN_LAYER", Number::which },
    { Light::surfaceModeFlip, "IN_LAYER_FLIP" },
    { Light::selectDeck, "ON_DECK", Number::which },
    { Light::nextDeck, "ON_NEXT_DECK" },
};

/** In the order of the forms. */
constexpr const char* formNames[] {
    "PRESS",
    "ABSOLUTE",
    "INVERTED",
    "CENTRE_64",
    "CENTRE_63",
    "CENTRE_INVERTED",
    "FINE_16",
    "FINE_32",
    "BEND",
    "BEND_INVERTED",
    "TWOS_COMPLEMENT",
    "TWOS_COMPLEMENT_INVERTED",
    "CENTRED",
    "SIGN",
    "EITHER_CENTRE",
    "BEHRINGER",
    "STEP_ON",
    "STEP_BACK",
    "CYCLIC_7",
    "CYCLIC_LOW_32",
    "CYCLIC_LOW_BELOW",
};
static_assert (std::size (formNames) == static_cast<size_t> (Form::cyclicLowBelow) + 1);

constexpr const char* lawNames[] { "BY_STEPS", "BY_127", "BY_POWER" };
constexpr const char* deckNames[] { "DECK_A", "DECK_B", "DECK_C", "DECK_D" };
constexpr const char* sideNames[] { "", "SIDE_LEFT", "SIDE_RIGHT", "SIDE_CHOSEN" };

/** The devices that want a pause get no more changes of lamps than that leaves room for in one tick of a script. */
constexpr int tickMs = 50;

template <typename Key, size_t count>
const Name<Key>* nameOf (const Name<Key> (&names)[count], Key key)
{
    const auto found = std::ranges::find (names, key, &Name<Key>::key);
    return found != std::end (names) ? found : nullptr;
}

/** The name of a plain command's act, by its kind. */
Name<Act> commandName (const Function& function, int number)
{
    switch (CommandTable::find (number)->kind)
    {
    case CommandKind::state:
        return { Act::command, "HOLD", Number::command };
    case CommandKind::value:
        return { Act::command, function.id == FunctionId::pitch ? "PITCH" : "VALUE", Number::command };
    case CommandKind::relative:
        return { Act::command, "STEP", Number::command };
    case CommandKind::trigger:
    case CommandKind::meter:
        break;
    }
    return { Act::command, "TRIGGER", Number::command };
}

juce::String text (double value)
{
    const juce::String plain (value, 6, false);
    const auto shortest = plain.trimCharactersAtEnd ("0");
    return shortest.endsWithChar ('.') ? shortest + "0" : shortest;
}

juce::String hexText (std::span<const uint8_t> bytes)
{
    return juce::String::toHexString (bytes.data(), static_cast<int> (bytes.size())).toUpperCase();
}

juce::String quoted (const juce::String& words)
{
    return "\"" + words + "\"";
}

class ScriptWriter
{
public:
    explicit ScriptWriter (const Model& m) : model (m) {}

    juce::StringArray write()
    {
        const juce::String name (ModelList::entry (model.number).name);
        for (const auto& line :
             { juce::String ("#include \"px_commands.h\""), juce::String ("#include \"px_surface.h\""),
               juce::String(),
               "// " + name + ": its controls and lamps, made from the table of model "
                   + juce::String (model.number) + ". px_surface.h",
               juce::String (
                   "// says what the rows mean. Select the generic controller beside it, or both act.") })
            lines.add (line);
        open ("void addControls()");
        for (const auto& control : model.controls)
            add (control);
        close();
        open ("void addLamps()");
        for (const auto& lamp : model.lamps)
            add (lamp);
        for (const auto& field : model.texts)
            add (field);
        close();
        addCallbacks();
        return lines;
    }

private:
    void open (const char* declaration)
    {
        for (const auto* line : { "", declaration, "{" })
            lines.add (line);
        layer = {};
        lastTitle = {};
        line ("inLayer (-1, -1, -1);");
    }

    void close() { lines.add ("}"); }
    void line (const juce::String& words) { lines.add ("  " + words); }

    void title (const Function& function, ScriptLack lack)
    {
        const auto words =
            functionText (function)
            + (lack.reason != nullptr ? juce::String (lack.isLeftOut ? " is left out: " : ": ") + lack.reason
                                      : juce::String());
        if (words != lastTitle)
            line ("// " + words);
        lastTitle = words;
    }

    void enter (const Layer& wanted)
    {
        if (wanted.shift != layer.shift || wanted.deckMode != layer.deckMode
            || wanted.surfaceMode != layer.surfaceMode)
            line ("inLayer (" + juce::String (wanted.shift) + ", " + juce::String (wanted.deckMode) + ", "
                  + juce::String (wanted.surfaceMode) + ");");
        layer = wanted;
    }

    /** "0x90, 35, DECK_A" */
    static juce::String head (const Address& address, Decks decks, size_t place)
    {
        return "0x" + juce::String::toHexString (address.status).toUpperCase() + ", "
               + juce::String (address.data) + ", "
               + (decks == Decks::listed ? deckNames[place] : sideNames[static_cast<size_t> (decks)]);
    }

    template <typename Key>
    static juce::String numberText (const Name<Key>& name, const Function& function, int deck)
    {
        switch (name.number)
        {
        case Number::command:
            return ", " + juce::String (CommandTable::constant (commandOf (function, deck)));
        case Number::which:
            return ", " + juce::String (function.which);
        case Number::function:
            return ", " + juce::String (static_cast<int> (function.id));
        case Number::none:
            break;
        }
        return {};
    }

    /** A side's command lies a distance from deck to deck. */
    template <typename Key>
    static juce::String distanceText (const Name<Key>& name, const Function& function, Decks decks)
    {
        const auto distance = commandOf (function, 1) - commandOf (function, 0);
        return name.number == Number::command && decks != Decks::listed && distance != 1
                   ? ".everyDeck (" + juce::String (distance) + ")"
                   : juce::String();
    }

    bool hasHeldLamp (FunctionId id) const
    {
        return rowOf (id).light == Light::held
               && std::ranges::any_of (model.lamps,
                                       [id] (const auto& lamp) { return lamp.function.id == id; });
    }

    void add (const Control& control)
    {
        const auto lack = scriptLackOf (model, control);
        title (control.function, lack);
        const auto act = rowOf (control.function.id).act;
        const auto* known = nameOf (actNames, act);
        const auto isButton = !isRelative (control.form) && hasHeldLamp (control.function.id);
        if (act == Act::shown || lack.isLeftOut)
            return;
        enter (control.layer);
        for (size_t place = 0, written = 0; place < control.at.size(); ++place)
        {
            if (!control.at[place].isSet())
                continue;
            const auto deck = control.decks == Decks::listed ? static_cast<int> (place) : 0;
            const auto name = known != nullptr
                                  ? *known
                                  : commandName (control.function, commandOf (control.function, deck));
            line ("control (" + head (control.at[place], control.decks, place) + ", "
                  + formNames[static_cast<size_t> (control.form)] + ", " + name.name
                  + numberText (name, control.function, deck) + ")"
                  + distanceText (name, control.function, control.decks)
                  + (isButton ? ".isButton (" + juce::String (static_cast<int> (control.function.id)) + ")"
                              : juce::String())
                  + (written++ > 0 && meetsAnother (control, place) ? ".withLast()" : "") + ";");
        }
    }

    /** True if another address of the row is the same: one message acts on both. */
    static bool meetsAnother (const Control& control, size_t place)
    {
        for (size_t other = 0; other < place; ++other)
            if (control.at[other] == control.at[place])
                return true;
        return false;
    }

    void add (const Lamp& lamp)
    {
        const auto lack = scriptLackOf (lamp);
        title (lamp.function, lack);
        if (lack.isLeftOut)
            return;
        enter (lamp.layer);
        auto name = *nameOf (lightNames, rowOf (lamp.function.id).light);
        if (lamp.function.id == FunctionId::loopBeats)
            name = { name.key, "LOOPING_BEATS", Number::which };
        for (size_t place = 0; place < lamp.at.size(); ++place)
        {
            const auto deck = lamp.decks == Decks::listed ? static_cast<int> (place) : 0;
            if (lamp.at[place].isSet())
                line ("lamp (" + head (lamp.at[place], lamp.decks, place) + ", " + name.name
                      + numberText (name, lamp.function, deck) + ")"
                      + distanceText (name, lamp.function, lamp.decks) + valuesText (lamp.form)
                      + (name.key == Light::reading ? rangeText (lamp.function) : juce::String()) + ";");
        }
    }

    static juce::String valuesText (const LampForm& form)
    {
        const auto of = [] (const char* call, std::initializer_list<int> values)
        {
            juce::StringArray all;
            for (const auto value : values)
                all.add (juce::String (value));
            return juce::String (".") + call + " (" + all.joinIntoString (", ") + ")";
        };
        switch (form.kind)
        {
        case LampForm::Kind::light:
            if (form == light)
                return {};
            return of ("values", { form.off, form.on, form.blink });
        case LampForm::Kind::blinking:
            return of ("blinksAlone", { form.off, form.on });
        case LampForm::Kind::scale:
            return of ("scale", { form.off, form.on });
        case LampForm::Kind::segment:
            return of ("segment", { form.part, form.parts, form.on });
        case LampForm::Kind::pointer:
            return of ("pointer", { form.part, form.parts, form.on });
        }
        return {};
    }

    static juce::String rangeText (const Function& function)
    {
        const auto& range = CommandTable::find (commandOf (function, 0)).row->range;
        return std::pair (range.lowest, range.highest) == std::pair (0.0, 1.0)
                   ? juce::String()
                   : ".range (" + text (range.lowest) + ", " + text (range.highest) + ")";
    }

    void add (const TextField& field)
    {
        auto head = std::vector<uint8_t> (model.textHead.begin(), model.textHead.end());
        head.push_back (field.number);
        if (field.text == TextField::Text::title)
        {
            line ("// the track's title is left out: no command tells it");
            return;
        }
        enter (field.layer);
        line (field.text == TextField::Text::label
                  ? "text (" + quoted (hexText (head)) + ", "
                        + quoted (juce::String (std::string (field.words))) + ");"
                  : "effectText (" + quoted (hexText (head)) + ");");
    }

    void send (std::span<const Message> messages)
    {
        for (const auto& each : messages)
        {
            const auto& b = each.bytes;
            if (each.size == 3)
                line ("sendMidiMessage (" + juce::String (b[0]) + ", " + juce::String (b[1]) + ", "
                      + juce::String (b[2]) + ");");
            else
                line ("sendSysExMessage (" + quoted (hexText (std::span (b).first (each.size))) + ");");
        }
    }

    void addCallbacks()
    {
        const auto& jog = model.jog;
        const auto yes = [] (bool is) { return juce::String (is ? "true" : "false"); };
        const auto callback = [this] (const char* declaration)
        {
            for (const auto* each : { "", declaration, "{" })
                lines.add (each);
        };
        callback ("void OnStart()");
        line ("jog (" + text (jog.bend) + ", " + text (jog.scratch) + ", "
              + lawNames[static_cast<size_t> (jog.law)] + ", " + text (jog.stepsPerUnit) + ", "
              + yes (jog.feelsHand) + ", " + yes (jog.touchNeedsScratchMode) + ");");
        if (const auto pause = ModelList::entry (model.number).pauseMs; pause > 0)
            line ("mostChanges = " + juce::String (tickMs / pause) + ";");
        for (const auto& message : model.layerMessages)
            line ("layerMessage (" + quoted (hexText (std::span (message.bytes).first (message.size)))
                  + ");");
        line ("addControls();");
        line ("addLamps();");
        send (model.wake);
        close();
        callback ("void OnMidiMessageReceived (const string &in name, int status, int data, int value)");
        line ("hear (status, data, value);");
        close();
        callback ("void OnTimerCallback()");
        line ("show();");
        close();
        callback ("void OnStop()");
        line ("letAllGo();");
        send (model.sleep);
        close();
    }

    const Model& model;
    juce::StringArray lines;
    juce::String lastTitle;
    Layer layer;
};
}

namespace
{
constexpr const char* searches = "searches by a share of the track, since no command tells its length";

constexpr const char* letsGo = "lets go of the record 50 to 100 ms after the last message, not 26";

bool hasControl (const Model& model, Act act)
{
    return std::ranges::any_of (model.controls, [act] (const auto& control)
                                { return rowOf (control.function.id).act == act; });
}
}

ScriptLack scriptLackOf (const Model& model, const Control& control)
{
    const auto id = control.function.id;
    switch (rowOf (id).act)
    {
    case Act::reverse:
        return { "no command plays backwards", true };
    case Act::tap:
        return { "no command taps", true };
    case Act::decksShown:
        return { "the layout of the window is no command", true };
    case Act::storeCue:
        return id == FunctionId::setCue ? ScriptLack { "no command tells the current cue", true }
                                        : ScriptLack {};
    case Act::jog:
        return !model.jog.feelsHand                  ? ScriptLack { letsGo }
               : hasControl (model, Act::searchMode) ? ScriptLack { searches }
                                                     : ScriptLack {};
    case Act::jogScratch:
        return { letsGo };
    case Act::jogSearch:
        return { searches };
    default:
        return {};
    }
}

ScriptLack scriptLackOf (const Lamp& lamp)
{
    switch (rowOf (lamp.function.id).light)
    {
    case Light::reverse:
        return { "no command tells that a deck plays backwards", true };
    case Light::loaded:
        return { "no command tells that a deck has a track", true };
    case Light::decksShown:
        return { "the layout of the window is no command", true };
    case Light::loop:
        return { "stays dark in a loop of two marks, which no command tells" };
    case Light::sync:
        return { "does not tell a sync for once from a lasting one, as no command does" };
    case Light::held:
        return lamp.function.id == FunctionId::tap || lamp.function.id == FunctionId::setCue
                   ? ScriptLack { "its button is left out", true }
                   : ScriptLack {};
    default:
        return {};
    }
}

juce::StringArray modelScriptLines (const Model& model)
{
    return ScriptWriter (model).write();
}

bool writeModelScript (const Model& model, const juce::File& file)
{
    return writeScript (modelScriptLines (model), file);
}
