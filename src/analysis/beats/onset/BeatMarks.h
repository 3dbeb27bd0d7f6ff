#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/** A growing list of places in a signal. */
class CBeatMarksIf
{
public:
    struct Element
    {
        int32_t position = 0; ///< frames of the signal
        int32_t kind = 0;     ///< of a beat: 0 on the beat, 1 halfway to the next
        float bpm = 0.0f;     ///< local tempo; 0 for an onset
        float strength = 0.0f;
    };

    virtual ~CBeatMarksIf() = default;

    virtual int count() const = 0;
    virtual const Element& at (int index) const = 0;
    virtual void add (const Element&) = 0;
    virtual void clear() = 0;
};

static_assert (sizeof (CBeatMarksIf::Element) == 16);

class CBeatMarks : public CBeatMarksIf
{
public:
    int count() const override { return static_cast<int> (elements.size()); }
    const Element& at (int index) const override { return elements[static_cast<size_t> (index)]; }
    void add (const Element& element) override { elements.push_back (element); }
    void clear() override { elements.clear(); }

    /** Index of the mark nearest to a position, the earlier one on a tie; -1 in an empty list. */
    int nearest (double position) const;

private:
    std::vector<Element> elements;
};

/** Onsets with their strengths, in order of position. */
class COnsetMarks : public CBeatMarks
{
};
