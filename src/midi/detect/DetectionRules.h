#pragma once

#include <span>
#include <string_view>

/** A controller by a piece of its port's name. */
struct DetectionRule
{
    std::string_view substring; ///< of the input port's name, in any case
    int model = 0;
    const char* message = "";
};

/** All rules, in the order in which they are tried. Several may hold for one port: the last one that is accepted counts.
    The first rule names model 2 where the list of models has the device at 1, whose driver is chosen by hand. */
std::span<const DetectionRule> detectionRules() noexcept;

/** True if a port's name holds the rule's piece. */
bool matches (const DetectionRule&, std::string_view portName) noexcept;
