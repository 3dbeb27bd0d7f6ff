#include "library/exchange/PlaylistPage.h"

#include "library/database/SongDatabase.h"
#include "support/xml/XmlCharacters.h"

#include <array>

namespace
{
constexpr const char* beforeTitle =
    R"(<!DOCTYPE html PUBLIC "-//W3C//DTD XHTML 1.0 Transitional//EN" "http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd">
<html xmlns="http://www.w3.org/1999/xhtml">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=utf-8"/>
<title>)";

constexpr const char* beforeCaption = R"(</title>
<style type="text/css">
<!--
body {margin: 10px;}
body,td,th {font-family: Verdana, Arial, Helvetica, sans-serif; font-size: 11px;}
table.border {border: 1px solid #000000; border-collapse: collapse;}
th {font-weight: bold; vertical-align: top; padding: 5px; text-align: left; background: #D4D0C8;}
td {vertical-align: top; padding: 5px; text-align: left; border-top: 1px solid #000000; border-right: 1px solid #000000;}
caption {caption-side: bottom; font-weight: bold; padding: 5px; text-align: right;}
-->
</style>
</head>
<body>
<table cellpadding="0" cellspacing="0" class="border" width="100%">
<caption>)";

constexpr std::array pageColumns { "#", "Title", "Artist", "Album", "BPM", "Time" };

juce::String escaped (const juce::String& text)
{
    return juce::String (XmlCharacters::escape (text.toStdString()));
}
}

juce::String PlaylistPage::header (const juce::String& name, const juce::String& summary)
{
    return header (name, summary, pageColumns);
}

juce::String PlaylistPage::header (const juce::String& name, const juce::String& summary,
                                   std::span<const char* const> columns)
{
    auto html = beforeTitle + escaped (name) + beforeCaption + escaped (summary) + "</caption><tr>\n";
    for (const auto* column : columns)
        html << "<th>" << column << "</td>\n";
    return html + "</tr>\n";
}

juce::String PlaylistPage::row (int number, const SongRecord& record)
{
    juce::StringArray cells { juce::String (number) };
    for (const auto field :
         { SongField::title, SongField::artist, SongField::album, SongField::bpm, SongField::time })
        cells.add (SongDatabase::fieldText (record, field));
    return row (cells);
}

juce::String PlaylistPage::row (const juce::StringArray& cells)
{
    juce::String html ("<tr>\n");
    for (const auto& cell : cells)
        html << "<td>" << escaped (cell) << "</td>\n";
    return html + "</tr>\n";
}

juce::String PlaylistPage::footer()
{
    return "</table>\n</body>\n</html>\n";
}
