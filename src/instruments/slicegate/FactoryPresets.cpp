#include "instruments/slicegate/FactoryPresets.h"

#include "instruments/slicegate/FactoryPatterns.h"

#include <algorithm>

namespace
{
const PatternGroupRow* groupOf (int id)
{
    const auto all = factoryPatterns();
    const auto found = std::find_if (
        all.begin(), all.end(), [id] (const auto& group) { return group.patterns.back().entry.id >= id; });
    return found != all.end() ? &*found : nullptr;
}

/** The pattern of an id, or "Empty", the first of the first group. */
std::pair<const PatternGroupRow&, const PatternRow&> find (int id)
{
    if (const auto* group = groupOf (id))
        for (const auto& row : group->patterns)
            if (row.entry.id == id)
                return { *group, row };
    const auto& first = factoryPatterns().front();
    return { first, first.patterns.front() };
}

Envelope curveOf (std::span<const PatternPoint> points)
{
    std::vector<EnvelopePoint> made;
    made.reserve (points.size());
    for (const auto& p : points)
    {
        EnvelopePoint point;
        point.delta = p.delta;
        point.value = p.value;
        point.tension = p.tension;
        point.type = p.type;
        made.push_back (point);
    }
    Envelope curve;
    curve.setPoints (made);
    return curve;
}

std::vector<FactoryPresets::Group> makeGroups()
{
    std::vector<FactoryPresets::Group> made;
    for (const auto& row : factoryPatterns())
    {
        FactoryPresets::Group group { row.name, row.menuPlace, {} };
        for (const auto& pattern : row.patterns)
            group.presets.push_back (pattern.entry);
        made.push_back (std::move (group));
    }
    return made;
}
}

std::span<const FactoryPresets::Group> FactoryPresets::groups()
{
    static const auto all = makeGroups();
    return all;
}

std::span<const FactoryPresets::Group* const> FactoryPresets::menu()
{
    static const auto shown = []
    {
        std::vector<const Group*> found;
        for (const auto& group : groups())
            if (group.menuPlace > 0)
                found.push_back (&group);
        std::sort (found.begin(), found.end(),
                   [] (const auto* a, const auto* b) { return a->menuPlace < b->menuPlace; });
        return found;
    }();
    return shown;
}

std::string_view FactoryPresets::nameOf (int id)
{
    return find (id).second.entry.name;
}

SlicegatePreset FactoryPresets::preset (int id)
{
    const auto& [group, row] = find (id);
    return { .name = std::string (row.entry.name),
             .time = { curveOf (row.time), true, true },
             .volume = { curveOf (row.volume), true, true },
             .playMode = {},
             .rolling = {},
             .keepsFlags = !group.setsFlags };
}
