#pragma once

#include <string_view>
#include <vector>

namespace skin
{
/** The names that strip() has been asked for since the last call, each once: tells which pictures a view shows. */
std::vector<std::string_view> takeRequests();
}
