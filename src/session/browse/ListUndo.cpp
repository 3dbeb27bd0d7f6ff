#include "session/browse/ListUndo.h"

#include <algorithm>
#include <utility>

namespace
{
bool contains (const std::vector<ListContent::Entry>& entries, const ListContent::Entry& entry)
{
    // By rising ids, as they are stored.
    const auto found = std::lower_bound (entries.begin(), entries.end(), entry,
                                         [] (const auto& a, const auto& b) { return a.entryId < b.entryId; });
    return found != entries.end() && *found == entry;
}

/** The list as it was before an edit, with what others have done since: what they took out of it stays out, and what they
    added stands at its end. */
ListContent takenBack (const ListContent& before, const ListContent& after, const ListContent& now)
{
    auto result = before;
    if (now == after || (!now.exists && !after.exists))
        return result;
    if (!after.exists && now.exists)
    {
        // The place of a list that was deleted has gone to another one.
        result.list.id = -1;
        return result;
    }
    result.exists = before.exists || now.exists;
    if (!before.exists || now.name != after.name)
        result.name = now.name;
    if (!before.exists || now.sortOrder != after.sortOrder)
        result.sortOrder = now.sortOrder;
    if (!before.exists || now.smartSql != after.smartSql || now.smartRules != after.smartRules)
    {
        result.smartSql = now.smartSql;
        result.smartRules = now.smartRules;
    }
    std::erase_if (result.entries, [&] (const ListContent::Entry& entry)
                   { return contains (after.entries, entry) && !contains (now.entries, entry); });
    for (const auto& entry : now.entries)
        if (!contains (after.entries, entry) && !contains (before.entries, entry))
            result.entries.push_back (entry);
    return result;
}
}

int ListUndo::edit (SongDatabase& database, ListRef list, const juce::String& text, const Change& change,
                    ListContent* result)
{
    Step step { text, {}, {} };
    {
        auto transaction = database.beginTransaction();
        auto code = transaction.code();
        if (code == LibraryCode::ok)
            code = database.readList (list, step.before);
        step.after = step.before;
        if (code == LibraryCode::ok)
            code = change (step.after);
        if (code == LibraryCode::ok)
            code = database.writeList (step.after);
        if (code = transaction.commitIf (code); code != LibraryCode::ok)
            return code;
    }
    if (result != nullptr)
        *result = step.after;
    if (text.isEmpty() || step.before == step.after)
        return LibraryCode::ok;
    const std::scoped_lock scope (lock);
    if (!step.before.exists)
        step.before.list = step.after.list;
    steps.push_back (std::move (step));
    if (steps.size() > most)
        steps.pop_front();
    return LibraryCode::ok;
}

int ListUndo::undo (SongDatabase& database)
{
    Step step;
    {
        const std::scoped_lock scope (lock);
        if (steps.empty())
            return LibraryCode::ok;
        step = steps.back();
    }
    ListContent restored;
    {
        auto transaction = database.beginTransaction();
        auto code = transaction.code();
        ListContent now;
        if (code == LibraryCode::ok)
            code = database.readList (step.after.list, now);
        // Layouts are a view's, and change with every look at the list.
        now.layout = step.after.layout;
        now.selection = step.after.selection;
        restored = takenBack (step.before, step.after, now);
        if (code == LibraryCode::ok)
            code = database.writeList (restored);
        if (code = transaction.commitIf (code); code != LibraryCode::ok)
            return code;
    }
    const std::scoped_lock scope (lock);
    if (!steps.empty())
        steps.pop_back();
    // A list or entries that came back under other ids are known by these to the steps before.
    auto isNewest = true;
    for (auto older = steps.rbegin(); older != steps.rend(); ++older)
    {
        if (older->after.list != step.before.list)
            continue;
        if (std::exchange (isNewest, false) && older->after.entries == step.before.entries)
            older->after.entries = restored.entries;
        older->after.list = older->before.list = restored.list;
    }
    return LibraryCode::ok;
}

juce::String ListUndo::text() const
{
    const std::scoped_lock scope (lock);
    return steps.empty() ? juce::String() : steps.back().text;
}

void ListUndo::clear()
{
    const std::scoped_lock scope (lock);
    steps.clear();
}
