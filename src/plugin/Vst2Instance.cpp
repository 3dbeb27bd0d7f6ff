#include "plugin/Vst2Instance.h"

#include <array>

namespace
{
struct Row
{
    std::atomic<bool> taken { false };
    std::atomic<const Vst2::AEffect*> record {
        nullptr
    }; // set last and cleared first: the row is whole while it is set
    Vst2Instance instance;
};

std::array<Row, 16> table;

Row* rowOf (const Vst2::AEffect* record) noexcept
{
    if (record != nullptr)
        for (auto& row : table)
            if (row.record.load (std::memory_order_acquire) == record)
                return &row;
    return nullptr;
}
}

bool Vst2Instance::add (const Vst2::AEffect* record, const Vst2Instance& instance) noexcept
{
    for (auto& row : table)
    {
        if (row.taken.exchange (true))
            continue;
        row.instance = instance;
        row.record.store (record, std::memory_order_release);
        return true;
    }
    return false;
}

const Vst2Instance* Vst2Instance::find (const Vst2::AEffect* record) noexcept
{
    const auto* row = rowOf (record);
    return row != nullptr ? &row->instance : nullptr;
}

void Vst2Instance::remove (const Vst2::AEffect* record) noexcept
{
    if (auto* row = rowOf (record))
    {
        row->record.store (nullptr, std::memory_order_release);
        row->taken.store (false);
    }
}
