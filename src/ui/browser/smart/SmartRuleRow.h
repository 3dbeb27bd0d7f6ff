#pragma once

#include "ui/browser/rating/PlaylistTableItemRating.h"
#include "ui/browser/smart/RuleValues.h"
#include "ui/widgets/PXTextButton.h"

#include <functional>

/** One rule of a smart playlist: a field, an operator, and the values that the field's type asks for. Message thread. */
class SmartRuleRow : public juce::Component
{
public:
    static constexpr int height = 32;

    explicit SmartRuleRow (const SmartRule&);

    SmartRule rule() const;

    std::function<void()> onRemove;

    void resized() override;

private:
    void fieldChosen();
    void operatorChosen();
    SmartType type() const;
    SmartOperator chosenOperator() const;
    RuleValues::Form form() const;
    bool isRange() const { return chosenOperator() == SmartOperator::isInTheRange; }

    juce::ComboBox fieldBox, operatorBox, unitBox;
    juce::TextEditor value1, value2;
    PlaylistTableItemRating stars1, stars2;
    PXTextButton removeButton;
};
