#pragma once

#include <string_view>

/** A place in the manual. */
struct HelpTopic
{
    std::string_view page = "index"; ///< the name of its file without ".md"
    std::string_view heading = {};   ///< as links name it; empty for the top
};

/** A component that knows its topic itself, since the table of kinds (`HelpTopics`) lies below it. */
struct HelpTopicOwner
{
    virtual ~HelpTopicOwner() = default;
    virtual HelpTopic helpTopic() const = 0;
};
