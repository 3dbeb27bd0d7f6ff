#include "session/archive/TarFile.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <archive.h>
#include <archive_entry.h>
#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

namespace
{
constexpr int bytesAtOnce = 65536;

using Entry = std::unique_ptr<archive_entry, decltype (&archive_entry_free)>;
}

void TarSum::add (const void* bytes, size_t size)
{
    sum = static_cast<juce::uint32> (crc32_z (sum, static_cast<const Bytef*> (bytes), size));
}

TarWriter::TarWriter (const juce::File& f) : file (f), tar (archive_write_new())
{
    // Names of any length, whose bytes are kept as they are, whatever the locale is.
    isGood = archive_write_set_format_gnutar (tar) == ARCHIVE_OK
             && archive_write_add_filter_gzip (tar) == ARCHIVE_OK
             && archive_write_open_filename (tar, file.getFullPathName().toRawUTF8()) == ARCHIVE_OK;
}

TarWriter::~TarWriter()
{
    archive_write_free (tar);
}

bool TarWriter::add (const juce::String& name, const juce::String& text)
{
    const auto size = text.getNumBytesAsUTF8();
    return addHeader (name, static_cast<juce::int64> (size), juce::Time::getCurrentTime())
           && addBytes (text.toRawUTF8(), size);
}

bool TarWriter::add (const juce::String& name, const juce::File& file)
{
    juce::FileInputStream stream (file);
    isGood = isGood && stream.openedOk();
    if (!isGood || !addHeader (name, stream.getTotalLength(), file.getLastModificationTime()))
        return false;
    std::vector<char> bytes (bytesAtOnce);
    for (auto left = stream.getTotalLength(); left > 0 && isGood;)
    {
        const auto wanted = static_cast<int> (std::min<juce::int64> (left, bytesAtOnce));
        const auto read = stream.read (bytes.data(), wanted);
        isGood = read > 0 && addBytes (bytes.data(), static_cast<size_t> (read));
        left -= read;
    }
    return isGood;
}

bool TarWriter::addHeader (const juce::String& name, juce::int64 size, const juce::Time& modified)
{
    const Entry entry (archive_entry_new(), archive_entry_free);
    archive_entry_set_pathname (entry.get(), name.toRawUTF8());
    archive_entry_set_filetype (entry.get(), AE_IFREG);
    archive_entry_set_perm (entry.get(), 0644);
    archive_entry_set_size (entry.get(), size);
    archive_entry_set_mtime (entry.get(), modified.toMilliseconds() / 1000, 0);
    isGood = isGood && archive_write_header (tar, entry.get()) == ARCHIVE_OK;
    bytesSum.add (name);
    return isGood;
}

bool TarWriter::addBytes (const void* bytes, size_t size)
{
    isGood = isGood && archive_write_data (tar, bytes, size) == static_cast<la_ssize_t> (size);
    bytesSum.add (bytes, size);
    return isGood;
}

bool TarWriter::close()
{
    isGood = archive_write_close (tar) == ARCHIVE_OK && isGood;
    const auto written = ::open (file.getFullPathName().toRawUTF8(), O_WRONLY | O_CLOEXEC);
    isGood = written >= 0 && ::fsync (written) == 0 && isGood;
    if (written >= 0)
        ::close (written);
    return isGood;
}

TarReader::TarReader (const juce::File& file) : tar (archive_read_new())
{
    // Not all filters: some start programs of other people for what a file claims to be.
    isGood =
        archive_read_support_filter_gzip (tar) == ARCHIVE_OK
        && archive_read_support_format_tar (tar) == ARCHIVE_OK
        && archive_read_open_filename (tar, file.getFullPathName().toRawUTF8(), bytesAtOnce) == ARCHIVE_OK;
}

TarReader::~TarReader()
{
    archive_read_free (tar);
}

TarReader::Step TarReader::next()
{
    while (isGood)
    {
        archive_entry* entry = nullptr;
        const auto code = archive_read_next_header (tar, &entry);
        if (code == ARCHIVE_EOF)
            return Step::end;
        isGood = code == ARCHIVE_OK;
        const auto* const name = isGood ? archive_entry_pathname (entry) : nullptr;
        const auto type = isGood ? archive_entry_filetype (entry) : 0;
        if (type == AE_IFDIR)
            continue;
        isGood = name != nullptr && type == AE_IFREG && archive_entry_hardlink (entry) == nullptr;
        if (!isGood)
            break;
        entryName = juce::String::fromUTF8 (name);
        entrySize = archive_entry_size (entry);
        sumSoFar = bytesSum.value();
        bytesSum.add (entryName);
        return Step::entry;
    }
    return Step::damage;
}

juce::String TarReader::text (size_t most)
{
    std::vector<char> bytes (most + 1);
    size_t size = 0;
    while (isGood && size <= most)
    {
        const auto read = archive_read_data (tar, bytes.data() + size, bytes.size() - size);
        isGood = read >= 0;
        if (read <= 0)
            break;
        size += static_cast<size_t> (read);
    }
    isGood = isGood && size <= most;
    bytesSum.add (bytes.data(), size);
    return isGood ? juce::String::fromUTF8 (bytes.data(), static_cast<int> (size)) : juce::String();
}

bool TarReader::unpack (const juce::File& file)
{
    if (!isGood || !file.getParentDirectory().createDirectory().wasOk())
        return false;
    const auto target =
        ::open (file.getFullPathName().toRawUTF8(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (target < 0)
        return false;
    isGood = readInto (target);
    return ::close (target) == 0 && isGood;
}

bool TarReader::readInto (int target)
{
    std::vector<char> bytes (bytesAtOnce);
    for (;;)
    {
        const auto read = archive_read_data (tar, bytes.data(), bytes.size());
        if (read <= 0)
            return read == 0;
        bytesSum.add (bytes.data(), static_cast<size_t> (read));
        for (la_ssize_t written = 0; written < read;)
        {
            const auto count = ::write (target, bytes.data() + written, static_cast<size_t> (read - written));
            if (count <= 0)
                return false;
            written += count;
        }
    }
}
