#include "instruments/sampler/SampleImportThread.h"

#include "instruments/sampler/sample/SampleFile.h"
#include "instruments/sampler/sample/SampleTempo.h"
#include "library/tags/ReadTags.h"
#include "support/language/Translate.h"
#include "tracks/AdecTrack.h"
#include "tracks/SampleConversion.h"
#include "tracks/TrackFault.h"
#include "tracks/TrackMeasure.h"

#include <cmath>

namespace
{
/** Frames of a deck that are copied while the callback lock is held: some microseconds. */
constexpr int32_t framesPerHolding = 4096;
constexpr int framesPerPause = 8192;
constexpr float sampleScale = 1.0f / 32768.0f;

/** Beyond eight times full scale a sample is no sound but a broken number. */
constexpr float loudest = 8.0f;

bool isWav (const juce::File& file)
{
    return file.hasFileExtension ("wav");
}

std::optional<WavLoopFacts> loopFactsOf (const juce::File& file)
{
    if (!isWav (file))
        return {};
    juce::FileInputStream stream (file);
    return stream.openedOk() ? WavLoopFacts::read (stream) : std::nullopt;
}

double taggedTempo (const juce::File& file)
{
    SongRecord record;
    readTags (file.getFullPathName(), record);
    const auto bpm = record[SongColumn::bpm].getDoubleValue();
    return bpm >= 1.0 && bpm <= 1000.0 ? bpm : 0.0;
}

/** Marks of the beat tracker in a bar of four beats. */
constexpr size_t marksPerBar = 8;

/** Beats of a long sample by the tracker: the bars that it holds whole, counted from the downbeat, go round as its loop; of
    less than a bar the beats. */
void byAnalysis (SampleFacts& facts, const SampleBuffer& samples, int tempoRangeIndex,
                 const std::stop_token& stop)
{
    TrackMeasure measure (facts.sampleRate, TrackAnalyser::isClip (facts.lengthFrames, facts.sampleRate));
    for (int32_t done = 0; done < facts.lengthFrames && !stop.stop_requested();
         done += TrackAnalyser::blockFrames)
        measure.add (samples.left() + done, samples.right() + done,
                     std::min (TrackAnalyser::blockFrames, facts.lengthFrames - done));
    if (stop.stop_requested())
        return;
    const auto found = measure.finish (tempoRangeIndex);
    if (!found.beatMarks)
        return SampleTempo::none (facts);
    const auto& marks = *found.beatMarks;
    const auto first = static_cast<size_t> (std::max (0, found.downbeatId)) % marksPerBar;
    const auto after = marks.size() > first ? marks.size() - 1 - first : 0;
    const auto count = after - after % (after >= marksPerBar ? marksPerBar : 2);
    if (count == 0)
        return SampleTempo::none (facts);
    facts.bpm = found.tempoTracker;
    facts.beats = static_cast<double> (count);
    facts.beatStart = static_cast<uint32_t> (std::max (0, marks[first].pos));
    facts.beatEnd = static_cast<uint32_t> (std::clamp (marks[first + count].pos, 0, facts.lengthFrames));
}

void findTempo (SampleFacts& facts, const juce::File& file, const SampleBuffer& samples, int tempoRangeIndex,
                const std::stop_token& stop)
{
    if (const auto told = loopFactsOf (file); told && SampleTempo::byLoopFacts (facts, *told))
        return;
    if (const auto bpm = taggedTempo (file); bpm > 0.0)
        return SampleTempo::byStatedTempo (facts, bpm);
    if (SampleTempo::isLoop (facts))
        return SampleTempo::byLength (facts);
    byAnalysis (facts, samples, tempoRangeIndex, stop);
}

/** True until the frames before `end` are there, or are known not to come. Analysis begins behind the last one. */
bool isStillDecoding (const DeckPlayer& deck, int64_t end)
{
    return deck.isLoading != 0 && deck.analysisProgress == 0 && deck.track.loadedFrames < end;
}

void sanitise (float* samples, int frames) noexcept
{
    for (int i = 0; i < frames; ++i)
        samples[i] = std::isfinite (samples[i]) ? std::clamp (samples[i], -loudest, loudest) : 0.0f;
}

int bitsOf (const AdecTrack& track)
{
    return std::max (1, bytesPerSample (track.sampleFormat())) * 8;
}
}

SampleImportThread::SampleImportThread (SamplerSlots& slots, const juce::File& decoderLibrary)
    : desk (slots),
      decoder (decoderLibrary),
      worker ("SampleImport")
{
}

void SampleImportThread::post (int index, std::function<void (SamplerSlot&, const std::stop_token&)> fill)
{
    auto* slot = desk.find (index);
    if (slot == nullptr)
        return;
    slot->isLoading = 1;
    worker.post (fillKind + 3 * index, { [this, slot, fill = std::move (fill)] (const std::stop_token& stop)
                                         {
                                             desk.silence (*slot);
                                             fill (*slot, stop);
                                             if (!stop.stop_requested())
                                                 slot->isLoading = 0;
                                         },
                                         [slot] (const char* reason)
                                         {
                                             slot->isLoading = 0;
                                             slot->changeTexts ([&] (auto& texts) { texts.fault = reason; });
                                         } });
}

void SampleImportThread::publish (SamplerSlot& slot, SampleFacts facts, const std::stop_token& stop)
{
    if (stop.stop_requested())
        return;
    const auto rate = static_cast<float> (desk.stretchRate.get());
    auto stretcher = slot.voice.hasStretcherFor (rate) ? SamplerVoice::Stretcher() : desk.makeStretcher();
    desk.publish (slot, facts, stretcher);
}

juce::String SampleImportThread::decode (SamplerSlot& slot, const juce::File& file,
                                         const std::stop_token& stop)
{
    AdecTrack track (decoder, file);
    if (!track.isPlayable())
        return faultOfTrack (file, decoder);
    SampleFacts facts;
    facts.sampleRate = static_cast<uint32_t> (std::lround (track.sampleRate()));
    facts.channels = static_cast<uint16_t> (track.channels());
    facts.bitsPerSample = static_cast<uint16_t> (bitsOf (track));

    std::vector<float> left (track.mostFrames()), right (track.mostFrames());
    auto sincePause = 0;
    track.decode (
        [&] (std::span<const std::byte> samples)
        {
            auto frames =
                convertToFloat (samples, track.sampleFormat(), track.channels(), left.data(), right.data());
            frames = std::min (frames, SampleBuffer::capacity - facts.lengthFrames);
            sanitise (left.data(), frames);
            sanitise (right.data(), frames);
            std::copy_n (left.data(), frames, slot.buffer.left() + facts.lengthFrames);
            std::copy_n (right.data(), frames, slot.buffer.right() + facts.lengthFrames);
            facts.lengthFrames += frames;
            sincePause += frames;
            if (sincePause >= framesPerPause)
            {
                sincePause = 0;
                desk.world.pacing.pause();
            }
            return !stop.stop_requested() && facts.lengthFrames < SampleBuffer::capacity;
        });
    if (facts.lengthFrames < 1)
        return stop.stop_requested() ? juce::String() : faultOfTrack (file, decoder);
    if (!stop.stop_requested())
        findTempo (facts, file, slot.buffer, desk.world.settings.tempoRangeIndex, stop);
    publish (slot, facts, stop);
    return {};
}

void SampleImportThread::load (int index, const juce::File& file)
{
    post (index,
          [this, file] (SamplerSlot& slot, const std::stop_token& stop)
          {
              slot.buffer.release();
              const auto fault = decode (slot, file, stop);
              slot.changeTexts ([&] (auto& texts) { texts.fault = fault; });
          });
}

bool SampleImportThread::copyTrack (SamplerSlot& slot, const GhostTake& take, const juce::String& path,
                                    const std::stop_token& stop)
{
    const auto* deck = desk.world.deck (take.deck);
    const auto goesOn = [&] { return !stop.stop_requested() && deck->texts().filePath == path; };
    while (goesOn() && isStillDecoding (*deck, take.start + take.frames))
        juce::Thread::sleep (1);
    for (int32_t done = 0; done < take.frames; done += framesPerHolding)
    {
        if (!goesOn())
            return false;
        const CallbackLock lock (desk.world.callbackLock, "copy loop");
        const auto from = take.start + done;
        const auto wanted = std::min (framesPerHolding, take.frames - done);
        const auto there =
            static_cast<int32_t> (std::clamp<int64_t> (deck->track.loadedFrames - from, 0, wanted));
        const int16_t* const sides[] { deck->audioMemory.left(), deck->audioMemory.right() };
        for (int side = 0; side < 2; ++side)
        {
            auto* const to = (side == 0 ? slot.buffer.left() : slot.buffer.right()) + done;
            std::transform (sides[side] + from, sides[side] + from + there, to,
                            [] (int16_t sample) { return static_cast<float> (sample) * sampleScale; });
            std::fill_n (to + there, wanted - there, 0.0f);
        }
    }
    return goesOn();
}

void SampleImportThread::refuse (SamplerSlot& slot, const juce::String& reason)
{
    slot.isUnsaved = 0;
    slot.changeTexts ([&] (auto& texts) { texts = { {}, texts.name, reason }; });
}

void SampleImportThread::keep (SamplerSlot& slot, const juce::File& recordings)
{
    if (slot.isUnsaved == 0 || slot.isEmpty())
        return;
    const auto name = slot.texts().name;
    recordings.createDirectory();
    const auto file = SampleFile::nameFor (recordings, name, juce::Time::getCurrentTime());
    const auto isWritten =
        SampleFile::write (file, slot.buffer.left(), slot.buffer.right(), desk.factsOf (slot), 0.0);
    if (slot.isUnsaved == 0) // It was cleared meanwhile.
        return juce::ignoreUnused (file.deleteFile());
    slot.changeTexts (
        [&] (auto& texts)
        {
            if (isWritten)
                texts.recording = file.getFullPathName();
            else
                texts.fault = tr ("The loop can't be written to %1.", recordings.getFullPathName());
        });
    desk.world.requests.ask (EngineRequest::keepPads, 0);
}

void SampleImportThread::take (int index, const GhostTake& take, const juce::File& recordings)
{
    auto* pad = desk.find (index);
    if (pad == nullptr)
        return;
    pad->isUnsaved = index != SamplerSlots::preview ? 1 : 0;
    const auto path = desk.world.deck (take.deck)->texts().filePath;
    post (index,
          [this, take, path, recordings] (SamplerSlot& slot, const std::stop_token& stop)
          {
              slot.buffer.release();
              if (!copyTrack (slot, take, path, stop))
              {
                  if (!stop.stop_requested())
                      refuse (slot, tr ("The deck has another track by now."));
                  return;
              }
              SampleFacts facts;
              facts.lengthFrames = take.frames;
              facts.sampleRate = static_cast<uint32_t> (std::lround (take.sampleRate));
              facts.beats = 2.0 * GhostTake::beatsOf (take.lengthIndex);
              facts.bpm = take.bpm;
              publish (slot, facts, stop);
              keep (slot, recordings);
          });
}

void SampleImportThread::copy (int from, int to, const juce::File& recordings)
{
    auto *source = desk.find (from), *target = desk.find (to);
    if (source == nullptr || target == nullptr || source == target)
        return;
    target->isUnsaved = from == SamplerSlots::preview || source->isUnsaved != 0 ? 1 : 0;
    post (to,
          [this, source, recordings] (SamplerSlot& slot, const std::stop_token& stop)
          {
              slot.buffer.release();
              const auto facts = desk.factsOf (*source);
              if (facts.lengthFrames < 1)
                  return refuse (slot, tr ("The sample has been cleared."));
              std::copy_n (source->buffer.left(), facts.lengthFrames, slot.buffer.left());
              std::copy_n (source->buffer.right(), facts.lengthFrames, slot.buffer.right());
              publish (slot, facts, stop);
              keep (slot, recordings);
          });
}

void SampleImportThread::release (int index)
{
    post (index, [] (SamplerSlot& slot, const std::stop_token&) { slot.buffer.release(); });
}

void SampleImportThread::save (int index, const juce::File& file, double rate,
                               std::function<void (bool isWritten)> done)
{
    auto* slot = desk.find (index);
    if (slot == nullptr)
        return;
    worker.post (
        { [this, slot, file, rate, done] (const std::stop_token&)
          {
              const auto facts = desk.factsOf (*slot);
              done (facts.lengthFrames > 0
                    && SampleFile::write (file, slot->buffer.left(), slot->buffer.right(), facts, rate));
          },
          [done] (const char*) { done (false); } });
}

void SampleImportThread::renewStretchers()
{
    worker.post (stretcherKind + 3 * SamplerSlots::slotCount,
                 { [this] (const std::stop_token& stop)
                   {
                       const auto rate = static_cast<float> (desk.stretchRate.get());
                       for (auto& slot : desk.slots)
                       {
                           if (slot.isEmpty() || slot.voice.hasStretcherFor (rate) || stop.stop_requested())
                               continue;
                           auto stretcher = desk.makeStretcher();
                           desk.changeStretcher (slot, stretcher);
                       }
                   } });
}

void SampleImportThread::stop()
{
    for (int index = 0; index <= SamplerSlots::slotCount; ++index)
        for (const auto kind : { fillKind, stretcherKind })
            worker.cancel (kind + 3 * index);
    worker.wait();
}
