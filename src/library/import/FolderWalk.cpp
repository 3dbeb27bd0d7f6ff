#include "library/import/FolderWalk.h"

#include "support/AudioThread.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <unordered_set>
#include <vector>

namespace
{
namespace fs = std::filesystem;

struct Child
{
    std::string name;
    bool isFolder, isLink;
};

std::vector<Child> childrenOf (const fs::path& folder)
{
    std::vector<Child> children;
    std::error_code error;
    for (fs::directory_iterator entry (folder, error), end; !error && entry != end; entry.increment (error))
    {
        std::error_code unreachable;
        Child child { entry->path().filename().string(), entry->is_directory (unreachable),
                      entry->is_symlink (unreachable) };
        if ((child.isFolder || entry->is_regular_file (unreachable))
            && juce::CharPointer_UTF8::isValidString (child.name.c_str(),
                                                      static_cast<int> (child.name.size())))
            children.push_back (std::move (child));
    }
    std::sort (children.begin(), children.end(),
               [] (const Child& a, const Child& b)
               { return strverscmp (a.name.c_str(), b.name.c_str()) < 0; });
    return children;
}

class Walk
{
public:
    Walk (const fs::path& rootFolder, const FolderWalk::Visitor& v) : visitor (v)
    {
        std::error_code error;
        realRoot = fs::canonical (rootFolder, error);
    }

    /** @param realPath   the same folder by a path without links
        @param from, to   the folder's share of the whole walk */
    bool visit (const fs::path& path, const fs::path& realPath, double from, double to)
    {
        if (!entered.insert (realPath.string()).second)
            return true;
        const auto children = childrenOf (path);
        const auto share = (to - from) / static_cast<double> (std::max<size_t> (1, children.size()));
        for (size_t i = 0; i < children.size(); ++i)
        {
            const auto begin = from + share * static_cast<double> (i);
            if (!(children[i].isFolder ? enter (path, realPath, children[i], begin, begin + share)
                                       : visitor (toText (path / children[i].name), begin + share)))
                return false;
        }
        return true;
    }

    fs::path realRoot;

private:
    bool enter (const fs::path& path, const fs::path& realPath, const Child& child, double from, double to)
    {
        const auto below = path / child.name;
        if (!child.isLink)
            return visit (below, realPath / child.name, from, to);

        std::error_code error;
        const auto target = fs::canonical (below, error);
        // A folder below the root has a path of its own, by which its songs are known.
        const auto isOwn =
            std::mismatch (realRoot.begin(), realRoot.end(), target.begin(), target.end()).first
            == realRoot.end();
        return error || isOwn || visit (below, target, from, to);
    }

    static juce::String toText (const fs::path& path) { return juce::String::fromUTF8 (path.c_str()); }

    const FolderWalk::Visitor& visitor;
    std::unordered_set<std::string> entered;
};
}

bool FolderWalk::visitFiles (const juce::File& folder, const Visitor& visitor)
{
    assertMayBlock();
    const fs::path root (folder.getFullPathName().toStdString());
    Walk walk (root, visitor);
    return walk.visit (root, walk.realRoot, 0.0, 1.0);
}
