#include "plugins/catalogue/SharedObject.h"

#include <algorithm>
#include <array>
#include <cstring>

#include <elf.h>

namespace
{
using Bytes = std::span<const std::byte>;

constexpr std::array<unsigned, 2> machines32 { EM_386, EM_ARM };
constexpr std::array<unsigned, 2> machines64 { EM_X86_64, EM_AARCH64 };

/** A record at an offset, or nothing where the bytes end before it does. */
template <typename Record>
std::optional<Record> recordAt (Bytes bytes, uint64_t offset)
{
    if (offset > bytes.size() || bytes.size() - offset < sizeof (Record))
        return {};
    Record record;
    std::memcpy (&record, bytes.data() + offset, sizeof (Record));
    return record;
}

/** The part of the bytes that a section names, clipped to what there is. */
template <typename Section>
Bytes bytesOf (Bytes bytes, const Section& section)
{
    const auto begin = std::min<uint64_t> (section.sh_offset, bytes.size());
    return bytes.subspan (begin, std::min<uint64_t> (section.sh_size, bytes.size() - begin));
}

std::string_view textAt (Bytes strings, uint64_t offset)
{
    if (offset >= strings.size())
        return {};
    const auto* text = reinterpret_cast<const char*> (strings.data() + offset);
    return { text, ::strnlen (text, strings.size() - offset) };
}

template <typename Header, typename Section, typename Symbol>
std::optional<SharedObject> read (Bytes bytes, int width, std::span<const unsigned> machines)
{
    const auto header = recordAt<Header> (bytes, 0);
    if (!header || header->e_type != ET_DYN || header->e_shentsize != sizeof (Section)
        || std::find (machines.begin(), machines.end(), header->e_machine) == machines.end())
        return {};
    const auto sectionAt = [&] (uint64_t index)
    {
        return index < header->e_shnum ? recordAt<Section> (bytes, header->e_shoff + index * sizeof (Section))
                                       : std::nullopt;
    };

    SharedObject object { width, {} };
    for (unsigned i = 0; i < header->e_shnum; ++i)
    {
        const auto section = sectionAt (i);
        if (!section || section->sh_type != SHT_DYNSYM)
            continue;
        const auto names = sectionAt (section->sh_link);
        if (!names)
            continue;
        const auto symbols = bytesOf (bytes, *section), strings = bytesOf (bytes, *names);
        for (size_t at = 0; at + sizeof (Symbol) <= symbols.size(); at += sizeof (Symbol))
        {
            const auto symbol = *recordAt<Symbol> (symbols, at);
            if (symbol.st_shndx != SHN_UNDEF && ELF64_ST_TYPE (symbol.st_info) == STT_FUNC)
                object.exports.push_back (textAt (strings, symbol.st_name));
        }
    }
    return object;
}
}

std::optional<SharedObject> readSharedObject (Bytes bytes)
{
    if (bytes.size() < EI_NIDENT || std::memcmp (bytes.data(), ELFMAG, SELFMAG) != 0
        || bytes[EI_DATA] != std::byte { ELFDATA2LSB })
        return {};
    if (bytes[EI_CLASS] == std::byte { ELFCLASS64 })
        return read<Elf64_Ehdr, Elf64_Shdr, Elf64_Sym> (bytes, 64, machines64);
    if (bytes[EI_CLASS] == std::byte { ELFCLASS32 })
        return read<Elf32_Ehdr, Elf32_Shdr, Elf32_Sym> (bytes, 32, machines32);
    return {};
}
