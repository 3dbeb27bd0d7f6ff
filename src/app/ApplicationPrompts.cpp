#include "app/ApplicationPrompts.h"

#include <juce_gui_basics/juce_gui_basics.h>

void ApplicationPrompts::askYesNo (const juce::String& title, const juce::String& question,
                                   std::function<void (bool yes)> answer)
{
    juce::AlertWindow::showAsync (juce::MessageBoxOptions()
                                      .withIconType (juce::MessageBoxIconType::QuestionIcon)
                                      .withTitle (title)
                                      .withMessage (question)
                                      .withButton ("Yes")
                                      .withButton ("No"),
                                  [answer = std::move (answer)] (int result) { answer (result == 1); });
}
