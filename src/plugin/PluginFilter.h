#pragma once

#include "engine/CPlatterdex.h"

/** The engine that createPluginFilter() made last on the calling thread and nobody has taken yet; null without one.
    Ownership stays with the shell that the engine was made for. */
CPlatterdex* takeNewestEngine() noexcept;
