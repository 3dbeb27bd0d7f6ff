#include "deck/state/TrackMarks.h"

#include <tuple>

namespace
{
/** The fields of marks, each alone. The binding fails to compile where it names fewer than there are. */
auto fieldsOf (auto& marks) noexcept
{
    auto& [cues, startPoint, startPointOn, bpm, bpmAverage, downbeatIndex, downbeatPosition, fixedGrid,
           tableStep, tableOffset, confidence] = marks;
    return std::tuple_cat (std::apply ([] (auto&... slot) { return std::tie (slot...); }, cues),
                           std::tie (startPoint, startPointOn, bpm, bpmAverage, downbeatIndex,
                                     downbeatPosition, fixedGrid, tableStep, tableOffset, confidence));
}
}

void TrackMarks::takeChange (const TrackMarks& before, const TrackMarks& after) noexcept
{
    const auto take = [] (auto& mine, const auto& old, const auto& fresh)
    {
        if (fresh != old)
            mine = fresh;
    };
    auto mine = fieldsOf (*this);
    const auto old = fieldsOf (before), fresh = fieldsOf (after);
    [&]<size_t... i> (std::index_sequence<i...>)
    {
        (take (std::get<i> (mine), std::get<i> (old), std::get<i> (fresh)), ...);
    }
    (std::make_index_sequence<std::tuple_size_v<decltype (mine)>>());
}
