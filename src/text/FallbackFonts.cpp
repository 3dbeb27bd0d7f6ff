#include "text/FallbackFonts.h"

#include "text/FreeTypeFace.h"

#include <algorithm>
#include <optional>

namespace
{
/** The system's folders of fonts: the data folders among the XDG base directories. */
juce::StringArray fontFolders()
{
    const auto variable = [] (const char* name, const juce::String& otherwise)
    { return juce::SystemStats::getEnvironmentVariable (name, otherwise); };
    const auto home = juce::File::getSpecialLocation (juce::File::userHomeDirectory);

    juce::StringArray folders { home.getChildFile (".fonts").getFullPathName() };
    auto roots =
        juce::StringArray::fromTokens (variable ("XDG_DATA_DIRS", "/usr/local/share:/usr/share"), ":", "");
    roots.insert (0, variable ("XDG_DATA_HOME", home.getChildFile (".local/share").getFullPathName()));
    for (const auto& root : roots)
        if (juce::File::isAbsolutePath (root))
            folders.addIfNotAlreadyThere (juce::File (root).getChildFile ("fonts").getFullPathName());
    return folders;
}

/** Ranks a font beside a bold sans by its file's name: 0 is best. */
int unfitness (const juce::String& name)
{
    auto points = 0;
    for (const auto* good : { "Bold", "Sans" })
        points += name.contains (good) ? 0 : 2;
    for (const auto* bad : { "Italic", "Oblique", "Serif", "Mono", "Condensed" })
        points += name.contains (bad) ? 1 : 0;
    return points;
}

std::vector<juce::File> listFonts()
{
    std::vector<juce::File> files;
    for (const auto& folder : fontFolders())
        for (const auto& entry :
             juce::RangedDirectoryIterator (juce::File (folder), true, "*.ttf;*.otf;*.ttc"))
            files.push_back (entry.getFile());
    std::sort (files.begin(), files.end(),
               [] (const auto& a, const auto& b)
               {
                   const auto rank = [] (const juce::File& file)
                   { return std::make_pair (unfitness (file.getFileName()), file.getFullPathName()); };
                   return rank (a) < rank (b);
               });
    return files;
}
}

struct FallbackFonts::Opened
{
    explicit Opened (const juce::File& path)
        : map (path, juce::MemoryMappedFile::readOnly),
          face (map.getData(), map.getSize()),
          file { path.getFullPathName(), map.getData(), map.getSize(), face.getHeightPerEm() }
    {
    }

    juce::MemoryMappedFile map;
    FreeTypeFace face;
    File file;
};

FallbackFonts::FallbackFonts()
{
    // A debug build counts mapped files in an object that its first one makes; it has to outlive those kept here.
    const juce::MemoryMappedFile none ({}, juce::MemoryMappedFile::readOnly);
}

FallbackFonts::~FallbackFonts()
{
    searcher.request_stop();
    asked.signal();
}

FallbackFonts& FallbackFonts::getInstance()
{
    static FallbackFonts fonts;
    return fonts;
}

FallbackFonts::Found FallbackFonts::findFont (uint32_t code)
{
    {
        const juce::ScopedLock hold (lock);
        if (const auto known = answers.find (code); known != answers.end())
            return { known->second };
        if (searcher.joinable())
        {
            if (std::find (questions.begin(), questions.end(), code) == questions.end())
                questions.push_back (code);
            asked.signal();
            return { nullptr, false };
        }
    }
    const auto* file = lookFor (code);
    const juce::ScopedLock hold (lock);
    answers.emplace (code, file);
    return { file };
}

void FallbackFonts::searchInBackground (std::function<void()> onFound)
{
    const juce::ScopedLock hold (lock);
    if (searcher.joinable())
        return;
    whenFound = std::move (onFound);
    searcher = std::jthread ([this] (const std::stop_token& stop) { searchUntil (stop); });
}

void FallbackFonts::searchUntil (std::stop_token stop)
{
    juce::Thread::setCurrentThreadName ("Fallback fonts");
    while (!stop.stop_requested())
    {
        std::optional<uint32_t> code;
        {
            const juce::ScopedLock hold (lock);
            if (!questions.empty())
                code = questions.front();
        }
        if (!code.has_value())
        {
            asked.wait (-1);
            continue;
        }
        const auto* file = lookFor (*code);
        {
            const juce::ScopedLock hold (lock);
            answers.emplace (*code, file);
            std::erase (questions, *code);
        }
        if (file != nullptr)
            whenFound();
    }
}

const FallbackFonts::File* FallbackFonts::lookFor (uint32_t code)
{
    const juce::ScopedLock hold (searching);
    for (const auto& font : opened)
        if (font->face.hasGlyph (code))
            return &font->file;

    if (!listed)
        candidates = listFonts();
    listed = true;
    for (auto candidate = candidates.begin(); candidate != candidates.end(); ++candidate)
    {
        auto font = std::make_unique<Opened> (*candidate);
        if (!font->face.hasGlyph (code))
            continue;
        candidates.erase (candidate);
        return &opened.emplace_back (std::move (font))->file;
    }
    return nullptr;
}
