#pragma once

#include "engine/CPlatterdex.h"

#include <functional>

/** Asks, if recorded loops lie on the pads that are in no file of the user's, whether they are to be saved to the samples
    folder, and does so. Without a user to ask nothing is saved. Message thread.
    @param then   called after the answer, or at once if there is nothing to ask; not if what was to be saved can't be */
void offerRecordedLoops (CPlatterdex&, std::function<void()> then);
