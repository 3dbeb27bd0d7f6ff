#include "analysis/files/AnalysisFile.h"

#include "analysis/files/AnalysisBinary.h"
#include "analysis/files/AnalysisXml.h"
#include "support/AudioThread.h"
#include "support/files/ReplaceFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <mutex>

namespace AnalysisFile
{
namespace
{
/** Many times the marks of the longest track. */
constexpr juce::int64 largestFile = juce::int64 { 64 } << 20;

/** Keeps other threads and processes from writing between reading a file and writing it again. A folder that can't
    be locked, as on some network drives, is written all the same. */
class WriteLock
{
public:
    explicit WriteLock (const juce::File& file)
        : folder (::open (file.getParentDirectory().getFullPathName().toRawUTF8(),
                          O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        if (folder >= 0)
            ::flock (folder, LOCK_EX);
    }

    ~WriteLock()
    {
        if (folder >= 0)
            ::close (folder); // unlocks
    }

    WriteLock (const WriteLock&) = delete;
    WriteLock& operator= (const WriteLock&) = delete;

private:
    static inline std::mutex threads;
    const std::lock_guard<std::mutex> guard { threads };
    const int folder;
};

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
    const WriteLock lock (file);
    return writeLocked (file, analysis);
}

bool update (const juce::File& file,
             const std::function<std::optional<TrackAnalysis> (const std::optional<TrackAnalysis>&)>& change)
{
    assertMayBlock();
    if (file.getParentDirectory().createDirectory().failed())
        return false;
    const WriteLock lock (file);
    if (file.existsAsFile() && !juce::FileInputStream (file).openedOk())
        return false;
    const auto old = read (file);
    const auto next = change (old);
    if (!next)
        return true;
    if (!old && file.getSize() > 0)
        juce::ignoreUnused (
            file.moveFileTo (file.getSiblingFile (file.getFileName() + ".bad"))); // for a curious hand
    return writeLocked (file, *next);
}

TrackAnalysis writeFresh (const juce::File& file, TrackAnalysis fresh, bool& isWritten)
{
    auto merged = fresh;
    isWritten = update (file,
                        [&] (const auto& old)
                        {
                            merged = old ? mergeFresh (*old, std::move (fresh)) : std::move (fresh);
                            return std::optional (merged);
                        });
    return merged;
}
}
