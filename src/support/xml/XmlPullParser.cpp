#include "support/xml/XmlPullParser.h"

#include "support/files/RegularFile.h"
#include "support/xml/XmlCharacters.h"

#include <algorithm>

using namespace XmlCharacters;

namespace
{
std::unique_ptr<juce::FileInputStream> openFile (const juce::File& file)
{
    return isRegularFile (file) ? file.createInputStream() : nullptr;
}
}

XmlPullParser::XmlPullParser (std::unique_ptr<juce::InputStream> source)
    : stream (std::move (source)),
      totalBytes (stream != nullptr ? stream->getTotalLength() : -1),
      reader (stream.get())
{
}

XmlPullParser::XmlPullParser (const juce::File& file) : XmlPullParser (openFile (file)) {}

XmlPullParser XmlPullParser::ofText (const juce::String& document)
{
    return XmlPullParser (
        std::make_unique<juce::MemoryInputStream> (document.toRawUTF8(), document.getNumBytesAsUTF8(), true));
}

const std::string* XmlPullParser::attribute (std::string_view wanted) const
{
    const auto found = std::find_if (attributes.begin(), attributes.end(),
                                     [&] (const Attribute& a) { return a.name == wanted; });
    return found != attributes.end() ? &found->value : nullptr;
}

bool XmlPullParser::hasMet (XmlFault fault) const
{
    if (fault == XmlFault::nullsRemoved)
        return reader.hasNulls();
    if (fault == XmlFault::endianSwap)
        return reader.isSwapped();
    return failure == fault;
}

XmlPullParser::Event XmlPullParser::fail (XmlFault fault)
{
    // A source that breaks off is the cause of whatever its end looks like.
    failure = reader.hasFailed() ? XmlFault::fileError : fault;
    return Event::failed;
}

XmlPullParser::Event XmlPullParser::finish()
{
    if (reader.hasFailed() || reader.isTruncated())
        return fail (XmlFault::truncationError);
    if (openElements > 0)
        return fail (XmlFault::unendedStartTag);
    if (!hasRoot)
        return fail (XmlFault::noRootElement);
    isFinished = true;
    return Event::finished;
}

XmlPullParser::Event XmlPullParser::next()
{
    if (failure)
        return Event::failed;
    if (isFinished)
        return Event::finished;
    if (isEndDue)
        return endElement();

    content.clear();
    for (;;)
    {
        const auto character = reader.peek();
        if (openElements == 0)
            content.clear(); // nothing but white space belongs there
        if (!content.empty() && (character == TextReader::end || content.size() >= maxTextBytes))
            return Event::text;

        if (character == TextReader::end)
            return isInCdata ? fail (XmlFault::truncationError) : finish();

        if (isInCdata)
            readCdata();
        else if (character == '<')
        {
            if (!content.empty())
                return Event::text;
            if (const auto event = readMarkup())
                return *event;
        }
        else if (character == '&')
            readEntity (content, content.size() + maxEntityBytes);
        else
            append (content, reader.next());
    }
}

std::optional<XmlPullParser::Event> XmlPullParser::readMarkup()
{
    reader.next();
    const auto character = reader.peek();
    if (character == TextReader::end)
        return fail (XmlFault::truncationError);
    if (accept ('/'))
        return readEndTag();
    if (accept ('!'))
        return readDeclaration();
    if (accept ('?'))
        return skipTo ("?>") ? std::nullopt : std::optional (fail (XmlFault::truncationError));
    if (isNameStart (character))
        return readStartTag();
    content += '<';
    return {};
}

std::optional<XmlPullParser::Event> XmlPullParser::readDeclaration()
{
    auto isComplete = true;
    if (accept ('-'))
        isComplete = accept ('-') ? skipTo ("-->") : skipDeclaration();
    else if (accept ('['))
    {
        const std::string_view word ("CDATA[");
        isInCdata = std::all_of (word.begin(), word.end(),
                                 [this] (char c) { return accept (static_cast<char32_t> (c)); });
        isComplete = isInCdata || skipDeclaration();
    }
    else
        isComplete = skipDeclaration();
    return isComplete ? std::nullopt : std::optional (fail (XmlFault::truncationError));
}

XmlPullParser::Event XmlPullParser::readStartTag()
{
    readName (elementName);
    attributes.clear();
    for (;;)
    {
        skipSpace();
        const auto character = reader.peek();
        if (character == TextReader::end)
            return fail (XmlFault::truncationError);
        if (character == '<')
            return fail (XmlFault::unendedStartTag);
        if (accept ('>'))
            break;
        if (accept ('/'))
        {
            isEndDue = accept ('>');
            if (isEndDue)
                break;
        }
        else if (!readAttribute())
            return fail (XmlFault::truncationError);
    }
    if (openElements == 0 && hasRoot)
        return fail (XmlFault::rootHasSibling);
    hasRoot = true;
    ++openElements;
    if (names.size() < maxNames && names.size() + 1 == static_cast<size_t> (openElements))
        names.push_back (elementName);
    return Event::start;
}

bool XmlPullParser::readAttribute()
{
    Attribute attribute;
    readName (attribute.name);
    if (attribute.name.empty())
    {
        reader.next();
        return true;
    }
    skipSpace();
    if (accept ('='))
    {
        skipSpace();
        const auto quote = reader.peek();
        const auto isQuoted = quote == '"' || quote == '\'';
        if (isQuoted)
            reader.next();
        const auto isInValue = [&]
        {
            const auto c = reader.peek();
            return c != TextReader::end && (isQuoted ? c != quote : !isSpace (c) && c != '>');
        };
        while (isInValue())
        {
            if (reader.peek() == '&')
                readEntity (attribute.value, maxValueBytes);
            else if (const auto character = reader.next(); attribute.value.size() < maxValueBytes)
                append (attribute.value, character);
        }
        if (isQuoted && !accept (quote))
            return false;
    }
    if (attributes.size() < maxAttributes && this->attribute (attribute.name) == nullptr)
        attributes.push_back (std::move (attribute));
    return true;
}

XmlPullParser::Event XmlPullParser::readEndTag()
{
    readName (elementName);
    if (!skipTo (">"))
        return fail (XmlFault::truncationError);
    const auto isCompared = static_cast<size_t> (openElements) == names.size();
    if (openElements > 0 && (!isCompared || names.back() == elementName))
        return endElement();
    const auto isOpen = std::find (names.begin(), names.end(), elementName) != names.end();
    return fail (isOpen ? XmlFault::unendedStartTag : XmlFault::loneEndTag);
}

XmlPullParser::Event XmlPullParser::endElement()
{
    isEndDue = false;
    if (static_cast<size_t> (openElements) == names.size())
        names.pop_back();
    --openElements;
    return Event::end;
}

bool XmlPullParser::skipTo (std::string_view ending)
{
    std::string tail;
    while (reader.peek() != TextReader::end)
    {
        const auto character = reader.next();
        tail += character < 0x80 ? static_cast<char> (character) : '\0';
        if (tail.size() > ending.size())
            tail.erase (0, 1);
        if (tail == ending)
            return true;
    }
    return false;
}

bool XmlPullParser::skipDeclaration()
{
    char32_t quote = 0;
    for (int angles = 1; angles > 0;)
    {
        const auto character = reader.next();
        if (character == TextReader::end)
            return false;
        if (quote != 0)
            quote = character == quote ? 0 : quote;
        else if (character == '"' || character == '\'')
            quote = character;
        else if (character == '>')
            --angles;
        else if (character == '<')
        {
            // The text of a comment may hold a single quote.
            if (accept ('!') && accept ('-') && accept ('-'))
            {
                if (!skipTo ("-->"))
                    return false;
            }
            else
                angles = std::min (angles + 1, 1 << 20);
        }
    }
    return true;
}

void XmlPullParser::readCdata()
{
    while (content.size() < maxTextBytes && reader.peek() != TextReader::end)
    {
        if (accept (']'))
        {
            // Up to two wait for what follows: they may be the end.
            if (cdataBrackets == 2)
                content += ']';
            else
                ++cdataBrackets;
            continue;
        }
        if (cdataBrackets == 2 && accept ('>'))
        {
            cdataBrackets = 0;
            isInCdata = false;
            return;
        }
        content.append (cdataBrackets, ']');
        cdataBrackets = 0;
        append (content, reader.next());
    }
}

void XmlPullParser::readEntity (std::string& target, size_t limit)
{
    std::string written (1, static_cast<char> (reader.next()));
    while (written.size() < maxEntityBytes && isEntityPart (reader.peek()))
        written += static_cast<char> (reader.next());
    if (written.size() > 1 && accept (';'))
    {
        written += ';';
        written = resolveEntity (written);
    }
    if (target.size() < limit)
        target += written;
}

void XmlPullParser::readName (std::string& target)
{
    target.clear();
    while (isNamePart (reader.peek()))
    {
        const auto character = reader.next();
        if (target.size() < maxNameBytes)
            append (target, character);
    }
}

void XmlPullParser::skipSpace()
{
    while (isSpace (reader.peek()))
        reader.next();
}

bool XmlPullParser::accept (char32_t character)
{
    if (reader.peek() != character)
        return false;
    reader.next();
    return true;
}
