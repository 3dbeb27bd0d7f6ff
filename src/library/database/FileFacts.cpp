#include "library/database/FileFacts.h"

#include "library/sql/StoredText.h"
#include "support/AudioThread.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace
{
/** The facts that are the same for all files of a volume. */
struct Volume
{
    bool removable = false;
    juce::String label;
};

/** File systems of optical, network and memory volumes, by their magic numbers. */
constexpr std::array<uint32_t, 10> movingFileSystems {
    ISOFS_SUPER_MAGIC, 0x15013346 /* UDF */, NFS_SUPER_MAGIC, SMB_SUPER_MAGIC, CIFS_SUPER_MAGIC,
    SMB2_SUPER_MAGIC,  AFS_SUPER_MAGIC,      TMPFS_MAGIC,     RAMFS_MAGIC,     CODA_SUPER_MAGIC,
};

/** Asks the kernel if the disk is removable; a partition's disk is the folder above it. */
bool isRemovableDisk (dev_t device)
{
    const auto block =
        "/sys/dev/block/" + std::to_string (major (device)) + ":" + std::to_string (minor (device));
    for (const auto* name : { "/removable", "/../removable" })
        if (std::ifstream flag (block + name); flag)
            return flag.get() == '1';
    return false;
}

/** Labels stand as links from their name, with "\x20" for a blank and the like, to their device. */
juce::String labelOf (dev_t device)
{
    std::error_code failed;
    for (std::filesystem::directory_iterator it ("/dev/disk/by-label", failed), end; !failed && it != end;
         it.increment (failed))
    {
        struct stat target
        {
        };
        if (::stat (it->path().c_str(), &target) != 0 || target.st_rdev != device)
            continue;
        std::string label;
        const auto name = it->path().filename().string();
        for (size_t i = 0; i < name.size(); ++i)
        {
            const auto isCode = name.compare (i, 2, "\\x") == 0 && i + 4 <= name.size();
            label +=
                isCode ? static_cast<char> (juce::String (name.substr (i + 2, 2)).getHexValue32()) : name[i];
            i += isCode ? 3 : 0;
        }
        return StoredText::read (label.c_str());
    }
    return {};
}

Volume readVolume (const juce::String& path, dev_t device)
{
    struct statfs system
    {
    };
    const auto known = ::statfs (path.toRawUTF8(), &system) == 0;
    const auto moving = known
                        && std::find (movingFileSystems.begin(), movingFileSystems.end(),
                                      static_cast<uint32_t> (system.f_type))
                               != movingFileSystems.end();
    return { moving || isRemovableDisk (device), labelOf (device) };
}

/** An import asks for thousands of files of one volume: it is looked at again only when another one comes between. */
Volume volumeOf (const juce::String& path, dev_t device)
{
    struct Last
    {
        dev_t device = 0;
        Volume volume;
    };
    thread_local Last last;
    if (last.device != device)
        last = { device, readVolume (path, device) };
    return last.volume;
}
}

bool FileFacts::isPresent (const juce::String& path)
{
    assertMayBlock();
    struct stat facts
    {
    };
    return path.isNotEmpty() && ::stat (path.toRawUTF8(), &facts) == 0 && !S_ISDIR (facts.st_mode);
}

FileFacts FileFacts::of (const juce::String& path)
{
    assertMayBlock();
    struct statx facts
    {
    };
    if (path.isEmpty()
        || ::statx (AT_FDCWD, path.toRawUTF8(), 0, STATX_BASIC_STATS | STATX_BTIME, &facts) != 0)
        return {};

    const auto hasBirth = (facts.stx_mask & STATX_BTIME) != 0;
    const auto volume = volumeOf (path, makedev (facts.stx_dev_major, facts.stx_dev_minor));
    return { !S_ISDIR (facts.stx_mode),
             static_cast<int64_t> (facts.stx_size),
             static_cast<int64_t> (hasBirth ? facts.stx_btime.tv_sec : facts.stx_mtime.tv_sec),
             static_cast<int64_t> (facts.stx_mtime.tv_sec),
             volume.removable,
             volume.label };
}
