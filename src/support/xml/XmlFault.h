#pragma once

#include <array>
#include <cstddef>

/** The faults that the XML parser may meet. The first two are only told; each of the others ends the document. */
enum class XmlFault
{
    nullsRemoved,    ///< zeros were left out
    endianSwap,      ///< UTF-16 of the other byte order
    fileError,       ///< the file can't be read
    truncationError, ///< the document ends within a tag, a comment or a character
    noRootElement,   ///< the document ends before an element begins
    rootHasSibling,  ///< an element begins behind the root's end
    loneEndTag,      ///< an end without a start
    unendedStartTag  ///< an element, or its start tag, does not end where it must
};

inline constexpr std::array<const char*, 8> xmlFaultWords { "nulls_removed",   "endian_swap",
                                                            "file_error",      "truncation_error",
                                                            "no_root_element", "root_has_sibling",
                                                            "lone_end_tag",    "unended_start_tag" };

constexpr const char* wordOf (XmlFault fault)
{
    return xmlFaultWords[static_cast<size_t> (fault)];
}
