#pragma once

#include <span>
#include <vector>

namespace zplOnsetTracking
{
/** A symmetric filter of finite length over a whole function; the result stands at the place of its input. */
class CFIRFilter
{
public:
    /** A raised cosine whose taps add up to 1.
        @param taps   odd, at least 1 */
    static CFIRFilter smoother (int taps);

    /** @returns as many values as went in; beyond its ends the function is 0 */
    std::vector<float> process (std::span<const float>) const;

private:
    std::vector<float> taps;
};
}
