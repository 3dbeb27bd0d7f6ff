#include "cli/perform/SetFile.h"

#include "cli/TerminalOutput.h"
#include "offline/SetPerformance.h"
#include "session/Session.h"
#include "support/language/Translate.h"

namespace
{
constexpr size_t largestSet = size_t { 64 } << 20;
}

std::optional<SetScript> readSetFile (const juce::File& file)
{
    const auto path = file.getFullPathName();
    if (file.isDirectory() || !file.exists())
    {
        failWith (file.isDirectory() ? tr ("%1 is a folder, not a set.", path)
                                     : tr ("%1 does not exist.", path));
        return {};
    }
    juce::FileInputStream stream (file);
    juce::MemoryBlock bytes;
    if (stream.failedToOpen())
    {
        failWith (tr ("%1 can't be read.", path));
        return {};
    }
    if (stream.readIntoMemoryBlock (bytes, static_cast<ssize_t> (largestSet) + 1) > largestSet)
    {
        failWith (tr ("%1 is larger than 64 MB, too large for a set.", path));
        return {};
    }

    auto parsed = parseSetScript ({ static_cast<const char*> (bytes.getData()), bytes.getSize() });
    if (const auto* error = std::get_if<SetScriptError> (&parsed))
    {
        failWith (path + ":" + juce::String (error->line) + ": "
                  + juce::String::fromUTF8 (error->sentence.c_str()));
        return {};
    }
    return std::get<SetScript> (std::move (parsed));
}

OfflineHost::Options hostingOf (const SetScript& script, const RunRoot& root)
{
    OfflineHost::Options hosting;
    hosting.root = root.folder;
    hosting.mayKeepSettings = [&root] { return root.mayKeepSettings(); };
    hosting.decoderLibrary = Session::decoderBesideBinary();
    hosting.hasTransport = script.hasHost();
    return hosting;
}

juce::StringArray performSetFile (const SetScript& script, OfflineHost& host, const juce::File& file,
                                  std::function<void (const juce::String&)> print)
{
    juce::StringArray notLoaded;
    performSet (script, host,
                { file.getParentDirectory(), std::move (print), reportLine,
                  [&notLoaded] (const juce::String& path) { notLoaded.addIfNotAlreadyThere (path); } });
    return notLoaded;
}

int endOfSet (const juce::StringArray& notLoaded)
{
    for (const auto& path : notLoaded)
        failWith (tr ("%1 was not loaded, and is missing in what was performed.", oneLine (path)));
    return notLoaded.isEmpty() ? ExitCode::success : ExitCode::badInput;
}
