#include "instruments/sampler/Sampler.h"

#include "instruments/sampler/sample/SampleFile.h"
#include "support/files/RegularFile.h"
#include "support/files/ReplaceFile.h"
#include "support/language/Translate.h"

#include <algorithm>

namespace
{
/** The name of a sample that has no other: that of its file. */
juce::String nameOf (const juce::File& file)
{
    return file.getFileNameWithoutExtension();
}

/** False for a document that ends before its end, or is none. */
bool isWholeXml (const juce::File& file)
{
    using Event = XmlPullParser::Event;
    XmlPullParser parser (file);
    auto event = parser.next();
    while (event != Event::finished && event != Event::failed)
        event = parser.next();
    return event == Event::finished;
}

bool writeBank (const juce::File& file, const SamplerBank& bank)
{
    const auto xml = bank.toXml();
    return replaceFile (file, xml.toRawUTF8(), xml.getNumBytesAsUTF8());
}
}

Sampler::Sampler (DeckWorld& world, const SongPosition& hostPosition, const Folders& f,
                  const juce::File& decoderLibrary, std::function<juce::Time()> clock)
    : desk (world),
      folders (f),
      host (hostPosition),
      wallClock (std::move (clock)),
      importThread (desk, decoderLibrary)
{
}

void Sampler::waitOffline() const
{
    // A run faster than real time has a sample from the moment at which it was asked for.
    if (!desk.world.pacing.isLive())
        importThread.wait();
}

void Sampler::loadSample (int index, const juce::File& file)
{
    auto* const slot = find (index);
    if (slot == nullptr)
        return;
    desk.clear (*slot);
    slot->changeTexts ([&] (auto& texts) { texts = { file.getFullPathName(), nameOf (file) }; });
    importThread.load (index, file);
    waitOffline();
    askToKeep();
}

void Sampler::saveSample (int index, const juce::File& file, std::function<void (bool isWritten)> done)
{
    auto* const slot = find (index);
    if (slot == nullptr)
        return;
    const auto number = slot->sampleNumber.get();
    importThread.save (index, file, SampleFile::usualRate,
                       [this, slot, number, file, done = std::move (done)] (bool isWritten)
                       {
                           if (isWritten)
                               giveFile (*slot, number, file);
                           done (isWritten);
                       });
    waitOffline();
}

void Sampler::giveFile (SamplerSlot& slot, uint32_t sampleNumber, const juce::File& file)
{
    {
        const CallbackLock lock (desk.world.callbackLock, "loop has a file");
        if (slot.sampleNumber != sampleNumber || slot.isUnsaved == 0)
            return;
        slot.isUnsaved = 0;
    }
    juce::File recording;
    slot.changeTexts (
        [&] (auto& texts)
        {
            // Texts of another sample are written after its number has risen.
            if (slot.sampleNumber != sampleNumber)
                return;
            recording = juce::File (texts.recording);
            texts = { file.getFullPathName(), texts.name };
        });
    if (recording != juce::File() && recording != file)
        recording.deleteFile();
    askToKeep();
}

void Sampler::clearSlot (int index)
{
    auto* const slot = find (index);
    if (slot == nullptr)
        return;
    if (const auto recording = slot->texts().recording; slot->isUnsaved != 0 && recording.isNotEmpty())
        juce::File (recording).deleteFile();
    desk.clear (*slot);
    slot->changeTexts ([] (auto& texts) { texts = {}; });
    importThread.release (index);
    askToKeep();
}

void Sampler::copySlot (int from, int to)
{
    auto *const source = find (from), *const target = find (to);
    if (source == nullptr || target == nullptr || source == target || source->isEmpty())
        return;
    const int mode = source->playMode;
    const auto velocity = source->followsVelocity.get();
    desk.clear (*target);
    target->playMode = mode;
    target->followsVelocity = velocity;
    target->changeTexts ([from = source->texts()] (auto& texts) { texts = { from.filePath, from.name }; });
    importThread.copy (from, to, recordings());
    waitOffline();
    askToKeep();
}

void Sampler::rename (int index, const juce::String& name)
{
    if (auto* const slot = find (index))
    {
        slot->changeTexts ([&] (auto& texts) { texts.name = name; });
        askToKeep();
    }
}

void Sampler::ghostRecordToPad (int deckIndex, int pad, int lengthIndex)
{
    auto* const deck = desk.world.deck (deckIndex);
    if (deck == nullptr || find (pad) == nullptr)
        return;
    std::optional<GhostTake> take;
    {
        const CallbackLock lock (desk.world.callbackLock, "loop recorder");
        take = GhostTake::of (*deck, lengthIndex);
    }
    if (take)
        takeLoop (pad, *take);
}

void Sampler::serveLoop()
{
    std::optional<GhostTake> take;
    {
        const CallbackLock lock (desk.world.callbackLock, "loop recorder");
        pendingLoop.swap (take);
    }
    if (take)
        takeLoop (preview, *take);
}

void Sampler::takeLoop (int index, const GhostTake& take)
{
    auto& slot = *find (index);
    const auto mode = index == preview ? static_cast<int> (loopMode) : slot.playMode.get();
    const auto track = desk.world.deck (take.deck)->texts();
    desk.clear (slot);
    slot.playMode = mode;
    slot.changeTexts (
        [&] (auto& texts)
        {
            texts = { track.filePath,
                      track.title.isNotEmpty() ? track.title : nameOf (juce::File (track.filePath)) };
        });
    importThread.take (index, take, recordings());
    waitOffline();
    if (index != preview)
        askToKeep();
}

SamplerBank Sampler::bank() const
{
    SamplerBank all;
    all.name = currentBank;
    for (int index = 0; index < padCount; ++index)
    {
        const auto& slot = desk.slots[static_cast<size_t> (index)];
        const auto texts = slot.texts();
        const auto isUnsaved = slot.isUnsaved != 0;
        const auto path = isUnsaved ? texts.recording : texts.filePath;
        if (path.isNotEmpty())
            all.samples.push_back (
                { index, path, texts.name, slot.playMode, slot.followsVelocity != 0, isUnsaved });
    }
    return all;
}

juce::String Sampler::loadBank (const juce::File& file)
{
    if (!file.existsAsFile())
        return tr ("The bank %1 does not exist.", file.getFullPathName());
    const auto read = SamplerBank::read (XmlPullParser (file));
    if (!read)
        return tr ("%1 is no bank of the sampler.", file.getFullPathName());
    apply (*read);
    currentBank = nameOf (file);
    askToKeep();
    return {};
}

void Sampler::apply (const SamplerBank& read)
{
    currentBank = read.name;
    for (int index = 0; index < padCount; ++index)
    {
        desk.clear (*find (index));
        find (index)->changeTexts ([] (auto& texts) { texts = {}; });
        importThread.release (index);
    }
    for (const auto& sample : read.samples)
    {
        auto& slot = *find (sample.slot);
        slot.playMode = sample.playMode;
        slot.followsVelocity = sample.followsVelocity ? 1 : 0;
        slot.isUnsaved = sample.isUnsaved ? 1 : 0;
        slot.changeTexts (
            [&] (auto& texts)
            {
                texts = { sample.filePath, sample.name };
                if (sample.isUnsaved)
                    texts.recording = sample.filePath;
            });
        importThread.load (sample.slot, juce::File::isAbsolutePath (sample.filePath)
                                            ? juce::File (sample.filePath)
                                            : juce::File());
    }
    waitOffline();
}

juce::String Sampler::saveBank (const juce::File& file)
{
    importThread.wait();
    if (!keepUnsavedLoops())
        return tr ("A recorded loop can't be written to %1.", folders.samples().getFullPathName());
    auto all = bank();
    all.name = nameOf (file);
    if (!writeBank (file, all))
        return tr ("The bank can't be written to %1.", file.getFullPathName());
    currentBank = all.name;
    return {};
}

int Sampler::unsavedLoops() const noexcept
{
    return static_cast<int> (std::count_if (desk.slots.begin(), desk.slots.begin() + padCount,
                                            [] (const auto& slot) { return slot.isUnsaved != 0; }));
}

bool Sampler::keepUnsavedLoops()
{
    auto areKept = true;
    for (int index = 0; index < padCount; ++index)
    {
        auto& slot = *find (index);
        if (slot.isUnsaved == 0)
            continue;
        const auto texts = slot.texts();
        const auto target = SampleFile::nameFor (folders.samples(), texts.name, wallClock());
        const auto number = slot.sampleNumber.get();
        // Written anew and not moved: a move to another disk, which may be full, is a copy that nobody checks.
        auto isKept = false;
        const auto note = [&isKept] (bool isWritten) { isKept = isWritten; };
        importThread.save (index, target, 0.0, note);
        importThread.wait();
        if (isKept)
            giveFile (slot, number, target);
        areKept = areKept && isKept;
    }
    return areKept;
}

bool Sampler::restorePads()
{
    const auto file = padsFile();
    if (!file.exists())
        return true;
    const auto left = SamplerBank::read (XmlPullParser (file));
    const auto isWhole = left.has_value() && isWholeXml (file);
    if (!isWhole && isRegularFile (file))
        juce::ignoreUnused (file.copyFileTo (file.getSiblingFile (file.getFileName() + ".bad")));
    if (left)
        apply (*left);
    return isWhole;
}

void Sampler::keepPads()
{
    juce::ignoreUnused (writeBank (padsFile(), bank())); // the next change tries again
}
