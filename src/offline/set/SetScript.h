#pragma once

#include "deck/edit/GridReading.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

/** A performance as text: one timed line after the other, each an action on the engine or its host.

        # seconds  action
        0     load A "First Light.flac"
        0     set PLAY_PAUSE_A 1
        7.5   set CROSSFADER 0.25
        60    end

    Pure data without files or engine. */
struct SetScript
{
    /** The largest time of a line, in seconds: eleven days. */
    static constexpr double latestSeconds = 1'000'000.0;

    struct Load
    {
        int deck = 0;     ///< 0 to 3
        std::string path; ///< UTF-8, not empty, as it stands in the text
        bool waits = true;
    };

    /** A file for one of the sampler's pads. */
    struct Sample
    {
        int pad = 0;      ///< 0 to 15
        std::string path; ///< UTF-8, not empty, as it stands in the text
    };

    struct Command
    {
        int number = 0; ///< 1 to 465
        float value = 0.0f;
        float arg1 = 1.0f, arg2 = 1.0f;
    };

    struct Setting
    {
        std::string name;   ///< one that NamedSetting finds
        double value = 0.0; ///< within its span
        std::string text;   ///< of a setting that is a text
    };

    struct Reverse
    {
        int deck = 0; ///< 0 to 3
        bool on = false;
    };

    struct Grid
    {
        int deck = 0; ///< 0 to 3
        const GridReading* reading = nullptr;
    };

    struct Host
    {
        enum class Action
        {
            play,
            stop,
            bpm, ///< value: 1 to 1000
            seek ///< value: seconds, 0 to latestSeconds
        };

        Action action {};
        double value = 0.0;
    };

    /** Fills a pad or a SmartKnob. */
    struct Preset
    {
        enum class Target
        {
            slicegate, ///< index: the pad, 0 to 7
            smartknob  ///< index: the knob, 0 or 1
        };

        Target target {};
        int deck = 0; ///< 0 to 3
        int index = 0;
        std::variant<int, std::string> source; ///< the id of one of the program's own, or a path as of a load
    };

    /** Puts a deck under a control record. */
    struct Timecode
    {
        enum class Mode
        {
            internal,
            relative,
            absolute
        };

        int deck = 0;  ///< 0 to 3
        int brand = 0; ///< index of the record
        Mode mode {};
        int inputPair = -1; ///< 0 to 3; -1 leaves it
    };

    /** Puts somebody else's plug-in into a deck's slot. */
    struct Plugin
    {
        int deck = 0;     ///< 0 to 3
        std::string name; ///< UTF-8: a name, a path as it stands in the text, or "Empty"
    };

    struct Print
    {
        int number = 0; ///< 1 to 465, or a meter, 1001 to 1006
    };

    /** A message from a controller. */
    struct Midi
    {
        std::string port;        ///< the name of its device, UTF-8
        int status = 0;          ///< 128 to 239
        int data = 0, value = 0; ///< 0 to 127
    };

    /** A file of a script for controllers. */
    struct Script
    {
        std::string path; ///< UTF-8, not empty, as it stands in the text
    };

    /** Prints the messages that were sent to controllers since the last such line. */
    struct PrintMidi
    {
    };

    /** A hand in the browser, for pictures: nothing is heard of it. */
    struct Browse
    {
        enum class Action
        {
            source, ///< text: its name in the tree
            search, ///< text: as it is typed
            select, ///< number: the row from 1
            sort    ///< text: the column's header; number: 1 for upwards, -1 for downwards
        };

        Action action {};
        std::string text; ///< UTF-8
        int number = 0;
    };

    struct End
    {
    };

    using Action = std::variant<End, Load, Sample, Command, Setting, Reverse, Grid, Host, Preset, Timecode,
                                Print, Midi, PrintMidi, Browse, Script, Plugin>;

    struct Event
    {
        int line = 0; ///< from 1
        double seconds = 0.0;
        Action action;
    };

    std::vector<Event> events; ///< times never go back

    /** True if the set drives a host's transport; otherwise it is played by the application on its own. */
    bool hasHost() const noexcept;

    /** True if plug-ins are put into slots. */
    bool hasPlugins() const noexcept;

    /** True if a controller plays, its lamps are read or a script runs. */
    bool hasMidi() const noexcept;
};

/** The fault of a text that is no set. */
struct SetScriptError
{
    int line = 0; ///< from 1
    std::string sentence;
};

/** Reads a set: UTF-8 text, lines ended by LF or CRLF. Takes any bytes; the first fault ends the reading. */
std::variant<SetScript, SetScriptError> parseSetScript (std::string_view text);
