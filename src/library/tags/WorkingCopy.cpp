#include "library/tags/WorkingCopy.h"

#include "support/files/AudioFileTypes.h"

#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{
namespace fs = std::filesystem;

/** Gives a file the owner, the rights and the extended attributes of another. @returns false if the owner can't be given */
bool copyAttributes (const fs::path& from, const fs::path& to)
{
    struct stat facts
    {
    };
    if (::stat (from.c_str(), &facts) != 0 || ::chown (to.c_str(), facts.st_uid, facts.st_gid) != 0
        || ::chmod (to.c_str(), facts.st_mode) != 0)
        return false;

    // A file system without such attributes has none to lose.
    std::vector<char> names (
        static_cast<size_t> (std::max<ssize_t> (0, ::listxattr (from.c_str(), nullptr, 0))));
    const auto length = ::listxattr (from.c_str(), names.data(), names.size());
    for (auto name = names.begin(); length > 0 && name < names.begin() + length;)
    {
        const std::string each (&*name);
        std::vector<char> value (
            static_cast<size_t> (std::max<ssize_t> (0, ::getxattr (from.c_str(), each.c_str(), nullptr, 0))));
        if (::getxattr (from.c_str(), each.c_str(), value.data(), value.size()) >= 0)
            juce::ignoreUnused (::setxattr (to.c_str(), each.c_str(), value.data(), value.size(), 0));
        name += static_cast<std::ptrdiff_t> (each.size()) + 1;
    }
    return true;
}

/** Writes everything from the beginning of a file. */
bool writeAll (int target, int source)
{
    std::vector<char> bytes (1 << 16);
    for (;;)
    {
        const auto count = ::read (source, bytes.data(), bytes.size());
        if (count <= 0)
            return count == 0;
        for (ssize_t done = 0; done < count;)
        {
            const auto written = ::write (target, bytes.data() + done, static_cast<size_t> (count - done));
            if (written <= 0)
                return false;
            done += written;
        }
    }
}
}

WorkingCopy::WorkingCopy (const fs::path& file)
    : original (file),
      copy (file.parent_path()
            / (AudioFileTypes::workingCopyPrefix + juce::Uuid().toString().toStdString()
               + file.extension().string()))
{
    std::error_code error;
    made = fs::copy_file (original, copy, error) && !error;
}

WorkingCopy::~WorkingCopy()
{
    std::error_code error;
    if (!isKept)
        fs::remove (copy, error);
}

bool WorkingCopy::takePlace()
{
    std::error_code error;
    if (fs::hard_link_count (original, error) != 1 || error || !copyAttributes (original, copy))
        return overwriteOriginal();
    fs::rename (copy, original, error);
    return !error;
}

bool WorkingCopy::overwriteOriginal()
{
    std::error_code error;
    const auto size = fs::file_size (copy, error);
    const auto source = ::open (copy.c_str(), O_RDONLY | O_CLOEXEC),
               target = ::open (original.c_str(), O_WRONLY | O_CLOEXEC);
    // The room is taken before the first byte changes.
    auto isGood =
        !error && source >= 0 && target >= 0 && ::posix_fallocate (target, 0, static_cast<off_t> (size)) == 0;
    if (isGood)
    {
        isGood = writeAll (target, source) && ::ftruncate (target, static_cast<off_t> (size)) == 0
                 && ::fsync (target) == 0;
        isKept = !isGood;
    }
    for (const auto descriptor : { source, target })
        if (descriptor >= 0)
            ::close (descriptor);
    return isGood;
}
