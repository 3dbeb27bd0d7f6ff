#pragma once

#include "instruments/envelope/Envelope.h"
#include "support/xml/XmlPullParser.h"

#include <functional>
#include <string>
#include <string_view>

/** Pieces of the preset formats of pads and knobs. Reading is a function from bytes to a value; a fault is one
    sentence about the file that begins with "It", empty for none. */
namespace PresetXml
{
inline constexpr int version = 2000;

/** Larger files are no presets. */
inline constexpr size_t largestFile = 8u << 20;

/** A curve as a preset holds it. */
struct Curve
{
    Envelope envelope;
    bool visible = true, enabled = false; ///< as for a file that does not say
};

XmlPullParser parserFor (std::string_view bytes);

/** Goes to the document's root and reads it. @param read   called at the root's start
    @returns the fault of `read`, or that the text is no whole document */
std::string readDocument (std::string_view bytes, const std::function<std::string (XmlPullParser&)>& read);

/** Looks at the element that has just begun. @returns a fault if it is not the root of such a preset, or of another version */
std::string checkRoot (const XmlPullParser&, std::string_view root);

/** Goes through the children of the element that has just begun, to its end.
    @param onChild   called at the start of each; may go through its children in turn. A fault ends the reading */
std::string readChildren (XmlPullParser&, const std::function<std::string()>& onChild);

/** Reads the element `Env` that has just begun. */
std::string readCurve (const XmlPullParser&, Curve&);

/** A whole number in an attribute. @returns `otherwise` where there is none */
int numberIn (const XmlPullParser&, std::string_view attribute, int otherwise);

/** The text of an attribute, without control characters and at most 100 characters long. @returns "" where there is none */
std::string nameIn (const XmlPullParser&, std::string_view attribute = "name");

/** The start tag of a preset, with its version and name. @param indent   blanks before it */
std::string openRoot (std::string_view root, std::string_view name, int indent);

/** The element of a curve, as a line. */
std::string write (const Curve&, int indent);

/** The first line of a file. */
std::string header();

/** Puts a fault into the words for a user: "Nothing was loaded from rain.xml. Its curve is cut off." */
std::string sentence (std::string_view fileName, std::string_view fault);
}
