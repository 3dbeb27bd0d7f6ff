#include "ui/browser/smart/SmartRuleRow.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"

namespace
{
constexpr int gap = 4, boxHeight = 24, fieldWidth = 132, operatorWidth = 140, valueWidth = 96, unitWidth = 96,
              removeWidth = 24;
constexpr int mostUnits = 2;
}

SmartRuleRow::SmartRuleRow (const SmartRule& rule) : removeButton (juce::String::charToString (0x00d7))
{
    for (int field = 0; field < songFieldCount; ++field)
        fieldBox.addItem (tr (editorNameOf (static_cast<SongField> (field))), field + 1);
    int unit = 0;
    for (const auto& text : { tr ("days"), tr ("weeks"), tr ("months") })
        unitBox.addItem (text, ++unit);
    fieldBox.setTooltip (tr ("Selects the field that is compared."));
    operatorBox.setTooltip (tr ("Selects how it is compared."));
    unitBox.setTooltip (tr ("Selects the unit of the time."));
    removeButton.setTooltip (tr ("Removes the rule."));
    value1.setName ("_textEdit1");
    value2.setName ("_numEditRange2");
    fieldBox.onChange = [this] { fieldChosen(); };
    operatorBox.onChange = [this] { operatorChosen(); };
    removeButton.onClick = [this]
    {
        if (onRemove != nullptr)
            onRemove();
    };
    stars1.onRate = [this] (int, int stars) { value1.setText (juce::String (stars), false); };
    stars2.onRate = [this] (int, int stars) { value2.setText (juce::String (stars), false); };
    for (auto* part : std::initializer_list<juce::Component*> { &fieldBox, &operatorBox, &removeButton })
        addAndMakeVisible (part);
    for (auto* part :
         std::initializer_list<juce::Component*> { &value1, &value2, &stars1, &stars2, &unitBox })
        addChildComponent (part);

    fieldBox.setSelectedId (juce::isPositiveAndBelow (rule.field, songFieldCount) ? rule.field + 1 : 1,
                            juce::dontSendNotification);
    fieldChosen();
    operatorBox.setSelectedId (rule.operatorNumber + 1, juce::dontSendNotification);
    if (operatorBox.getSelectedId() == 0)
        operatorBox.setSelectedItemIndex (0, juce::dontSendNotification);
    operatorChosen();
    value1.setText (RuleValues::toField (rule.value1, form()), false);
    value2.setText (RuleValues::toField (rule.value2, form()), false);
    stars1.show (0, rule.value1.getIntValue());
    stars2.show (1, rule.value2.getIntValue());
    unitBox.setSelectedId (juce::jlimit (0, mostUnits, rule.value2.getIntValue()) + 1,
                           juce::dontSendNotification);
}

SmartType SmartRuleRow::type() const
{
    return smartTypes[static_cast<size_t> (std::max (0, fieldBox.getSelectedId() - 1))];
}

SmartOperator SmartRuleRow::chosenOperator() const
{
    return static_cast<SmartOperator> (std::max (0, operatorBox.getSelectedId() - 1));
}

RuleValues::Form SmartRuleRow::form() const
{
    return RuleValues::formOf (type(), chosenOperator());
}

/** Offers the operators of the field's type; the chosen one stays if it is among them. */
void SmartRuleRow::fieldChosen()
{
    const auto before = operatorBox.getSelectedId();
    operatorBox.clear (juce::dontSendNotification);
    for (const auto each : RuleValues::operatorsOf (type()))
        operatorBox.addItem (tr (operatorNames[static_cast<size_t> (each)]), static_cast<int> (each) + 1);
    operatorBox.setSelectedId (before, juce::dontSendNotification);
    if (operatorBox.getSelectedId() == 0)
        operatorBox.setSelectedItemIndex (0, juce::dontSendNotification);
    value1.clear();
    value2.clear();
    operatorChosen();
}

void SmartRuleRow::operatorChosen()
{
    using Form = RuleValues::Form;
    const auto shape = form();
    const auto allowed = shape == Form::number || shape == Form::lately ? "0123456789."
                         : shape == Form::date                          ? "0123456789-"
                         : shape == Form::time                          ? "0123456789:"
                                                                        : "";
    const auto hint = shape == Form::date ? "31-12-1999" : shape == Form::time ? "03:45" : "";
    for (auto* value : { &value1, &value2 })
    {
        value->setInputRestrictions (0, allowed);
        value->setTextToShowWhenEmpty (hint, palette::disabledText);
    }
    value1.setVisible (shape != Form::stars);
    value2.setVisible (shape != Form::stars && isRange());
    stars1.setVisible (shape == Form::stars);
    stars2.setVisible (shape == Form::stars && isRange());
    unitBox.setVisible (shape == Form::lately);
    if (shape == Form::lately && unitBox.getSelectedId() == 0)
        unitBox.setSelectedId (1, juce::dontSendNotification);
    resized();
}

SmartRule SmartRuleRow::rule() const
{
    using Form = RuleValues::Form;
    SmartRule made { fieldBox.getSelectedId() - 1, operatorBox.getSelectedId() - 1, {}, {} };
    const auto shape = form();
    made.value1 = shape == Form::stars ? juce::String (stars1.stars())
                                       : RuleValues::fromField (value1.getText(), shape);
    if (shape == Form::lately)
        made.value2 = juce::String (unitBox.getSelectedId() - 1);
    else if (isRange())
        made.value2 = shape == Form::stars ? juce::String (stars2.stars())
                                           : RuleValues::fromField (value2.getText(), shape);
    return made;
}

void SmartRuleRow::resized()
{
    auto area = getLocalBounds().withSizeKeepingCentre (getWidth(), boxHeight);
    const auto next = [&area] (int width)
    {
        const auto part = area.removeFromLeft (width);
        area.removeFromLeft (gap);
        return part;
    };
    removeButton.setBounds (area.removeFromRight (removeWidth));
    area.removeFromRight (gap);
    fieldBox.setBounds (next (fieldWidth));
    operatorBox.setBounds (next (operatorWidth));
    const auto first = isRange() || unitBox.isVisible() ? next (valueWidth) : area;
    value1.setBounds (first);
    stars1.setBounds (first);
    value2.setBounds (area.withWidth (valueWidth));
    stars2.setBounds (area.withWidth (valueWidth));
    unitBox.setBounds (area.withWidth (unitWidth));
}
