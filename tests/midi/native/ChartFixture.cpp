#include "ChartFixture.h"

#include "midi/ports/JackBackend.h"

namespace
{
std::unique_ptr<MidiBackend> jackBackend()
{
    return std::make_unique<JackBackend> (RealTimeRequest {});
}

/** Values that turn endless controls on, by the form of their steps. */
const std::map<juce::String, int> clicks { { "twosComplement", 1 },
                                           { "twosComplementInverted", 127 },
                                           { "centred", 66 },
                                           { "sign", 127 },
                                           { "eitherCentre", 66 } };

/** The constants of all commands by number, and their decks; -1 of those without one. */
const std::vector<std::pair<juce::String, int>>& commandNames()
{
    static const auto all = []
    {
        std::vector<std::pair<juce::String, int>> names (1);
        for (int number = 1; number <= CommandTable::commandCount; ++number)
        {
            const auto found = CommandTable::find (number);
            const auto isOfDeck = found.row->constant.find ("{d}") != std::string_view::npos;
            names.emplace_back (CommandTable::constant (number), isOfDeck ? found.deck : -1);
        }
        return names;
    }();
    return all;
}
}

ChartFixture::ChartFixture (int model)
    : NativeFixture (model, JackDevice::wanted() != nullptr ? &jackBackend : nullptr)
{
    if (auto* wanted = JackDevice::wanted())
        jack = std::make_unique<JackDevice::Plugged> (*wanted, *midi);
    BrowserRequests::ofProcess().add (*engine, browser);
}

void ChartFixture::loadTracks()
{
    for (int d = 0; d < 4; ++d)
        loadNoise (d, 3);
    for (int pad = 0; pad < Sampler::padCount; ++pad)
        engine->sampler.loadSample (pad, noiseFile (1));
}

ChartFixture::~ChartFixture()
{
    BrowserRequests::ofProcess().remove (browser);
}

void ChartFixture::prepare (const ChartRow& row)
{
    held.clear();
    control().selectController (engine->settings.controllerPreset);
    prepareEngine (row);
}

void ChartFixture::prepareEngine (const ChartRow& row)
{
    if (const auto automix = CommandTable::numberOf ("AUTOMIX_ON_OFF"); engine->getParameter (automix) > 0.0f)
        engine->setParameter (automix, 1.0f);
    for (auto& record : engine->timecodes)
        record.setMode (TimecodeDeck::Mode::internal); // which centres the pitch
    setPlaces (0.4f);
    for (int d = 0; d < 4; ++d)
    {
        auto& player = deck (d);
        player.play = {};
        player.jog = {};
        player.loops = {};
        player.loops.in = 10000.0;
        player.loops.out = 20000.0;
        player.loops.inSet = player.loops.outSet = 1;
        player.head = {};
        player.head.position = 50000.0;
        player.publishHeard();
        player.marks.fixedGrid = 1;
        player.marks.downbeatPosition = 0;
        for (size_t cue = 0; cue < 8; ++cue)
            player.marks.cues[cue] =
                row.control.contains ("delete") ? 60000.0 + 1000.0 * static_cast<double> (cue) : emptyCue;
        engine->settings.deckSetup[static_cast<size_t> (d)].sync = 0;
    }
    engine->setParameter (
        CommandTable::numberOf ("MASTER_", row.deckIndex() < 0 ? 3 : (row.deckIndex() + 1) % 4), 1.0f);
    if (row.function() == "brake" || row.function().contains ("stop") || row.function() == "pause")
        for (int d = 0; d < 4; ++d)
            engine->transport.playPause (d);
    const auto towardsRight = row.function().endsWith ("button 1") || row.control.contains ("unit 3");
    for (int d = 0; d < 4; ++d)
        engine->setParameter (
            CommandTable::numberOf (towardsRight ? "CROSSFADER_ASSIGN_RIGHT_" : "CROSSFADER_ASSIGN_LEFT_", d),
            1.0f);
}

void ChartFixture::stopAtCues()
{
    prepareEngine ({});
    for (int d = 0; d < 4; ++d)
    {
        engine->transport.cue (d, true);
        engine->settings.deckSetup[static_cast<size_t> (d)].sync = 1;
        deck (d).sync.oneShot = 1;
    }
}

void ChartFixture::loopByMarks()
{
    prepareEngine ({});
    for (int d = 0; d < 4; ++d)
    {
        engine->loops.setSize (d, (deck (d).loopSizes.loop + 1) % 11);
        engine->loops.reloop (d);
    }
}

void ChartFixture::slice (int pad)
{
    prepareEngine ({});
    for (auto& gates : engine->slicegates)
        gates.trigger (pad);
    for (int d = 0; d < 4; ++d)
        engine->transport.playPause (d);
    const auto runs = [pad] (const auto& gates) { return gates.padState (pad) == PadState::running; };
    constexpr int mostBlocks = 100; // more than a window, in which the pad before goes on
    for (int block = 0; block < mostBlocks && !std::ranges::all_of (engine->slicegates, runs); ++block)
        render (1024);
}

void ChartFixture::setPlaces (float share)
{
    for (int number = 1; number <= CommandTable::commandCount; ++number)
        if (CommandTable::find (number)->kind == CommandKind::value
            && CommandTable::find (number)->shape != MappingShape::jog)
            engine->setParameter (number, share);
}

void ChartFixture::sweep (float share)
{
    setPlaces (share);
    render (512);
}

void ChartFixture::soundAll()
{
    prepareEngine ({});
    for (int d = 0; d < 4; ++d)
    {
        for (const auto* silencer : { "EQ_HIGH_KILL_", "EQ_MID_KILL_", "EQ_LOW_KILL_", "CUT_" })
            if (const auto number = CommandTable::numberOf (silencer, d);
                engine->getParameter (number) > 0.0f)
                engine->setParameter (number,
                                      CommandTable::find (number)->kind == CommandKind::state ? 0.0f : 1.0f);
        for (const auto& [constant, value] :
             { std::pair { "VOLUME_", 1.0f }, std::pair { "GAIN_", 1.0f }, std::pair { "EQ_HIGH_", 0.5f },
               std::pair { "EQ_MID_", 0.5f }, std::pair { "EQ_LOW_", 0.5f }, std::pair { "FILTER_", 0.5f },
               std::pair { "BALANCE_", 0.5f }, std::pair { "FX_DRY_WET_GROUP_", 0.0f } })
            engine->setParameter (CommandTable::numberOf (constant, d), value);
        engine->transport.playPause (d);
    }
    // A pad that still runs may close its gate for longer than the lamps are looked at.
    const auto rests = [] (const auto& gates)
    {
        for (int pad = 0; pad < 8; ++pad)
            if (gates.padState (pad) == PadState::running)
                return false;
        return true;
    };
    constexpr int mostBlocks = 100;
    for (int block = 0; block < mostBlocks && !std::ranges::all_of (engine->slicegates, rests); ++block)
        render (1024);
    render (4096);
}

std::vector<ChartReading> ChartFixture::world()
{
    std::vector<ChartReading> all;
    const auto add = [&all] (const juce::String& name, int deckIndex, double value) {
        all.push_back ({ name, deckIndex, value });
    };

    add ("record loop", -1, engine->decks.requests.take (EngineRequest::recordLoop));
    engine->deliverMessages();
    BrowserRequests::ofProcess().deliver();
    for (size_t i = 0; i < browser.counts.size(); ++i)
        add (i / 4 == static_cast<size_t> (BrowserRequest::listLoad) ? "load" : "browse",
             static_cast<int> (i % 4), browser.counts[i]);
    for (int number = 1; number <= CommandTable::commandCount; ++number)
    {
        const auto& [name, deckIndex] = commandNames()[static_cast<size_t> (number)];
        add (name, deckIndex, static_cast<double> (engine->getParameter (number)));
    }
    for (int d = 0; d < 4; ++d)
    {
        const auto& p = deck (d);
        const auto i = static_cast<size_t> (d);
        add ("position", d, p.head.position);
        add ("jog", d, p.head.jog);
        add ("bend", d, p.head.bend);
        add ("loop in", d, p.loops.in);
        add ("loop out", d, p.loops.out);
        add ("loop mode", d, p.loops.mode.get());
        add ("reverse", d, p.play.reverse.get());
        add ("downbeat", d, p.marks.downbeatPosition);
        add ("taps", d, p.tap.taps);
        add ("scratch", d, p.jog.scratchOn.get());
        add ("cue", d, p.play.cuePlayArmed ? 1.0 : 0.0);
        for (const auto& cue : p.marks.cues)
            add ("hot cue", d, cue);
        for (int pad = 0; pad < 8; ++pad)
            add ("gate", d, static_cast<double> (engine->slicegates[i].padState (pad)));
        add ("layer", d, state().mode[i].get());
        add ("shift", d, state().shift[i].get());
        add ("scratch mode", d, state().scratchMode[i].get());
        add ("search mode", d, state().searchMode[i].get());
    }
    for (const auto& side : state().deckOfSide)
        add ("side", -1, side.get());
    add ("layer", -1, state().mode[SurfaceState::wholeSurface].get());
    add ("shift", -1, state().shift[SurfaceState::wholeSurface].get());
    add ("decks shown", -1, engine->settings.editor[EditorPreference::fourDeckMode].get());
    return all;
}

std::vector<ChartFixture::Message> ChartFixture::messagesOf (const ChartRow& row)
{
    const auto of = [&row] (int data, int value) { return Message { row.status, data, value }; };
    if (row.form == "bend" || row.form == "bendInverted")
        return { of (0, 100) };
    if (row.form == "fine16" || row.form == "fine32")
        return { of (row.data, 100), of (row.data + (row.form == "fine16" ? 16 : 32), 5) };
    if (row.form.startsWith ("cyclic"))
    {
        std::vector<Message> turns;
        for (int turn = 0; turn < 3; ++turn)
        {
            turns.push_back (of (row.data, 20 + turn));
            if (row.form != "cyclic7")
                turns.push_back (of (row.data + (row.form == "cyclicLow32" ? 32 : -1), 5));
        }
        return turns;
    }
    if (const auto found = clicks.find (row.form); found != clicks.end())
        return { of (row.data, found->second), of (row.data, found->second) };
    return { of (row.data, 127) };
}

void ChartFixture::play (const ChartRow& row)
{
    held.insert ({ sameFor (row.function()), row.deckIndex() });
    for (const auto& [status, data, value] : messagesOf (row))
        send (status, data, value);
}

void ChartFixture::release (const ChartRow& row)
{
    held.erase ({ sameFor (row.function()), row.deckIndex() });
    send (row.status, row.data, 0);
}

void ChartFixture::stateLamps()
{
    control().tick();
    for (const auto& message : jack != nullptr ? jack->takeSent() : cables->takeSent (device))
        if (message.size() == 3)
            lamps[{ message[0], message[1] }] = message[2];
}

void ChartFixture::send (int status, int data, int value)
{
    if (jack != nullptr)
        jack->play (status, data, value);
    else
        handle (status, data, value);
}
