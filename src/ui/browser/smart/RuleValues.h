#pragma once

#include "library/smart/SmartField.h"
#include "library/smart/SmartRule.h"

#include <juce_core/juce_core.h>

#include <span>

/** The values of a rule as its editor shows them, and the operators that it offers. */
namespace RuleValues
{
/** The operators of a type, in the order of its box. */
std::span<const SmartOperator> operatorsOf (SmartType);

/** The way in which an operator's values are given. */
enum class Form
{
    text,
    number,
    date, ///< as "31-12-1999"
    stars,
    time,  ///< as "03:45"
    lately ///< a number of days, weeks or months
};

Form formOf (SmartType, SmartOperator);

/** The text in the field for a stored value, and the other way round; an odd text gives nothing. */
juce::String toField (const juce::String& stored, Form);
juce::String fromField (const juce::String& typed, Form);
}
