#pragma once

#include "plugins/catalogue/KnownPluginEntry.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** The file "vst_plugins_list.xml": the root `pluginList` with the element `KNOWNPLUGINS`, whose children are those of
    JUCE's own list of known plug-ins with a few attributes more. The scanner's results have the same form. */
namespace PluginListFile
{
/** Reads a list. Takes any bytes; entries without a file are left out, and so is what a damaged end has cut.
    @returns nothing if the root is another one */
std::optional<std::vector<KnownPluginEntry>> read (std::string_view bytes);

/** The bytes of a file. */
std::string write (const std::vector<KnownPluginEntry>&);
}
