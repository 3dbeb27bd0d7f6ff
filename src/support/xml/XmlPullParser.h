#pragma once

#include "support/xml/TextReader.h"
#include "support/xml/XmlFault.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** Reads an XML document piece by piece, so that a file of any size takes the same memory. All texts are UTF-8.

    It knows elements, attributes, text, CDATA, the five named entities and the numeric ones. Comments, processing
    instructions and document types are skipped; entities that a document type declares are not looked up and stand as
    they are written, and so does a "<" that begins nothing. Encodings are those of TextReader. One thread. */
class XmlPullParser
{
public:
    enum class Event
    {
        start,    ///< an element begins: name(), attribute()
        end,      ///< an element ends: name()
        text,     ///< a piece of the text in an element: text(); a long or interrupted one comes in several
        finished, ///< the document is read, and again whenever asked
        failed    ///< nothing more can be read: fault(), and again whenever asked
    };

    /** Bytes that are kept of a name, an attribute's value and a piece of text; what is longer is cut, but for text. */
    static constexpr size_t maxNameBytes = 1024, maxValueBytes = 1 << 16, maxTextBytes = 1 << 16;

    /** Attributes that are kept of an element. */
    static constexpr size_t maxAttributes = 64;

    /** Elements within each other whose names are compared with those of their ends; deeper ones are counted only. */
    static constexpr size_t maxNames = 1024;

    /** @param source   null is a file that can't be read */
    explicit XmlPullParser (std::unique_ptr<juce::InputStream> source);

    /** Opens a file. A folder, or a file that can't be read, fails with the first event. */
    explicit XmlPullParser (const juce::File&);

    /** @param document   is copied */
    static XmlPullParser ofText (const juce::String& document);

    Event next();

    const std::string& name() const { return elementName; }
    const std::string& text() const { return content; }

    /** An attribute of the element that has begun, or null. Of two with one name the first. */
    const std::string* attribute (std::string_view name) const;

    /** Elements that have begun and not ended. */
    int depth() const { return openElements; }

    /** The fault that ended the document, after Event::failed. */
    std::optional<XmlFault> fault() const { return failure; }

    /** True if a fault was met so far. */
    bool hasMet (XmlFault) const;

    /** Bytes of the document that are read, and all of them, -1 if that is not known. */
    juce::int64 position() const { return reader.position(); }
    juce::int64 length() const { return totalBytes; }

private:
    struct Attribute
    {
        std::string name, value;
    };

    Event fail (XmlFault);
    Event finish();
    std::optional<Event> readMarkup();
    std::optional<Event> readDeclaration();
    Event readStartTag();
    Event readEndTag();
    Event endElement();
    bool readAttribute();
    bool skipTo (std::string_view ending);
    bool skipDeclaration();
    void readCdata();
    void readEntity (std::string& target, size_t limit);
    void readName (std::string& target);
    void skipSpace();
    bool accept (char32_t);

    std::unique_ptr<juce::InputStream> stream;
    juce::int64 totalBytes = -1;
    TextReader reader;
    std::string elementName, content;
    std::vector<Attribute> attributes;
    std::vector<std::string> names;
    int openElements = 0;
    size_t cdataBrackets = 0;
    bool hasRoot = false, isEndDue = false, isInCdata = false, isFinished = false;
    std::optional<XmlFault> failure;
};
