#include "instruments/slicegate/FactoryPresets.h"

namespace
{
Envelope neutralCurve (SegmentShape last)
{
    EnvelopePoint begin, end;
    begin.delta = 0.0;
    begin.type = static_cast<uint8_t> (SegmentShape::hold);
    end.delta = 4.0;
    end.type = static_cast<uint8_t> (last);
    Envelope curve;
    const EnvelopePoint points[] { begin, end };
    curve.setPoints (points);
    return curve;
}
}

SlicegatePreset FactoryPresets::preset (int)
{
    SlicegatePreset empty;
    empty.name = "Empty";
    empty.time.envelope = neutralCurve (SegmentShape::singleCurve);
    empty.volume.envelope = neutralCurve (SegmentShape::hold);
    return empty;
}
