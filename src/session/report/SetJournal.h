#pragma once

#include "engine/HandLog.h"
#include "settings/EngineSettings.h"

#include <cstdint>
#include <string>

/** The set so far as lines that sets are performed from: what hands did to an engine, each line at its time since the begin. */
class SetJournal
{
public:
    /** More bytes are not written: some ten hours of a busy set. */
    static constexpr size_t longest = 64u << 20u;

    /** @param hands   read by this alone, and begun when this is made */
    explicit SetJournal (HandLog& hands);

    /** Lines for settings that are not as they were at first, texts apart: what was there before the first hand. */
    std::string head (const EngineSettings&, const EngineSettings& atFirst) const;

    /** The lines of what was done since the last call, each ended; empty if nothing was. */
    std::string takeLines();

private:
    HandLog& hands;
    const int64_t begin = HandLog::now();
    int64_t last = begin;
    size_t written = 0;
    uint32_t toldLost = 0;
};
