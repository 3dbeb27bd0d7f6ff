#include "library/import/ImportRun.h"

#include "library/import/FolderWalk.h"
#include "support/files/AudioFileTypes.h"

ImportRun::ImportRun (SongDatabase& database, ImportProgress& p, SongBatch::Judge judge)
    : batch (database, std::move (judge)),
      progress (p)
{
}

ImportResult ImportRun::end()
{
    batch.store();
    result.added = batch.added();
    result.refused = batch.refused();
    result.code = batch.code();
    result.unplayable = batch.unplayable();
    return result;
}

bool ImportRun::importFile (const juce::String& path, double part)
{
    result.isCancelled = progress.shouldExit();
    if (result.isCancelled)
        return false;
    if (AudioFileTypes::matches (juce::File::createFileWithoutCheckingPath (path)))
    {
        progress.setStatusText (path);
        const auto refused = batch.unplayable().size();
        const auto isGoingOn = batch.take (path);
        if (batch.unplayable().size() == refused)
            ++result.accepted;
        if (!isGoingOn)
            return false;
        if (batch.unplayable().size() == refused)
            onAccepted (path);
    }
    progress.setProgress (part);
    return true;
}

bool ImportRun::importFolder (const juce::File& folder, double from, double to)
{
    return FolderWalk::visitFiles (folder, [this, from, to] (const juce::String& path, double estimate)
                                   { return importFile (path, from + (to - from) * estimate); });
}
