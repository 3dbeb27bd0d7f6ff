#pragma once

#include <juce_core/juce_core.h>

#include <filesystem>
#include <system_error>

/** True for a file that ends: no folder, and no pipe or device, whose opening may wait for ever. Any thread that may block. */
inline bool isRegularFile (const juce::File& file)
{
    std::error_code error;
    return std::filesystem::is_regular_file (file.getFullPathName().toStdString(), error);
}
