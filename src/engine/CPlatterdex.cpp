#include "engine/CPlatterdex.h"

#include "deck/load/DeckAnalysis.h"
#include "engine/CommandParameter.h"
#include "engine/CommandTable.h"
#include "engine/HandLog.h"
#include "instruments/contents/InstrumentContents.h"
#include "mixer/AutoCrossfader.h"
#include "settings/SettingsFile.h"
#include "support/DecimalText.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"
#include "tracks/formats/AdecAudioFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace
{
constexpr std::array inputNames { "Deck1", "Deck2", "Deck3", "Deck4", "Mic" };
constexpr std::array outputNames { "Master", "Monitor", "Deck1", "Deck2", "Deck3", "Deck4", "Sampler" };
static_assert (inputNames.size() * 2 == CPlatterdex::inputChannels);
static_assert (outputNames.size() * 2 == CPlatterdex::outputChannels);

template <size_t count>
juce::String channelName (const std::array<const char*, count>& pairs, int channel)
{
    if (channel < 0 || channel >= static_cast<int> (2 * count))
        return {};
    return juce::String (pairs[static_cast<size_t> (channel / 2)]) + (channel % 2 == 0 ? " L" : " R");
}

constexpr int messageIntervalMs = 40; ///< as often as views look
}

juce::AudioProcessor::BusesProperties CPlatterdex::buses()
{
    BusesProperties all;
    for (const auto* name : inputNames)
        all.addBus (true, name, juce::AudioChannelSet::stereo());
    for (const auto* name : outputNames)
        all.addBus (false, name, juce::AudioChannelSet::stereo());
    return all;
}

CPlatterdex::CPlatterdex (EngineWorld world)
    : AudioProcessor (buses()),
      environment (std::move (world)),
      pacing (environment.pacing),
      preview (environment.pacing),
      recorder (environment.pacing),
      decks (getCallbackLock(), settings, listeners, pacing, environment.clock),
      slicegates { SlicegateDeckState { decks, 0 }, SlicegateDeckState { decks, 1 },
                   SlicegateDeckState { decks, 2 }, SlicegateDeckState { decks, 3 } },
      timecodes { TimecodeDeck { decks, 0 }, TimecodeDeck { decks, 1 }, TimecodeDeck { decks, 2 },
                  TimecodeDeck { decks, 3 } },
      transport (decks),
      instrumentContents (
          InstrumentContents::makeStore (environment.folders.setup(), smartKnobs, slicegates)),
      automix (decks, smartKnobs),
      batchAnalysis (environment.decoderLibrary, environment.folders.beatmarks(), settings, listeners, pacing)
{
    random.seed (environment.seed.value_or (juce::Time::currentTimeMillis()));
    decks.noise.fill (random);
    preview.setOutputRate (decks.engineRate);
    preview.formats().registerFormat (new AdecAudioFormat (environment.decoderLibrary), false);

    juce::ignoreUnused (
        environment.folders.createAll()); // a part that lacks its folder says so when it needs it
    isFirstRun = loadSettings (settings, environment.folders.setup(), environment.folders);
    settings.automixOn = 0;
    settings.autoFadeState = AutoCrossfader::idle;
    handCrossfader = settings.crossfader.get();
    if (decks.deck (settings.masterDeck) == nullptr)
        settings.masterDeck = juce::jlimit<int8_t> (0, deckCount - 1, settings.masterDeck);

    decks.beatmarks = environment.folders.beatmarks();
    for (int d = 0; d < deckCount; ++d)
    {
        auto deck = std::make_unique<DeckPlayer> (decks, d);
        deck->makeStretcher();
        deck->pattern = &slicegates[static_cast<size_t> (d)];
        decks.decks[static_cast<size_t> (d)] = std::move (deck);
    }
    decks.setPitchRange (settings.pitchRangeIndex);
    damagedContents = instrumentContents.restore();
    sampler.setMasterGain (settings.samplerLevels[0]);

    for (int number = 1; number <= CommandTable::commandCount; ++number)
        addParameter (new CommandParameter (*this, number));

    if (!environment.hasMessageLoop)
        return;
    if (!sampler.restorePads())
        damagedContents.emplace_back (
            N_ ("sampler.xml is damaged; the old file is kept as sampler.xml.bad."));
    startTimer (messageIntervalMs);
}

CPlatterdex::~CPlatterdex()
{
    stopTimer();
    sampler.stop();
    keepPads();
    batchAnalysis.stop();
    loaders.stop(); // a load that still runs changes settings
    for (auto& deck : decks.decks)
        saveAnalysis (decks, *deck);
    preview.load ({});
    recorder.stopRecording();
    settings.automixOn = 0;
    if (environment.mayKeepSettings != nullptr && !environment.mayKeepSettings())
        return;
    juce::ignoreUnused (
        saveSettings (settingsToKeep(), environment.folders.setup())); // nobody is left to be told
    instrumentContents.save();
}

void CPlatterdex::prepareToPlay (double sampleRate, int maximumBlock)
{
    hostBlockSize = maximumBlock;
    for (auto& deck : decks.decks)
        deck->makeStretcher (sampleRate);
    sampler.renewStretchers (sampleRate);
}

void CPlatterdex::setParameter (int number, float value)
{
    dispatch (number, value, 1.0f, 1.0f);
}

void CPlatterdex::dispatch (int number, float value, float arg1, float arg2)
{
    if (number == standaloneCall)
    {
        if (value == standaloneValue)
        {
            const CallbackLock lock (getCallbackLock(), "standalone");
            decks.isStandalone = 1;
        }
        return;
    }

    const auto command = CommandTable::find (number);
    if (!command || command->write == nullptr || !std::isfinite (value))
        return;
    if (command->kind == CommandKind::trigger && !(value > 0.0f))
        return;
    if (command->numbers.decks > 1 && decks.deck (command.deck) == nullptr)
        return;
    if (auto* const hands = HandLog::of (*this))
        hands->command (number, value, arg1, arg2);
    command->write (*this, { command.deck, command.which, value, arg1, arg2 });
}

float CPlatterdex::getParameter (int number)
{
    const auto command = CommandTable::find (number);
    if (!command)
        return 0.0f;
    if (command->read == nullptr || (command->numbers.decks > 1 && decks.deck (command.deck) == nullptr))
        return static_cast<float> (command->absent);
    return static_cast<float> (command->read (*this, command.deck, command.which));
}

double CPlatterdex::controlValue (int number)
{
    const auto reading = static_cast<double> (getParameter (number));
    const auto command = CommandTable::find (number);
    return command && command->polarity == CommandPolarity::turned
               ? command->range.lowest + command->range.highest - reading
               : reading;
}

CommandParameter* CPlatterdex::parameterOf (int number) const
{
    return dynamic_cast<CommandParameter*> (getParameters()[number - 1]);
}

void CPlatterdex::edit (int number, float value)
{
    if (auto* parameter = parameterOf (number))
        parameter->edit (value);
}

void CPlatterdex::beginGesture (int number)
{
    if (auto* parameter = parameterOf (number))
        parameter->beginGesture();
}

void CPlatterdex::endGesture (int number)
{
    if (auto* parameter = parameterOf (number))
        parameter->endGesture();
}

const juce::String CPlatterdex::getParameterName (int number)
{
    return CommandTable::name (number);
}

const juce::String CPlatterdex::getParameterText (int number)
{
    return decimalText (static_cast<double> (getParameter (number)), 2);
}

juce::String CPlatterdex::displayText (int number)
{
    const auto command = CommandTable::find (number);
    if (command && command->text != nullptr)
        if (const auto text = command->text (*this, command.deck, command.which); !text.empty())
            return text;
    return getParameterText (number);
}

int CPlatterdex::getNumParameters()
{
    return CommandTable::commandCount;
}

void CPlatterdex::loadTrack (const juce::File& file, int deck)
{
    if (auto* const hands = HandLog::of (*this))
        hands->load (file.getFullPathName(), deck);
    loaders.load (file, deck);
}

void CPlatterdex::toggleRecorder()
{
    const auto wasRecording = recorder.isRecording();
    recorder.toggle (settings.recordFile.get(), decks.engineRate, environment.wallClock());
    if (!wasRecording && !recorder.isRecording() && environment.prompts != nullptr)
        environment.prompts->notify (
            tr ("No recording"),
            tr ("%1 can't be written. Choose another file for the disk recorder in the preferences.",
                settings.recordFile.get()));
}

bool CPlatterdex::isBusesLayoutSupported (const BusesLayout& layout) const
{
    const auto allStereo = [] (const juce::Array<juce::AudioChannelSet>& sets, size_t count)
    {
        return sets.size() == static_cast<int> (count)
               && std::all_of (sets.begin(), sets.end(),
                               [] (const auto& set) { return set == juce::AudioChannelSet::stereo(); });
    };
    return allStereo (layout.inputBuses, inputNames.size())
           && allStereo (layout.outputBuses, outputNames.size());
}

const juce::String CPlatterdex::getInputChannelName (int channel) const
{
    return channelName (inputNames, channel);
}

const juce::String CPlatterdex::getOutputChannelName (int channel) const
{
    return channelName (outputNames, channel);
}

juce::AudioProcessorEditor* CPlatterdex::createEditor()
{
    return environment.createEditor != nullptr ? environment.createEditor (*this) : nullptr;
}

void CPlatterdex::askToStopAutomix()
{
    if (environment.prompts == nullptr)
        return;
    environment.prompts->askYesNo (tr ("Play Locked, automix is active!"),
                                   tr ("Do you want to stop Automix?"),
                                   [this, stillHere = std::weak_ptr<const int> (lifetime)] (bool yes)
                                   {
                                       if (yes && !stillHere.expired())
                                           automix.stop();
                                   });
}

void CPlatterdex::loadNextTrack (int deck)
{
    auto* player = decks.deck (deck);
    if (player == nullptr || player->isLoading != 0 || player->isPlaying() || settings.automixOn == 0)
        return; // meanwhile somebody else has found something to do for it

    std::optional<juce::File> file (juce::File {});
    if (environment.automixSource != nullptr)
        do
            file = environment.automixSource->nextTrack();
        while (file && *file != juce::File() && !AudioFileTypes::matches (*file));
    if (!file)
        return;
    automixFoundNoTrack = *file == juce::File();
    if (automixFoundNoTrack)
        return loaders.unload (deck);
    automixHasBegun = true;
    loadTrack (*file, deck);
}

/** True if one of automix's decks has a track, or gets one. */
bool CPlatterdex::holdsAutomixTrack() const
{
    return std::any_of (decks.decks.begin(), decks.decks.begin() + 2,
                        [] (const auto& deck) { return !deck->isEmpty() || deck->isLoading != 0; });
}

/** Without a first track there is nothing to mix. Later it waits for what comes into the list. */
void CPlatterdex::stopAutomixWithoutTracks()
{
    automixHasBegun |= holdsAutomixTrack();
    if (!std::exchange (automixFoundNoTrack, false) || automixHasBegun || settings.automixOn == 0)
        return;
    automix.stop();
    {
        // An empty deck that was started would play whatever is loaded next.
        const CallbackLock lock (getCallbackLock(), "automix without a track");
        for (size_t deck : { 0u, 1u })
            decks.decks[deck]->play.on = 0;
    }
    ++automix.timesWithoutTrack;
}

void CPlatterdex::toggleAutomix()
{
    if (settings.automixOn != 0)
        return automix.stop();
    if (environment.automixSource != nullptr)
        environment.automixSource->begin();
    automixHasBegun = false;
    automix.start();
}

std::vector<std::byte> CPlatterdex::settingsToKeep()
{
    std::vector<std::byte> bytes (settingsFileBytes);
    {
        // The texts of the block change under the lock only.
        const CallbackLock lock (getCallbackLock(), "settings");
        writeSettings (settings, bytes);
    }
    setRestingCrossfader (bytes, handCrossfader);
    return bytes;
}

void CPlatterdex::keepPads()
{
    // Runs without a user leave nothing behind, and another program's pads are not ours to change.
    if (environment.hasMessageLoop
        && (environment.mayKeepSettings == nullptr || environment.mayKeepSettings()))
        sampler.keepPads();
}

void CPlatterdex::serveRequests()
{
    using Request = EngineRequest;
    auto& requests = decks.requests;
    const auto forEachDeck = [&requests] (Request request, auto&& serve)
    {
        const auto asked = requests.take (request);
        for (int deck = 0; deck < deckCount; ++deck)
            if ((asked >> deck & 1u) != 0)
                serve (deck);
    };
    forEachDeck (Request::saveAnalysis, [this] (int deck) { loaders.saveSoon (deck); });
    if (requests.take (Request::askToStopAutomix) != 0)
        askToStopAutomix();
    if (requests.take (Request::toggleAutomix) != 0)
        toggleAutomix();
    if (requests.take (Request::toggleRecorder) != 0)
        toggleRecorder();
    forEachDeck (Request::loadNextTrack, [this] (int deck) { loadNextTrack (deck); });
    stopAutomixWithoutTracks();
    if (requests.take (Request::recordLoop) != 0)
        sampler.serveLoop();
    forEachDeck (Request::makeTimecodeDecoder,
                 [this] (int deck) { timecodes[static_cast<size_t> (deck)].renewDecoder(); });
    if (requests.take (Request::keepPads) != 0)
        keepPads();
}

void CPlatterdex::tellOfDamagedContents()
{
    const auto title = tr ("Pads and knobs");
    for (const auto& sentence : std::exchange (damagedContents, {}))
        if (environment.prompts != nullptr)
            environment.prompts->notify (title, tr (juce::String (sentence)));
        else
            listeners.postText ("*** " + title + " ***|" + tr (juce::String (sentence)), 0);
}

void CPlatterdex::deliverMessages()
{
    tellOfDamagedContents();
    serveRequests();
    listeners.deliver();
}
