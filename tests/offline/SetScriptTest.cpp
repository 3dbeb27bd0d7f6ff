#include "offline/set/SetScript.h"

#include "support/RandGeneratorLCG.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

namespace
{
using namespace testing;
using HostAction = SetScript::Host::Action;

constexpr const char* wholeSet = "# a set of everything\n"
                                 "0 load A First.wav\n"
                                 "0 load 3 \"a folder/Second # take.wav\" nowait  # late\n"
                                 "\n"
                                 "0.25 set PLAY_PAUSE_A 1\r\n"
                                 "\t0.25\tset 201 0.5 -2e-2 .25\n"
                                 "0.5 setting lineGain_C 2.5\n"
                                 "0.5 setting recordFile \"a take.wav\"\n"
                                 "1e0 host play\n"
                                 "1 host bpm 126.5\n"
                                 "2 host seek 30\n"
                                 "2 host stop\n"
                                 "2.5 print 1001\n"
                                 "+2.5 print CROSSFADER # read\n"
                                 "3 end";

SetScript scriptOf (std::string_view text)
{
    auto parsed = parseSetScript (text);
    if (const auto* error = std::get_if<SetScriptError> (&parsed))
    {
        ADD_FAILURE() << "line " << error->line << ": " << error->sentence;
        return {};
    }
    return std::get<SetScript> (std::move (parsed));
}

template <typename T>
const T& actionAt (const SetScript& script, size_t index)
{
    return std::get<T> (script.events.at (index).action);
}

/** Expects of any text: events in order with numbers in range, or an error with a line of its own. */
void expectSound (const std::string& text)
{
    const auto parsed = parseSetScript (text);
    if (const auto* error = std::get_if<SetScriptError> (&parsed))
    {
        EXPECT_THAT (error->sentence, AllOf (AnyOf (EndsWith ("."), EndsWith ("?")), Not (HasSubstr ("\n"))));
        EXPECT_GE (error->line, 1);
        EXPECT_LE (error->line, 1 + std::count (text.begin(), text.end(), '\n'));
        return;
    }
    double last = 0.0;
    for (const auto& event : std::get<SetScript> (parsed).events)
    {
        EXPECT_TRUE (event.seconds >= last && event.seconds <= SetScript::latestSeconds);
        last = event.seconds;
        const auto* load = std::get_if<SetScript::Load> (&event.action);
        EXPECT_TRUE (load == nullptr || (load->deck >= 0 && load->deck < 4 && !load->path.empty()));
        const auto* command = std::get_if<SetScript::Command> (&event.action);
        EXPECT_TRUE (command == nullptr
                     || (command->number >= 1 && command->number <= 465 && std::isfinite (command->value)));
    }
}
}

TEST (SetScript, ReadsEveryAction)
{
    const auto script = scriptOf (wholeSet);
    ASSERT_EQ (script.events.size(), 13u);
    EXPECT_TRUE (script.hasHost());
    EXPECT_FALSE (scriptOf ("0 print 1").hasHost());

    const auto& first = actionAt<SetScript::Load> (script, 0);
    EXPECT_TRUE (first.deck == 0 && first.path == "First.wav" && first.waits);
    const auto& second = actionAt<SetScript::Load> (script, 1);
    EXPECT_TRUE (second.deck == 3 && second.path == "a folder/Second # take.wav" && !second.waits);
    EXPECT_EQ (script.events[2].line, 5);
    EXPECT_EQ (script.events[2].seconds, 0.25);
    EXPECT_EQ (actionAt<SetScript::Command> (script, 2).arg1, 1.0f);
    const auto& jog = actionAt<SetScript::Command> (script, 3);
    EXPECT_TRUE (jog.number == 201 && jog.value == 0.5f && jog.arg1 == -0.02f && jog.arg2 == 0.25f);
    const auto& gain = actionAt<SetScript::Setting> (script, 4);
    EXPECT_TRUE (gain.name == "lineGain_C" && gain.value == 2.5);
    EXPECT_EQ (actionAt<SetScript::Setting> (script, 5).text, "a take.wav");
    EXPECT_EQ (actionAt<SetScript::Host> (script, 6).action, HostAction::play);
    EXPECT_EQ (actionAt<SetScript::Host> (script, 7).value, 126.5);
    EXPECT_EQ (actionAt<SetScript::Host> (script, 8).value, 30.0);
    EXPECT_EQ (actionAt<SetScript::Host> (script, 9).action, HostAction::stop);
    EXPECT_EQ (actionAt<SetScript::Print> (script, 10).number, 1001);
    EXPECT_EQ (actionAt<SetScript::Print> (script, 11).number, 277);
}

TEST (SetScript, TakesPathsWithAndWithoutQuotes)
{
    struct Case
    {
        const char *text, *path;
        bool waits;
    };
    for (const auto& [text, path, waits] : {
             Case { "0 load A My Track.wav   nowait", "My Track.wav", false },
             Case { "0 load A Sampler #1.wav", "Sampler", true }, // a word that begins with # is a comment
             Case { "0 load A Sampler#1.wav", "Sampler#1.wav", true },
             Case { "0 load A \"Sampler #1.wav\"", "Sampler #1.wav", true },
             Case { "0 load A nowait now.wav", "nowait now.wav", true },
             Case { "0 load b 12\" mix.wav", "12\" mix.wav", true },
             Case { "0 load d \xc3\x9c"
                    "bung.flac",
                    "\xc3\x9c"
                    "bung.flac",
                    true },
         })
    {
        const auto script = scriptOf (text);
        EXPECT_EQ (actionAt<SetScript::Load> (script, 0).path, path);
        EXPECT_EQ (actionAt<SetScript::Load> (script, 0).waits, waits) << text;
    }
}

TEST (SetScript, ReadsPresetsByIdAndByFile)
{
    const auto script =
        scriptOf ("0 slicegate B 8 107\n0 smartknob 0 2 303 # all\n0 smartknob D 1 303 ways.xml\n");
    using Target = SetScript::Preset::Target;
    const auto& pad = actionAt<SetScript::Preset> (script, 0);
    EXPECT_TRUE (pad.target == Target::slicegate && pad.deck == 1 && pad.index == 7
                 && std::get<int> (pad.source) == 107);
    const auto& knob = actionAt<SetScript::Preset> (script, 1);
    EXPECT_TRUE (knob.target == Target::smartknob && knob.deck == 0 && knob.index == 1);
    EXPECT_EQ (std::get<std::string> (actionAt<SetScript::Preset> (script, 2).source), "303 ways.xml");
}

TEST (SetScript, RefusesEachFaultWithItsLineAndSentence)
{
    struct Case
    {
        std::string text;
        int line;
        const char* sentence; ///< a part of it
    };
    const std::vector<Case> cases {
        { "play it", 1, "The time at the start of the line is not a number: \"play\"." },
        { "# c\n\n-1 end", 3, "negative" },
        { "1e9 end", 1, "later than 1000000 seconds" },
        { "1 end\n2 end", 2, "Nothing may follow the end" },
        { "2 print 1\n1 print 1", 2, "goes back behind that of line 1" },
        { "1", 1, "an action is missing" },
        { "1 jump A", 1, "There is no action \"jump\"" },
        { "0 load", 1, "needs a deck" },
        { "0 load E x.wav", 1, "There is no deck \"E\"" },
        { "0 reverse", 1, "A reverse needs a deck, A to D." },
        { "0 reverse A backwards", 1, "A reverse is on or off, not \"backwards\"." },
        { "0 grid A 5/4", 1, "as one of right, half, beat, 3/2, 2/3, 4/3, 3/4, not \"5/4\"." },
        { "0 load A", 1, "needs the path" },
        { "0 load A \"x.wav", 1, "no closing quote" },
        { "0 load A \"\"", 1, "path is empty" },
        { "0 load A \"x.wav\" later", 1, "only \"nowait\" may follow" },
        { "0 set", 1, "The command is missing" },
        { "0 set PLAY 1", 1, "There is no command \"PLAY\"" },
        { "0 set 1001 1", 1, "no command of the number \"1001\"" },
        { "0 set 277 0,5", 1, "The command's value is not a number: \"0,5\"" },
        { "0 set 277 1e300", 1, "The command's value is too large" },
        { "0 set 201 1 1", 1, "The second argument is missing" },
        { "0 host", 1, "The host needs an action" },
        { "0 host rewind", 1, "The host does not know \"rewind\"" },
        { "0 host bpm 0", 1, "between 1 and 1000 BPM" },
        { "0 host seek -1", 1, "position must lie between" },
        { "0 midi Pad 0xf0 1 2", 1, "The status lies between 128 and 239" },
        { "0 midi Pad 144 128 2", 1, "The data byte lies between 0 and 127" },
        { "0 midi Pad 144 1 2x", 1, "The value lies between 0 and 127" },
        { "0 midi \"Pad", 1, "The name has no closing quote" },
        { "0 script", 1, "A script needs the path of its file" },
        { "0 midi", 1, "The name of the controller is missing" },
        { "0 browse search", 1, "The text of the search is missing." },
        { "0 browse sort BPM up", 1, "only \"down\" may follow, not \"up\"" },
        { "0 slicegate", 1, "A slicegate needs a deck" },
        { "0 slicegate A 9 107", 1, "the number of a pad, 1 to 8" },
        { "0 timecode A tape absolute", 1, "There is no record \"tape\"" },
        { "0 timecode A cd", 1, "A timecode is absolute, relative or internal, not \"\"." },
        { "0 timecode A \"Torq Vinyl\" relative E", 1, "There is no input \"E\", only A to D." },
        { "0 smartknob A 3 101", 1, "the number of a knob, 1 to 2" },
        { "0 smartknob A 1 115", 1, "There is no preset 115" },
        { "0 smartknob A 1", 1, "A smartknob needs the id of a preset or the path of a file." },
        { "0 slicegate A 1 99999999999999", 1, "too large a number" },
        { "0 print 1007", 1, "no command of the number \"1007\"" },
        { "0 print 1\n0 \xff\xfe", 2, "not UTF-8" },
        { std::string ("0 print 1\n0 pr\0nt 1", 18), 2, "control characters" },
        { "0 " + std::string (500, 'x'), 1, "xxx...\"" },
    };
    for (const auto& [text, line, sentence] : cases)
    {
        const auto parsed = parseSetScript (text);
        const auto* error = std::get_if<SetScriptError> (&parsed);
        ASSERT_NE (error, nullptr) << text;
        EXPECT_EQ (error->line, line) << text;
        EXPECT_THAT (error->sentence, HasSubstr (sentence)) << text;
        EXPECT_LT (error->sentence.size(), 200u) << "all actions and a short piece of the text";
    }
}

TEST (SetScript, TakesAnEmptyTextAndAByteOrderMark)
{
    for (const auto* text : { "", "\n\n", "# nothing", " \t ", "\xef\xbb\xbf" })
        EXPECT_TRUE (scriptOf (text).events.empty());
    EXPECT_EQ (scriptOf ("\xef\xbb\xbf"
                         "0 end")
                   .events.size(),
               1u);
}

TEST (SetScript, ComesThroughMutations)
{
    RandGeneratorLCG random (1);
    const auto below = [&random] (size_t limit) { return static_cast<size_t> (random.nextInt()) % limit; };
    const std::string_view dictionary[] { "\"",    "#",       "\n",  "nowait",    "-",
                                          "1e999", "load A ", "end", "host bpm ", "\xc3" };

    for (int round = 0; round < 4000; ++round)
    {
        std::string text (wholeSet);
        for (auto changes = 1 + below (4); changes > 0; --changes)
        {
            const auto at = below (text.size());
            const auto change = below (4);
            if (change == 0)
                text[at] = static_cast<char> (below (256));
            else if (change == 1)
                text.replace (at, 1 + below (12), " ");
            else if (change == 2)
                text.insert (at, dictionary[below (std::size (dictionary))]);
            else
                text.insert (at, text.substr (below (text.size()), below (30)));
        }
        expectSound (text);
    }
}
