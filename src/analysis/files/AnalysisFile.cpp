#include "analysis/files/AnalysisFile.h"

#include "analysis/files/AnalysisBinary.h"
#include "analysis/files/AnalysisXml.h"
#include "support/AudioThread.h"
#include "support/files/ReplaceFile.h"

#include <mutex>

namespace AnalysisFile
{
namespace
{
/** Many times the marks of the longest track. */
constexpr juce::int64 largestFile = juce::int64 { 64 } << 20;

/** Between reading what a hand has made and writing it again, no other thread writes. */
std::mutex writing;

juce::MemoryBlock bytesOf (const juce::File& file)
{
    juce::MemoryBlock bytes;
    juce::FileInputStream stream (file);
    if (stream.openedOk() && stream.getTotalLength() <= largestFile)
        stream.readIntoMemoryBlock (bytes);
    return bytes;
}

std::span<const std::byte> spanOf (const juce::MemoryBlock& block)
{
    return { static_cast<const std::byte*> (block.getData()), block.getSize() };
}

bool writeLocked (const juce::File& file, const TrackAnalysis& analysis)
{
    const auto text = AnalysisXml::write (analysis);
    const auto old = bytesOf (file);
    if (old.getSize() == text.size() && old.matches (text.data(), text.size()))
        return true;
    return file.getParentDirectory().createDirectory().wasOk()
           && replaceFile (file, text.data(), text.size());
}
}

juce::File forTrack (const juce::File& folder, const juce::File& track)
{
    assertMayBlock();
    if (!track.existsAsFile())
        return track;
    return folder.getChildFile (track.getFileNameWithoutExtension() + "_" + juce::String (track.getSize())
                                + ".xml");
}

std::optional<TrackAnalysis> read (const juce::File& file)
{
    assertMayBlock();
    if (file == juce::File())
        return std::nullopt;
    // The older form has the same name: it is for a file that has only just come.
    const auto isFile = file.existsAsFile();
    const auto bytes = bytesOf (file);
    return isFile ? AnalysisXml::read (spanOf (bytes)) : AnalysisBinary::read (spanOf (bytes));
}

bool write (const juce::File& file, const TrackAnalysis& analysis)
{
    assertMayBlock();
    const std::lock_guard guard (writing);
    return writeLocked (file, analysis);
}

TrackAnalysis writeFresh (const juce::File& file, TrackAnalysis fresh, bool& isWritten)
{
    assertMayBlock();
    const std::lock_guard guard (writing);
    const auto old = read (file);
    auto merged = old ? mergeFresh (*old, std::move (fresh)) : std::move (fresh);
    isWritten = writeLocked (file, merged);
    return merged;
}
}
